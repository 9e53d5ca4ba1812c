#include "core/Programa.h"
#include "queries/frm14_ContadorRegistros.h"

/// The record counter, against captures counted one by one.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

struct Captura {
    QString fecha;
    QString tipo;
};

class Contador : public Programa {
 protected:
    void SetUp() override { arrancarComo(u"123456"_s); }

    static frm14_ContadorRegistros& abrir() {
        auto& pantalla = forms::pantallas().Get<frm14_ContadorRegistros>();
        pantalla.Show();
        return pantalla;
    }
    static QString totales(const frm14_ContadorRegistros& p) {
        return QStringList{p.lblAnillamientos.Caption(), p.lblRecuperaciones.Caption(), p.lblTotal.Caption()}
            .join(u' ');
    }
    static QString delAño(const frm14_ContadorRegistros& p) {
        return QStringList{p.lblAnillamientosAño.Caption(), p.lblRecuperacionesAño.Caption(),
                           p.lblTotalAño.Caption()}
            .join(u' ');
    }
};

TEST_F(Contador, CuentaLoQueHayEnCadaAño) {
    std::vector<Captura> capturas;
    const QStringList fechas{u"31/12/2008"_s, u"01/01/2009"_s, u"15/06/2009"_s,
                             u"31/12/2009"_s, u"01/01/2010"_s, u"29/02/2012"_s};
    for (int i = 0; i < 60; ++i)
        // 2012 has ringings only; type E is in neither count.
        capturas.push_back(
            {fechas[i % 6], i % 6 == 5 ? u"A"_s : QStringList{u"A"_s, u"A"_s, u"R"_s, u"E"_s}[i % 4]});
    for (int hoja = 0; hoja < 6; ++hoja)
        sql(u"INSERT INTO ANICHO (IdCabecera,NumHoja,CodAnillador,FechaCaptura) VALUES (%1,%1,123456,'%2')"_s
                .arg(QString::number(hoja + 1), fechas[hoja]));
    for (int i = 0; i < 60; ++i)
        sql(u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro) VALUES (%1,%2,'%3')"_s.arg(
            QString::number(i % 6 + 1), QString::number(i), capturas[i].tipo));
    const auto cuenta = [&](const QString& año) {
        int a = 0;
        int r = 0;
        for (const Captura& c : capturas) {
            if (!c.fecha.endsWith(año)) continue;
            a += c.tipo == u"A"_s ? 1 : 0;
            r += c.tipo == u"R"_s ? 1 : 0;
        }
        return u"%1 %2 %3"_s.arg(a).arg(r).arg(a + r);
    };

    auto& p = abrir();
    EXPECT_EQ(totales(p), cuenta(QString()));
    EXPECT_EQ(p.cboAño.ListCount(), 4);
    EXPECT_TRUE(p.cmdCancelar.HasFocus()) << "a look at the totals needs no year";
    for (const QString& año : {u"2009"_s, u"2010"_s, u"2012"_s}) {
        p.UserGoTo(p.cboAño);
        p.UserChoose(p.cboAño, p.cboAño.Find(año));
        p.UserGoTo(p.cmdCancelar);
        EXPECT_EQ(delAño(p), cuenta(año)) << "on leaving the year";
    }
    // What has come meanwhile is counted on demand.
    sql(u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro) VALUES (6,99,'R')"_s);
    capturas.push_back({fechas[5], u"R"_s});
    p.UserClick(p.cmdAceptar);
    EXPECT_EQ(delAño(p), cuenta(u"2012"_s));
    EXPECT_EQ(host.textosDeCajas(), QString());
    p.UserClick(p.cmdCancelar);
    EXPECT_EQ(forms::pantallas().Loaded<frm14_ContadorRegistros>(), nullptr);
}

TEST_F(Contador, SinAñoNoSeCuenta) {
    auto& p = abrir();
    EXPECT_EQ(totales(p), u"0 0 0"_s);
    EXPECT_EQ(p.cboAño.ListCount(), 0);
    p.UserClick(p.cmdAceptar);  // the focus was not in the year
    EXPECT_EQ(delAño(p), u"  "_s);
    p.UserGoTo(p.cboAño);
    EXPECT_TRUE(termina([&] { p.UserGoTo(p.cmdCancelar); })) << "leaving the year empty is a run-time error";
    EXPECT_TRUE(host.textosDeCajas().startsWith(u"Error nº -2147217900\rMotor de base de datos\r"_s));
}

}  // namespace
}  // namespace tarmel
