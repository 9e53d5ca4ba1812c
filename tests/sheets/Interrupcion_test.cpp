#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>

#include "core/Programa.h"
#include "core/frm03_Principal.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "support/DiscoAveriado.h"
#include "support/Interrupcion.h"
#include "support/OtroProceso.h"

/// A process that types sheets and captures is killed in the middle of it. Whatever it has told the ringer to
/// be saved is there afterwards, and nothing is there by halves.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

/// Sheets typed by a process: enough for as many moments as are asked for.
int hojasPorProceso() {
    constexpr int kPocas = 3, kMuertesPorHoja = 50;
    return std::max(kPocas, muertes() / kMuertesPorHoja);
}
constexpr int kCapturasPorHoja = 3;

class Interrupcion : public Programa {
 protected:
    static void elegir(forms::ComboBox& combo, const QString& comienzo) {
        combo.form().UserChoose(combo, combo.Find(comienzo));
    }

    /// Types some sheets and tells what the screens have confirmed.
    void teclear(const Avisar& avisar) {
        Main();
        identificar(u"123456"_s);
        avisar("empieza");
        for (int i = 0; i < hojasPorProceso(); ++i) {
            teclearHoja(avisar);
            if (!host.cajas.empty()) ::_exit(2);
        }
    }

    void teclearHoja(const Avisar& avisar) {
        auto& captura = abrirHoja();
        if (!host.cajas.empty()) return;
        const QByteArray numHoja = forms::pantallas().Get<frm06_HojasCampo>().txtNumHoja.Text().toLatin1();
        avisar("hoja;" + numHoja);
        for (int i = 0; i < kCapturasPorHoja; ++i, ++siguienteAnilla_) {
            teclearAve(captura);
            captura.UserClick(captura.cmdGrabar);
            if (!host.cajas.empty()) return;
            avisar("captura;" + numHoja + ';' + QByteArray::number(siguienteAnilla_));
        }
        captura.UserKey(forms::key::F7);
    }

    /// A new sheet, and the first ring of its captures.
    frm07_DetallesHojasCampo& abrirHoja() const {
        forms::runAction([] { forms::pantallas().Get<frm03_Principal>().mnuNuevaHoja_Click(); });
        auto& hoja = forms::pantallas().Get<frm06_HojasCampo>();
        elegir(hoja.dbcboLocalidad, u"amurrio"_s);
        elegir(hoja.cboHabitat, u"D5"_s);
        elegir(hoja.cboMetodo, u"H"_s);
        hoja.UserClick(hoja.cmdGrabar);
        auto& captura = forms::pantallas().Get<frm07_DetallesHojasCampo>();
        if (!host.cajas.empty()) return captura;
        hoja.UserKey(forms::key::F6);
        escribirEn(captura, captura.txtNumAnilla, QString::number(siguienteAnilla_));
        return captura;
    }
    static void teclearAve(frm07_DetallesHojasCampo& captura) {
        elegir(captura.dbcboEspecie, u"parus maj"_s);
        elegir(captura.cboEdad, u"4"_s);
        elegir(captura.cboSexo, u"M"_s);
    }
    static void ponerAnillas() {
        sql(u"INSERT INTO ALMACEN VALUES (1, '0', '0', '100001', '999999', 899999, '01/01/2010', 'A')"_s);
    }
    /// Saves what is typed while something stands in the way: a message, nothing saved, all of it still on
    /// the screen; and it is saved once the way is free.
    void grabarATropezones(frm07_DetallesHojasCampo& captura, const QString& palabras,
                           const std::function<void()>& despejar) {
        const QString antes = filas(u"SELECT Count(*) FROM ANIAHO"_s);
        const QString anilla = captura.txtNumAnilla.Text();
        teclearAve(captura);
        captura.UserClick(captura.cmdGrabar);
        despejar();
        EXPECT_TRUE(host.textosDeCajas().contains(palabras)) << palabras.toStdString();
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO"_s), antes);
        EXPECT_EQ(captura.txtNumAnilla.Text(), anilla);
        EXPECT_TRUE(captura.dbcboEspecie.Text().startsWith(u"Parus maj"_s, Qt::CaseInsensitive));
        captura.UserClick(captura.cmdGrabar);
        EXPECT_EQ(host.textosDeCajas(), QString());
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO WHERE NumeroAnilla='%1'"_s.arg(anilla)), u"1");
    }

    void comprobarConfirmado(const QString& linea) const {
        const QStringList partes = linea.split(u';');
        if (partes[0] == u"hoja") {
            EXPECT_EQ(filas(u"SELECT Count(*) FROM ANICHO WHERE NumHoja="_s + partes[1]), u"1")
                << linea.toStdString();
        } else if (partes[0] == u"captura") {
            EXPECT_EQ(
                filas(u"SELECT Count(*) FROM ANIAHO INNER JOIN ANICHO ON ANIAHO.IdCabecera=ANICHO.IdCabecera "
                      u"WHERE NumeroAnilla='"_s +
                      partes[2] + u"' AND NumHoja="_s + partes[1]),
                u"1")
                << linea.toStdString();
        }
    }

