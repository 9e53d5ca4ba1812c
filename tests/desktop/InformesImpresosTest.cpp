#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>

#include "Banco.h"
#include "Pdf.h"
#include "core/DefinicionesGlobales.h"
#include "core/RegistroPantallas.h"
#include "database/Esquema.h"
#include "desktop/ReportJobs.h"
#include "desktop/VistaInforme.h"
#include "platform/report/Document.h"
#include "queries/Consultas.h"
#include "queries/Informes.h"
#include "store/InformesAlmacen.h"

using namespace Qt::StringLiterals;

namespace tarmel::desktop {

namespace {

struct Impreso {
    QString nombre;
    void (*mostrar)();
    int filas;
};

void PrintTo(const Impreso& impreso, std::ostream* out) {
    *out << impreso.nombre.toStdString();
}

}  // namespace

/// The five reports as they come out of the printer and as a browser gets them, over texts as long as the
/// database takes them and numbers as wide as they come.
class InformesImpresos : public DesktopTest, public testing::WithParamInterface<Impreso> {
 protected:
    static constexpr int kCapturas = 150;

    InformesImpresos() {
        const QString base = folder.filePath(u"Tarmel_11.mdb"_s);
        prepararBase(base, QStringLiteral(TARMEL_DATA_DIR "/tables"));
        gConexion.OpenFile(base);
        registrarPantallas();
        llenar();
    }
    ~InformesImpresos() override {
        escritorio.closeAll();
        reiniciarSesion();
    }

    static void sql(const QString& orden) { gConexion.Execute(orden); }

    void llenar() {
        const QString largo =
            u"Encharcamiento Estacional de las Lagunas Grandes y Pequeñas de la Vega Baja"_s;
        sql(u"UPDATE ANILOC SET NombreLocalidad='"_s + largo + u"', Municipio='"_s + largo +
            u"' WHERE CodigoLocalidad='01002'"_s);
        sql(u"UPDATE ANIBRD SET NombreEspecie='Acrocephalus schoenobaenus bajo observación detenida' WHERE "
            "IdEspecie=2"_s);
        sql(u"UPDATE ICAHAB SET NombreHabitat='"_s + largo + u'\'');
        sql(u"INSERT INTO ANIMAT (IdAnillador,CodigoAnillador,NombreAnillador,CodigoGrupo) VALUES "
            "(1,123456,'MARÍA DE LOS ÁNGELES FERNÁNDEZ DE CÓRDOBA Y GUTIÉRREZ DE LA CONCHA','900001')"_s);
        for (int hoja = 1; hoja <= 3; ++hoja)
            sql(u"INSERT INTO ANICHO (IdCabecera,NumHoja,CodAnillador,CodLocalidad,FechaCaptura,HoraDesde,"
                "HoraHasta,NumRedes,LongitudRed,Campanna,CodigoEstacion,CodigoHabitat,CodigoMetodo) SELECT "
                "%1,%2,123456,'%3','15/03/2010','7:30','21:05',120,'1234,5','PASERE "
                "2010-2011','Reproducción',"
                "Min(CodigoHabitat),(SELECT Min(CodigoMetodo) FROM ANIMCA) FROM ICAHAB"_s.arg(
                    QString::number(hoja), QString::number(999999999990 + hoja),
                    hoja == 2 ? u"01006"_s : u"01002"_s));
        for (int i = 0; i < kCapturas; ++i)
            sql(u"INSERT INTO ANIAHO (IdCabecera,NumRegistro,TipoRegistro,CodigoCentro,Anilla,NumeroAnilla,"
                "IdEspecie,CodigoEdad,CodigoSexo,Ala,F8,Peso,Tarso,HoraCaptura,CodigoCondicion,"
                "CodigoCircunstancia,CodigoEstatus,CodigoGrasa,CodigoPlaca,PrecisionFecha,CodigoReclamo,"
                "CodigoEstado) VALUES (%1,%2,'A','ESI','2A%3','2A%3',%4,'%5','M','1234,5','999,5','10234,5',"
                "'123,5','20:05','8','10','R','4','2','0','N','B')"_s.arg(i % 3 + 1)
                    .arg(1000 + i)
                    .arg(i, 6, 10, QChar(u'0'))
                    .arg(2 + i % 60)
                    .arg(1 + i % 4));
        for (int i = 0; i < 80; ++i)
            sql(u"INSERT INTO ALMACEN VALUES (%1,'%2','%2','900000','999999',%3,'15/03/2010','%4')"_s.arg(
                QString::number(i), u"ABCDEFGKL"_s.mid(i / 9, 1), QString::number(999999 - i),
                u"ADT"_s.mid(i % 3, 1)));
        sql(u"UPDATE TIPOANILLAS SET Total=-1234567"_s);
        gFiltroTexto = u"\rUn criterio que hay que leer entero, por largo que sea: "_s + largo + u", "_s +
                       largo + u"\rOtro criterio\rY uno más"_s;
        gHojaInicial = 0;
        gHojaFinal = 999999999999.0;
        gBalanceA = true;
        QString donde;
        EjecutarConsulta(donde, true, false);
        GenerarBalance();
    }

