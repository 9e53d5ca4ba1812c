#include "queries/Informes.h"

#include <set>

#include "core/Programa.h"
#include "platform/report/Document.h"
#include "queries/Consultas.h"
#include "store/InformesAlmacen.h"
#include "store/frm16_ConsultaAnillas.h"

/// The printed reports: their rows, groups, sums and titles, against the captures that were put there.
namespace tarmel {
namespace {

using namespace Qt::StringLiterals;

struct Captura {
    int hoja;
    int numero;
    QString tipo;
    QString anilla;
    int especie;
    QString edad;
};

class Informes : public Programa {
 protected:
    /// Sheet 1 is one ringer's, sheet 2 belongs to two of them, sheet 3 has no captures.
    void SetUp() override {
        arrancarComo(u"123456"_s);
        sql(u"INSERT INTO ANIMAT (IdAnillador,CodigoAnillador,NombreAnillador) VALUES (8,222222,'SEGUNDA')"_s);
        sql(u"UPDATE ANIBRD SET NombreEspecie='Avis longissima nominis' WHERE IdEspecie=2"_s);
        for (int hoja = 1; hoja <= 3; ++hoja)
            sql(u"INSERT INTO ANICHO "
                u"(IdCabecera,NumHoja,CodAnillador,CodLocalidad,FechaCaptura,HoraDesde,HoraHasta,"
                "LongitudRed,Anillador,CodigoHabitat,CodigoMetodo) SELECT "
                "%1,%2,123456,'01002','15/03/2010','7:30',"
                "'11:05','12,5',%3,Min(CodigoHabitat),(SELECT Min(CodigoMetodo) FROM ANIMCA) FROM ICAHAB"_s
                    .arg(QString::number(hoja), QString::number(123456000000 + hoja),
                         hoja == 2 ? u"222222"_s : u"123456"_s));
        for (int i = 0; i < 70; ++i) {
            // Typed out of order: a sheet is read by its numbers.
            const int hoja = i < 50 ? 1 : 2;
            const int numero = hoja == 1 ? 50 - i : i;
            capturas.push_back({hoja, numero, i % 5 == 4 ? u"R"_s : u"A"_s,
                                u"AB..%1"_s.arg(numero, 4, 10, QChar(u'0')), 2 + i % 3,
                                QStringList{u"1"_s, u"4"_s, QString()}[i % 7 % 3]});
            const Captura& c = capturas.back();
            sql(u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,Anilla,NumeroAnilla,"
                "IdEspecie,CodigoEdad,Peso,HoraCaptura) VALUES (%1,%2,'%3','ESI','%4','%5',%6,%7,'%8,5','8:05')"_s
                    .arg(c.hoja)
                    .arg(c.numero)
                    .arg(c.tipo, c.anilla, QString(c.anilla).remove(u'.'))
                    .arg(c.especie)
                    .arg(c.edad.isEmpty() ? u"Null"_s : u'\'' + c.edad + u'\'')
                    .arg(c.numero));
        }
    }

    report::Document& hojas(const basic::Variant& desde, const basic::Variant& hasta) {
        gHojaInicial = desde;
        gHojaFinal = hasta;
        mostrarRepHojCam();
        return *host.informes.back();
    }
    report::Document& balance(bool anillamientos, bool recuperaciones) {
        gBalanceA = anillamientos;
        gBalanceR = recuperaciones;
        mostrarRepHojCamB();
        return *host.informes.back();
    }
    /// The values of a column, row by row.
    static QStringList valores(report::Document& documento, const QString& columna) {
        report::Report informe = documento.report();
        QStringList todos;
        for (int fila = 0; fila < documento.rowCount(); ++fila)
            todos << documento.valueText(*informe.find(columna), fila);
        return todos;
    }