    void comprobarIntegridad() const {
        sqlite3* otro = nullptr;
        ASSERT_EQ(sqlite3_open(base().toUtf8().constData(), &otro), SQLITE_OK);
        sqlite3_stmt* consulta = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(otro, "PRAGMA integrity_check", -1, &consulta, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_step(consulta), SQLITE_ROW);
        EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(consulta, 0)), "ok");
        sqlite3_finalize(consulta);
        sqlite3_close(otro);
    }

    int siguienteAnilla_ = 100001;
    OtroPrograma otro_;
};

TEST_F(Interrupcion, LoConfirmadoEstaYNadaQuedaAMedias) {
    arrancar();
    ponerAnillas();
    forms::pantallas().Reset();
    reiniciarSesion();

    const auto teclearAlgo = [this](const Avisar& avisar) { teclear(avisar); };
    const Corrida entera = correr(teclearAlgo);
    ASSERT_EQ(entera.codigo, 0);

    QStringList confirmado;
    const auto confirmar = [&](const Corrida& corrida) {
        for (const QByteArray& linea : corrida.avisos)
            confirmado << QString::fromLatin1(linea);
    };
    confirmar(entera);
    int muerte = 0;
    repartirMuertes("typing captures", entera.escrituras, [&](int momento) {
        siguienteAnilla_ = 100001 + ++muerte * 100;
        const Corrida corrida = correr(teclearAlgo, momento);
        EXPECT_TRUE(corrida.muerto) << "it stopped by itself, code " << corrida.codigo;
        confirmar(corrida);
        comprobarIntegridad();
        arrancar();
        for (const QByteArray& linea : corrida.avisos)
            comprobarConfirmado(QString::fromLatin1(linea));
        // The last save may have been done without being told any more: one row at most.
        const qsizetype hojas = confirmado.filter(u"hoja;"_s).size();
        const qsizetype capturas = confirmado.filter(u"captura;"_s).size();
        const int deMas = filas(u"SELECT Count(*) FROM ANICHO"_s).toInt() +
                          filas(u"SELECT Count(*) FROM ANIAHO"_s).toInt() -
                          static_cast<int>(hojas + capturas);
        EXPECT_GE(deMas, 0);
        EXPECT_LE(deMas, muerte);
        for (const auto& [tabla, id] :
             {std::pair{u"ANICHO"_s, u"IdCabecera"_s}, {u"ANIMAT"_s, u"IdAnillador"_s}})
            EXPECT_EQ(filas(u"SELECT Count(*) FROM %1 WHERE %2=-1"_s.arg(tabla, id)), u"0") << muerte;
        EXPECT_EQ(
            filas(u"SELECT Count(*) FROM ANIAHO LEFT JOIN ANICHO ON ANIAHO.IdCabecera=ANICHO.IdCabecera "
                  u"WHERE ANICHO.IdCabecera IS NULL"_s),
            u"0");
        EXPECT_EQ(filas(u"SELECT Count(*) FROM ANIAHO WHERE Anilla IS NULL OR CodigoEspecie<>'14640' OR "
                        u"CodigoEdad<>'4' OR CodigoSexo<>'M'"_s),
                  u"0");
        // Without a gap in a sheet's numbers.
        EXPECT_EQ(
            filas(u"SELECT IdCabecera FROM ANIAHO GROUP BY IdCabecera HAVING Max(NumRegistro)<>Count(*)"_s),
            QString());
        forms::pantallas().Reset();
        reiniciarSesion();
    });
    EXPECT_GT(confirmado.filter(u"captura;"_s).size(), muerte);
    arrancar();
    for (const QString& linea : confirmado)
        comprobarConfirmado(linea);
}

TEST_F(Interrupcion, UnDiscoQueFallaNoPierdeLaCaptura) {
    using Averia = DiscoAveriado::Averia;
    DiscoAveriado disco;
    arrancarComo(u"123456"_s);
    ponerAnillas();
    auto& captura = abrirHoja();
    for (const auto& [averia, palabras] :
         {std::pair{Averia::Lleno, u"No hay espacio en el disco"_s}, {Averia::Error, u"Error del disco"_s}}) {
        disco.reparar();
        teclearAve(captura);
        captura.UserClick(captura.cmdGrabar);
        const int operaciones = disco.operaciones(averia);
        EXPECT_GT(operaciones, 1);
        for (int momento = 1; momento <= operaciones; ++momento) {
            SCOPED_TRACE(momento);
            disco.averiar(averia, momento);
            grabarATropezones(captura, palabras, [&] {
                EXPECT_TRUE(disco.haFallado());
                disco.reparar();
            });
        }
        std::printf("saving a capture: %d failures of the disk\n", operaciones);
    }
    forms::pantallas().Reset();
    reiniciarSesion();
    comprobarIntegridad();
}

TEST_F(Interrupcion, OtroProgramaQueBloqueaNoPierdeLaCaptura) {
    arrancarComo(u"123456"_s);
    ponerAnillas();
    auto& captura = abrirHoja();
    otro_.abrir(base(), "BEGIN IMMEDIATE");
    grabarATropezones(captura, u"La base de datos está en uso por otro programa."_s, [&] { otro_.cerrar(); });
}

}  // namespace
}  // namespace tarmel