    /// Runs a job to its end.
    static void hacer(std::unique_ptr<ReportJob> trabajo) {
        QSignalSpy fin(trabajo.get(), &ReportJob::finished);
        trabajo->start();
        ASSERT_TRUE(fin.wait(60'000));
        EXPECT_EQ(fin.front().front().toString(), QString());
    }
};

TEST_P(InformesImpresos, SeLeenEnterosEnElPapelYEnElNavegador) {
    std::shared_ptr<report::Document> documento;
    answers.inReport = [&](const report::Document& abierto) {
        for (const auto& vista : escritorio.previews())
            if (vista->document().get() == &abierto) documento = vista->document();
        escritorio.previews().back()->close();
    };
    GetParam().mostrar();
    if (!documento) documento = escritorio.previews().back()->document();  // not modal
    ASSERT_EQ(documento->report().name, GetParam().nombre);
    ASSERT_EQ(documento->rowCount(), GetParam().filas);

    const QString pdf = folder.filePath(u"informe.pdf"_s);
    hacer(pdfJob(documento, pdf));
    Pdf papel(pdf);
    ASSERT_EQ(static_cast<int>(papel.pages().size()), documento->pageCount());
    ASSERT_GT(papel.pages().size(), 1U);
    papel.expectTidy();
    report::Report informe = documento->report();
    for (int fila = 0; fila < documento->rowCount(); ++fila) {
        for (const report::Section* seccion : {&informe.detail, &informe.groupHeader}) {
            for (const report::Element& elemento : seccion->elements)
                if (elemento.kind == report::Element::Kind::Field)
                    papel.expectText(documento->valueText(elemento, fila));
        }
    }
    // Titles and heads stand whole, and so does the filter however long it is.
    const QSet<QString> palabras = papel.words();
    for (report::Section* seccion : informe.sections()) {
        for (const report::Element& elemento : seccion->elements) {
            if (elemento.kind != report::Element::Kind::Label) continue;
            const QString texto = elemento.name.isEmpty() ? elemento.source : documento->Text(elemento.name);
            for (const QString& palabra : texto.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts))
                EXPECT_TRUE(palabras.contains(palabra)) << palabra.toStdString();
        }
    }
    for (int pagina = 1; pagina <= static_cast<int>(papel.pages().size()); ++pagina) {
        EXPECT_GT(papel.darkness(pagina), 0.003) << pagina;
        EXPECT_LT(papel.darkness(pagina), 0.3) << pagina;
    }

    const QString html = folder.filePath(u"informe.htm"_s);
    hacer(htmlJob(documento, informe.exportFormats.front(), html));
    QFile fichero(html);
    ASSERT_TRUE(fichero.open(QFile::ReadOnly));
    const QByteArray pagina = fichero.readAll();
    EXPECT_TRUE(pagina.startsWith("<HTML>\r\n<HEAD>\r\n<TITLE>Hoja de Campo: "));
    EXPECT_TRUE(pagina.endsWith("<BODY>\r\n</HTML>"));
    EXPECT_GE(pagina.count("<TR>"), documento->rowCount());
    EXPECT_EQ(pagina.count("<TR>"), pagina.count("</TR>"));
}

INSTANTIATE_TEST_SUITE_P(Todos, InformesImpresos,
                         testing::Values(Impreso{u"repHojCam"_s, &mostrarRepHojCam, 150},
                                         Impreso{u"repHojCamC"_s, &mostrarRepHojCamC, 150},
                                         Impreso{u"repHojCamB"_s, &mostrarRepHojCamB, 60},
                                         Impreso{u"ConsultaAnillas"_s, &mostrarConsultaAnillas, 80},
                                         Impreso{u"ConsultaAnillasPuestas"_s, &mostrarConsultaAnillasPuestas,
                                                 204}),
                         [](const auto& fila) { return fila.param.nombre.toStdString(); });

}  // namespace tarmel::desktop
