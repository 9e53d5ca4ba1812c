#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <deque>
#include <set>

#include "core/Programa.h"
#include "queries/Consultas.h"
#include "queries/frm11_Consultas.h"

namespace tarmel {

/// A program with a few sheets and captures, which the test holds as plain values too: what a query gives is
/// compared with what loops over these give.
class Consulta : public Programa {
 public:
    struct Lugar {
        QString codigo, provincia, municipio;
        int comunidad;
        QString pais;
    };
    struct Hoja {
        int id;
        QString numero;
        int propietario;
        int anillador;
        int grupo;
        const Lugar* lugar;
        basic::Date fecha;
        QString habitat, metodo;
    };
    struct Captura {
        const Hoja* hoja;
        int numero;
        QString tipo, centro, anilla;
        int especie;
        QString edad, sexo, estatus;
        int muda;
        QString circunstancia, condicion, reclamo;
    };

 protected:
    using Claves = std::set<QString>;  ///< "sheet/number"

    static constexpr int kAna = 123456, kPepe = 200001, kDesconocido = 555555, kGrupo = 900001;

    /// Captures of every kind on twelve sheets: of two ringers of one group, of the group itself, of a ringer
    /// whom nobody knows and of places that nobody knows, so that some belong to no answer.
    void SetUp() override {
        arrancarComo(QString::number(kAna));
        QDir(ruta({})).mkdir(QStringLiteral("Consultas"));
        sql(
            QStringLiteral("INSERT INTO ANIMAT (IdAnillador, CodigoAnillador, NombreAnillador, "
                           "CoordinadorGrupo, CodigoGrupo, NombreGrupo) VALUES (7, 200001, 'PEPE', 0, "
                           "'900001', 'GRUPO')"));
        sql(QStringLiteral("INSERT INTO ICAPRO VALUES ('90', 'Évora', 20, 'PT')"));
        sql(
            QStringLiteral("INSERT INTO ANILOC (IdLocalidad, CodigoLocalidad, CodigoProvincia, "
                           "NombreLocalidad, Municipio) VALUES (9001, '90001', '90', 'Charca', 'Évora')"));
        sql(
            QStringLiteral("INSERT INTO ANILOC (IdLocalidad, CodigoLocalidad, CodigoProvincia, "
                           "NombreLocalidad, Municipio) VALUES (9002, '90002', '01', 'Río', 'Amurrio')"));
        poblar();
    }

    /// The captures that have all their partners: only these can come out of a query.
    [[nodiscard]] bool cuenta(const Captura& c) const {
        return c.hoja->propietario != kDesconocido && c.hoja->lugar->comunidad != 0;
    }
    template <typename Condicion>
    [[nodiscard]] Claves lasQue(Condicion cumple) const {
        Claves claves;
        for (const Captura& c : capturas) {
            if (cuenta(c) && cumple(c)) claves.insert(clave(c));
        }
        return claves;
    }
    static QString clave(const Captura& c) {
        return c.hoja->numero + QStringLiteral("/") + QString::number(c.numero);
    }
    /// What stands in the work table, each row once.
    static Claves seleccionadas() {
        const QStringList todas = filas(QStringLiteral("SELECT NumHoja & '/' & NumRegistro FROM Consultas"))
                                      .split(u'|', Qt::SkipEmptyParts);
        EXPECT_EQ(Claves(todas.begin(), todas.end()).size(), static_cast<size_t>(todas.size()));
        return {todas.begin(), todas.end()};
    }

    static frm11_Consultas& pantalla() { return forms::pantallas().Get<frm11_Consultas>(); }
    static void elegir(forms::ComboBox& combo, const QString& principio) {
        const int elemento = combo.Find(principio);
        ASSERT_GE(elemento, 0) << principio.toStdString();
        pantalla().UserChoose(combo, elemento);
        ASSERT_EQ(combo.ListIndex(), elemento) << combo.Name().toStdString();
    }
    /// A control of that name, brought where the user can reach it.
    template <typename T>
    static T& control(const QString& nombre) {
        auto* encontrado = static_cast<T*>(pantalla().Find(nombre));
        const forms::Control* pagina = encontrado->Container();
        while (pagina && pagina->Container() != &pantalla().SSTab1)
            pagina = pagina->Container();
        for (int i = 0; pagina && i < pantalla().SSTab1.PageCount(); ++i) {
            if (&pantalla().SSTab1.Page(i) == pagina) pantalla().UserSelectTab(pantalla().SSTab1, i);
        }
        return *encontrado;
    }
    static void pulsar(const QString& boton) { pantalla().UserClick(control<forms::CommandButton>(boton)); }

