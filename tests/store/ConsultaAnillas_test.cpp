#include <map>

#include "core/Programa.h"
#include "platform/report/Document.h"
#include "sheets/Anillas.h"
#include "store/frm16_ConsultaAnillas.h"

/// The questions to the store, against figures added up here capture by capture and movement by movement.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

const QString kFechas[] = {u"31/12/2009"_s, u"01/01/2010"_s, u"31/12/2010"_s, u"01/01/2011"_s};
/// One ring at least of every shape; J and M have a model but are read as a pair of letters would be.
const QStringList kAnillas{u"123456"_s,   u"6123456"_s, u"1012345"_s,  u"1112345"_s,  u"2123456"_s,
                           u"A12345"_s,   u"A12346"_s,  u"Y00001"_s,   u"L12345"_s,   u"L123456"_s,
                           u"N123456"_s,  u"1L12345"_s, u"3N12345"_s,  u"AB1234"_s,   u"AB1235"_s,
                           u"AC1234"_s,   u"PH0001"_s,  u"2A123456"_s, u"1V123456"_s, u"V123456"_s,
                           u"3M123456"_s, u"9000000"_s, u"M12345"_s};

struct Captura {
    QString anilla;  ///< as it is stored
    QString inscripcion;
    QString tipo;
    int fecha;
};

struct Movimiento {
    QString inscripcion;
    QString tipo;
    int cantidad;
    int fecha;
};

int añoDe(int fecha) {
    return kFechas[fecha].right(4).toInt();
}

class ConsultasDelAlmacen : public Programa {
 protected:
    void SetUp() override {
        arrancarComo(u"123456"_s);
        for (int hoja = 0; hoja < 4; ++hoja)
            sql(u"INSERT INTO ANICHO (IdCabecera,NumHoja,CodAnillador,FechaCaptura) VALUES (%1,%2,123456,'%3')"_s
                    .arg(QString::number(hoja + 1), QString::number(123456000001 + hoja), kFechas[hoja]));
    }

    void capturar() {
        int numero = 0;
        for (QString anilla : kAnillas) {
            QString modelo;
            QString inscripcion;
            qint32 serie = 0;
            bool error = false;
            NormalizarAnilla(anilla);
            DescomponerAnilla(anilla, modelo, inscripcion, serie, error);
            // Models that the reading of a ring does not know are those of the letter in front.
            if (error) inscripcion = anilla.left(1);
            for (int vez = 0; vez < 9; ++vez)
                anotar({anilla, inscripcion, vez % 4 == 3 ? u"R"_s : u"A"_s, (numero + vez) % 4}, ++numero);
        }
    }
    void anotar(const Captura& captura, int numero) {
        capturas.push_back(captura);
        sql(u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro,Anilla) VALUES (%1,%2,'%3','%4')"_s.arg(
            QString::number(captura.fecha + 1), QString::number(numero), captura.tipo, captura.anilla));
    }
    void mover(const Movimiento& m) {
        movimientos.push_back(m);
        sql(u"INSERT INTO ALMACEN VALUES (%1,'L','%2','1','9',%3,'%4','%5')"_s.arg(
            QString::number(movimientos.size()), m.inscripcion, QString::number(m.cantidad), kFechas[m.fecha],
            m.tipo));
    }
    void mover() {
        const QStringList inscripciones{u"AB"_s, u"L"_s, u"1L"_s, u"10"_s, u"KY"_s};
        int cantidad = 100;
        for (const QString& inscripcion : inscripciones) {
            for (const QString& tipo : {u"A"_s, u"D"_s, u"T"_s}) {
                for (int fecha = 0; fecha < 4; ++fecha) {
                    if (tipo == u"T"_s && inscripcion == u"L"_s) continue;  // nothing passed on
                    mover({inscripcion, tipo, (tipo == u"A"_s ? 7 : 1) * (++cantidad), fecha});
                }
            }
        }
    }

    /// 0 is no year.
    [[nodiscard]] int puestas(const QString& inscripcion, int año, bool hasta) const {
        int cuenta = 0;
        for (const Captura& c : capturas) {
            const bool cuando = año == 0 || (hasta ? añoDe(c.fecha) <= año : añoDe(c.fecha) == año);
            if (c.tipo == u"A"_s && c.inscripcion == inscripcion && cuando) ++cuenta;
        }
        return cuenta;
    }
    [[nodiscard]] int remanente(const QString& inscripcion, int año) const {
        int quedan = -puestas(inscripcion, año, true);
        for (const Movimiento& m : movimientos) {
            if (m.inscripcion == inscripcion && (año == 0 || añoDe(m.fecha) <= año))
                quedan += m.tipo == u"A"_s ? m.cantidad : -m.cantidad;
        }
        return quedan;
    }
    /// The totals that the database holds, by inscription.
    [[nodiscard]] static std::map<QString, int> totales() {
        std::map<QString, int> todos;
        for (const QString& fila : filas(u"SELECT Inscripcion, Total FROM TIPOANILLAS"_s).split(u'|'))
            todos[fila.section(u';', 0, 0)] = fila.section(u';', 1).toInt();
        return todos;
    }
    static frm16_ConsultaAnillas& pantalla() {
        auto& p = forms::pantallas().Get<frm16_ConsultaAnillas>();
        p.Show();
        return p;
    }

    std::vector<Captura> capturas;
    std::vector<Movimiento> movimientos;
};