    std::vector<Captura> capturas;
};

TEST_F(Informes, LasHojasConSusCapturas) {
    gFiltroTexto = u"\rHojas de Campo: de 1 a 9"_s;
    report::Document& todas = hojas(u"123456000001"_s, u"123456000003"_s);
    // The second sheet comes once for each of its two ringers.
    int filas = 0;
    for (const Captura& c : capturas)
        filas += c.hoja;
    EXPECT_EQ(todas.rowCount(), filas);
    EXPECT_EQ(todas.groupCount(), 3);
    EXPECT_EQ(todas.Text(u"lblFiltro"_s), u"Filtro de la Consulta:\rHojas de Campo: de 1 a 9"_s);
    const QString texto = todas.text();
    for (const QString& palabras :
         {u"123456000001"_s, u"07:30"_s, u"11:05"_s, u"08:05"_s, u"12,5"_s, u"SEGUNDA"_s,
          u"ANILLADOR 123456"_s, u"Terminología"_s, u"ModoStatus"_s, u"Avis longissima nominis"_s})
        EXPECT_TRUE(texto.contains(palabras)) << palabras.toStdString();
    EXPECT_FALSE(texto.contains(u"123456000003"_s)) << "a sheet without captures is not printed";

    // The first sheet alone, and its captures in their order; what stands under "Centro" is the type.
    report::Document& una = hojas(123456000001.0, u"123456000001"_s);
    EXPECT_EQ(una.groupCount(), 1);
    ASSERT_EQ(una.rowCount(), 50);
    report::Report informe = una.report();
    const auto en = [&](size_t columna, int fila) {
        return una.valueText(informe.detail.elements.at(columna), fila);
    };
    for (int fila = 0; fila < 50; ++fila) {
        const Captura& c = capturas.at(49 - fila);
        EXPECT_EQ(en(0, fila), QString::number(c.numero));
        EXPECT_EQ(en(1, fila), c.tipo);
        EXPECT_EQ(en(2, fila), c.anilla);
        EXPECT_EQ(en(8, fila), QString::number(c.numero) + u",5"_s);
        EXPECT_EQ(en(13, fila), c.tipo);
    }
    QStringList titulos;
    for (const report::Element& e : informe.groupTitles.elements)
        if (e.kind == report::Element::Kind::Label) titulos << e.source;
    EXPECT_EQ(titulos.join(u' '),
              u"Reg. T. Anilla Especie Ed Sx Ala F8 Peso Hora St Co Ci Centro Tarso G. Pl."_s);

    gFiltroTexto.clear();
    report::Document& ninguna = hojas(1, 2);
    EXPECT_EQ(ninguna.rowCount(), 0);
    EXPECT_EQ(ninguna.Text(u"lblFiltro"_s), QString());
    EXPECT_EQ(hojas(u"no es un número"_s, 2).rowCount(), 0) << "opens empty";
}

TEST_F(Informes, ElListadoYElBalanceDeUnaConsulta) {
    EXPECT_EQ(balance(true, false).Text(u"lblTitulo"_s), QString()) << "an empty balance has no title";
    QString donde;
    EjecutarConsulta(donde, false, false);
    gFiltroTexto = u"\rTodo"_s;
    mostrarRepHojCamC();
    report::Document& listado = *host.informes.back();
    EXPECT_EQ(listado.rowCount(), 70);
    EXPECT_EQ(listado.Text(u"lblFiltro"_s), u"Filtro de la Consulta:\rTodo"_s);
    QStringList anillas;
    for (int numero = 1; numero <= 50; ++numero)
        anillas << u"AB%1"_s.arg(numero, 4, 10, QChar(u'0'));
    for (int numero = 50; numero < 70; ++numero)
        anillas << u"AB%1"_s.arg(numero, 4, 10, QChar(u'0'));
    EXPECT_EQ(valores(listado, u"NumeroAnilla"_s), anillas);

    for (const QString& tipo : {u"A"_s, u"R"_s}) {
        SCOPED_TRACE(tipo.toStdString());
        int pollos = 0;
        int volanderos = 0;
        std::set<int> especies;
        for (const Captura& c : capturas) {
            if (c.tipo != tipo) continue;
            especies.insert(c.especie);
            pollos += c.edad == u"1"_s ? 1 : 0;
            volanderos += !c.edad.isEmpty() && c.edad != u"1"_s ? 1 : 0;
        }
        gBalanceA = tipo == u"A"_s;
        gBalanceR = !gBalanceA;
        donde.clear();
        EjecutarConsulta(donde, gBalanceA, gBalanceR);
        GenerarBalance();
        report::Document& informe = balance(gBalanceA, gBalanceR);
        EXPECT_EQ(informe.Text(u"lblTitulo"_s),
                  gBalanceA ? u"BALANCE DE ANILLAMIENTOS"_s : u"BALANCE DE RECUPERACIONES"_s);
        EXPECT_EQ(informe.rowCount(), static_cast<int>(especies.size()));
        EXPECT_EQ(informe.totalSum(u"NumPollos"_s).toInt(), pollos);
        EXPECT_EQ(informe.totalSum(u"NumVolanderos"_s).toInt(), volanderos);
        EXPECT_EQ(informe.totalSum(u"NumTotal"_s).toInt(), pollos + volanderos);
    }
    EXPECT_EQ(balance(false, false).Text(u"lblTitulo"_s), u"BALANCE DE ANILLAMIENTOS"_s) << "as it was drawn";
    sql(u"DROP TABLE ICABAL"_s);
    EXPECT_EQ(balance(true, false).rowCount(), 0) << "what cannot be read opens empty";
}

TEST_F(Informes, TodosSeExportanYEsperanALoQueSeImprime) {
    forms::pantallas().Get<frm16_ConsultaAnillas>();
    mostrarRepHojCam();
    mostrarRepHojCamC();
    mostrarRepHojCamB();
    mostrarConsultaAnillas();
    mostrarConsultaAnillasPuestas();
    ASSERT_EQ(host.informes.size(), 5U);
    for (const auto& documento : host.informes) {
        const report::Report& informe = documento->report();
        SCOPED_TRACE(informe.name.toStdString());
        ASSERT_EQ(informe.exportFormats.size(), 1U);
        const report::ExportFormat& formato = informe.exportFormats.front();
        EXPECT_EQ(formato.key, u"HojaCampo"_s);
        EXPECT_EQ(formato.fileFormatText, u"HojaCampo(*.htm)"_s);
        EXPECT_EQ(formato.fileFilter, u"*.HTM"_s);
        EXPECT_EQ(
            formato.templateText,
            u"<HTML>\r\n<HEAD>\r\n<TITLE>Hoja de Campo: <!--MSDBRPT_Template_Title--></TITLE>\r\n<BODY>\r\n"
            "<!--MSDBRPT_Template_Body-->\r\n<BODY>\r\n</HTML>"_s);

        auto impresion = std::make_unique<report::Document::Operation>(*documento);
        int vueltas = 0;
        host.alCederEventos = [&] {
            if (++vueltas == 3) impresion.reset();
        };
        documento->QueryClose(*documento);
        EXPECT_EQ(vueltas, 3);
    }
    EXPECT_EQ(host.textosDeCajas(), QString());
}

}  // namespace
}  // namespace tarmel