    std::array<Lugar, 5> lugares{{
        {QStringLiteral("01002"), QStringLiteral("01"), QStringLiteral("Amurrio"), 18, QStringLiteral("ES")},
        {QStringLiteral("90002"), QStringLiteral("01"), QStringLiteral("Amurrio"), 18, QStringLiteral("ES")},
        {QStringLiteral("01006"), QStringLiteral("01"), QStringLiteral("Armiñón"), 18, QStringLiteral("ES")},
        {QStringLiteral("90001"), QStringLiteral("90"), QStringLiteral("Évora"), 20, QStringLiteral("PT")},
        {QStringLiteral("99999"), {}, {}, 0, {}},
    }};
    std::deque<Hoja> hojas;
    std::vector<Captura> capturas;

 private:
    void poblar() {
        const auto de = [](std::initializer_list<const char*> valores, int n) {
            return QString::fromUtf8(*(valores.begin() + n % static_cast<int>(valores.size())));
        };
        constexpr std::array propietarios{kAna, kPepe, kGrupo, kDesconocido};
        for (int h = 0; h < 24; ++h) {
            const int propietario = propietarios[static_cast<size_t>(h % 4)];
            hojas.push_back({h + 1, QString::number(123456000001 + h), propietario, h % 3 == 0 ? kAna : kPepe,
                             h % 5 == 0 ? 0 : kGrupo, &lugares[static_cast<size_t>(h % 5)],
                             basic::Date::of(2009 + h % 3, 1 + h % 12, 1 + h), de({"D5", "A", "A1"}, h / 2),
                             de({"H", "A"}, h / 3)});
            for (int c = 0; c < 6; ++c) {
                const int n = h * 7 + c * 5;
                capturas.push_back({&hojas.back(), c + 1, de({"A", "A", "R"}, n / 2), de({"ESI", "AAC"}, n),
                                    QStringLiteral("A%1").arg(1000 + n), 2 + n % 4,
                                    de({"1", "4", "", "2"}, n / 3), de({"M", "F", "U"}, n),
                                    de({"K", "L"}, n / 2), n % 3, de({"00", "01"}, n / 4),
                                    de({"0", "1"}, n / 5), de({"N", "U"}, n / 2)});
            }
        }
        ado::Connection::Batch grupo(gConexion);
        for (const Hoja& h : hojas)
            sql(QStringLiteral("INSERT INTO ANICHO (IdCabecera, NumHoja, CodAnillador, Anillador, Grupo, "
                               "CodLocalidad, FechaCaptura, CodigoHabitat, CodigoMetodo) VALUES (%1, %2, %3, "
                               "%4, %5, '%6', '%7', '%8', '%9')")
                    .arg(QString::number(h.id), h.numero, QString::number(h.propietario),
                         QString::number(h.anillador), QString::number(h.grupo), h.lugar->codigo,
                         basic::CStr(h.fecha), h.habitat, h.metodo));
        for (const Captura& c : capturas) {
            const QStringList textos{c.tipo,    c.centro,        c.anilla,    c.sexo,
                                     c.estatus, c.circunstancia, c.condicion, c.reclamo};
            sql(QStringLiteral(
                    "INSERT INTO ANIAHO (IdCabecera, NumRegistro, IdEspecie, CodigoMuda, CodigoEdad, "
                    "TipoRegistro, CodigoCentro, NumeroAnilla, CodigoSexo, CodigoEstatus, "
                    "CodigoCircunstancia, CodigoCondicion, CodigoReclamo) VALUES (%1, %2, %3, %4, "
                    "%5, '%6')")
                    .arg(QString::number(c.hoja->id), QString::number(c.numero), QString::number(c.especie),
                         QString::number(c.muda),
                         c.edad.isEmpty() ? QStringLiteral("NULL") : u'\'' + c.edad + u'\'',
                         textos.join(QStringLiteral("', '"))));
        }
        grupo.commit();
    }
};

}  // namespace tarmel