struct Cuenta {
    QString año;
    bool puestas;
    int limite;  ///< 0: all years
};

TEST_F(ConsultasDelAlmacen, CuentaAnillasComoQuienLasRecorre) {
    capturar();
    mover();
    auto& p = pantalla();
    for (const Cuenta& cuenta : {Cuenta{u"2010"_s, true, 2010},
                                 {u"TODOS"_s, true, 0},
                                 {u"2009"_s, false, 2009},
                                 {u"2010"_s, false, 2010},
                                 {QString(), false, 0},
                                 {QString(), true, 0}}) {
        SCOPED_TRACE(cuenta.año.toStdString() + (cuenta.puestas ? " puestas" : " remanente"));
        p.UserClick(cuenta.puestas ? p.optTotalPuestas : p.optRemanenteModelos);
        forms::ComboBox& año = cuenta.puestas ? p.cboAño : p.cboAñoRemanente;
        p.UserChoose(año, cuenta.año.isEmpty() ? -1 : año.Find(cuenta.año));
        ASSERT_EQ(año.Text(), cuenta.año);
        p.UserClick(p.cmdAceptar);

        ASSERT_EQ(p.TablaInscripciones.size(), 204U);
        const std::map<QString, int> hay = totales();
        int suma = 0;
        int conTotal = 0;
        for (const auto& fila : p.TablaInscripciones) {
            const QString& i = fila.inscripcion;
            const int colocadas = puestas(i, cuenta.limite, !cuenta.puestas);
            const int total = cuenta.puestas ? colocadas : remanente(i, cuenta.limite);
            EXPECT_EQ(fila.cuenta.toInt(), colocadas) << i.toStdString();
            EXPECT_EQ(hay.at(i), total) << i.toStdString();
            suma += total;
            conTotal += total != 0 ? 1 : 0;
        }
        report::Document& informe = *host.informes.back();
        EXPECT_EQ(informe.report().name, u"ConsultaAnillasPuestas"_s);
        EXPECT_EQ(informe.rowCount(), conTotal);
        EXPECT_EQ(informe.totalSum(u"Total"_s), QString::number(suma));
        EXPECT_EQ(informe.Text(u"Encabezado"_s),
                  cuenta.puestas ? u"ANILLAS PUESTAS POR MODELOS"_s : u"REMANENTE POR MODELOS"_s);
        EXPECT_EQ(informe.Text(u"lblAño"_s), cuenta.año);
        EXPECT_EQ(informe.Text(u"Etiqueta1"_s), cuenta.año.isEmpty() ? QString() : u"AÑO"_s);
    }
    EXPECT_EQ(host.textosDeCajas(), QString());
    EXPECT_EQ(host.punteros.back(), forms::Pointer::Default);
    EXPECT_TRUE(p.IsShown()) << "the dialogue stays";
    // The same inscription under a second model: both rows get the count.
    sql(u"INSERT INTO TIPOANILLAS VALUES ('V','AB',0)"_s);
    p.UserClick(p.optTotalPuestas);
    p.UserClick(p.cmdAceptar);
    EXPECT_EQ(filas(u"SELECT DISTINCT Total FROM TIPOANILLAS WHERE Inscripcion='AB'"_s),
              QString::number(puestas(u"AB"_s, 0, false)));
    EXPECT_EQ(host.informes.back()->totalSum(u"Total"_s), QString::number(puestas(u"AB"_s, 0, false) + [&] {
                  int todas = 0;
                  for (const auto& fila : p.TablaInscripciones)
                      todas += puestas(fila.inscripcion, 0, false);
                  return todas;
              }()));
}

TEST_F(ConsultasDelAlmacen, SinNadaMarcadoCuentaLoQueQueda) {
    mover({u"AB"_s, u"A"_s, 100, 0});
    mover({u"AB"_s, u"D"_s, 10, 1});
    for (int i = 0; i < 30; ++i)
        anotar({u"AB..%1"_s.arg(i, 4, 10, QChar(u'0')), u"AB"_s, u"A"_s, 2}, i + 1);
    anotar({u"PA..0001"_s, u"PA"_s, u"A"_s, 2}, 40);
    auto& p = pantalla();
    p.UserClick(p.cmdAceptar);
    EXPECT_EQ(filas(u"SELECT Inscripcion, Total FROM TIPOANILLAS WHERE Total<>0 ORDER BY Inscripcion"_s),
              u"AB;60|PA;-1"_s);
    report::Document& informe = *host.informes.back();
    EXPECT_EQ(informe.groupCount(), 1);  // both of model 0
    EXPECT_EQ(informe.groupSum(u"Total"_s, 0), u"59"_s);
    EXPECT_EQ(informe.Text(u"Etiqueta1"_s), QString());
}

/// What passes 16 bits ends the program; the inscriptions counted before keep their totals.
TEST_F(ConsultasDelAlmacen, DemasiadasTraspasadas) {
    sql(u"UPDATE TIPOANILLAS SET Total=5"_s);
    mover({u"L"_s, u"T"_s, 20000, 0});
    mover({u"L"_s, u"T"_s, 20000, 1});
    auto& p = pantalla();
    EXPECT_TRUE(termina([&] { p.UserClick(p.cmdAceptar); }));
    EXPECT_TRUE(host.textosDeCajas().startsWith(u"Error nº 6\r"_s));
    EXPECT_TRUE(host.informes.empty());
    bool pasado = false;
    const std::map<QString, int> hay = totales();
    for (const auto& fila : p.TablaInscripciones) {
        if (fila.inscripcion == u"L"_s) pasado = true;
        EXPECT_EQ(hay.at(fila.inscripcion), pasado ? 5 : 0) << fila.inscripcion.toStdString();
    }
    EXPECT_TRUE(pasado);
}

TEST_F(ConsultasDelAlmacen, CadaHistorialEsElDeSuTipo) {
    auto& p = pantalla();
    p.UserClick(p.optHistorialAlmacen);
    p.UserClick(p.cmdAceptar);
    ASSERT_EQ(host.cajas.size(), 1U);
    EXPECT_EQ(host.cajas[0].buttons, forms::box::Information);
    EXPECT_EQ(host.textosDeCajas(), u"No hay ningún movimiento de este tipo"_s);
    EXPECT_TRUE(host.informes.empty());

    mover({u"AB"_s, u"A"_s, 100, 0});
    mover({u"KY"_s, u"A"_s, 50, 1});
    mover({u"AB"_s, u"D"_s, 10, 1});
    sql(u"INSERT INTO ALMACEN VALUES (4,'V','V','000001','000003',3,'31/12/2010','A')"_s);
    const auto historial = [&](forms::OptionButton& tipo) {
        p.UserClick(tipo);
        p.UserClick(p.cmdAceptar);
    };
    historial(p.optTodas);
    EXPECT_EQ(host.informes.back()->rowCount(), 4);
    EXPECT_EQ(host.informes.back()->groupCount(), 2);
    EXPECT_EQ(host.informes.back()->totalSum(u"Cantidad"_s), u"163"_s) << "all types alike";
    EXPECT_EQ(host.informes.back()->groupSum(u"Cantidad"_s, 1), u"3"_s);
    historial(p.optRecibidas);
    EXPECT_EQ(host.informes.back()->report().name, u"ConsultaAnillas"_s);
    EXPECT_EQ(host.informes.back()->rowCount(), 3);
    EXPECT_TRUE(host.informes.back()->text().contains(u"000003"_s))
        << host.informes.back()->text().toStdString();
    historial(p.optDevueltas);
    EXPECT_EQ(host.informes.back()->totalSum(u"Cantidad"_s), u"10"_s);
    historial(p.optTraspasadas);
    EXPECT_EQ(host.textosDeCajas(), u"No hay ningún movimiento de este tipo"_s);
    EXPECT_EQ(host.informes.size(), 3U);
}

}  // namespace
}  // namespace tarmel
