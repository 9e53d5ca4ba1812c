#include "queries/InformeComun.h"

#include "platform/basic/RuntimeError.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

constexpr double kLogo = 18;
constexpr double kAire = 4;           ///< between a logo and what stands beside it
constexpr double kEntreColumnas = 1;  ///< so that a number at the right never touches the text behind it
constexpr double kRaya = 0.3;

/// The body is closed by the tag that opens it: so stands the template that its users have.
const QString kPlantilla =
    u"<HTML>\r\n<HEAD>\r\n<TITLE>Hoja de Campo: <!--MSDBRPT_Template_Title--></TITLE>\r\n<BODY>\r\n"
    "<!--MSDBRPT_Template_Body-->\r\n<BODY>\r\n</HTML>"_s;

report::Element alineado(report::Element elemento, report::Align lado) {
    elemento.align = lado;
    return elemento;
}

report::Element campoDe(const ColumnaInforme& columna, const report::Box& sitio) {
    report::Element campo = alineado(report::field(columna.campo, sitio), columna.lado);
    if (!columna.nombre.isEmpty()) campo.named(columna.nombre);
    if (!columna.formato.isEmpty()) campo.formatted(columna.formato);
    return campo;
}

}  // namespace

void ponerColumnas(const std::vector<ColumnaInforme>& columnas, double izquierda, double alto,
                   report::Section& titulos, report::Section& detalle) {
    const double arriba = titulos.height;
    double x = izquierda;
    for (const ColumnaInforme& columna : columnas) {
        const double ancho = columna.ancho - kEntreColumnas;
        titulos.elements.push_back(
            alineado(report::label(columna.titulo, {x, arriba, ancho, alto}).bold(), columna.lado));
        if (!columna.campo.isEmpty()) detalle.elements.push_back(campoDe(columna, {x, 0.3, ancho, alto}));
        x += columna.ancho;
    }
    titulos.elements.push_back(report::line({izquierda, arriba + alto + 0.4, x - izquierda, 0}).ruled(kRaya));
    titulos.height = arriba + alto + 1.2;
    detalle.height = alto + 0.6;
}

void ponerLogos(report::Section& seccion, double ancho) {
    seccion.elements.push_back(report::image(u"logo1"_s, {0, 0, kLogo, kLogo}, u"Image1"_s));
    seccion.elements.push_back(report::image(u"logo2"_s, {ancho - kLogo, 0, kLogo, kLogo}, u"Image2"_s));
    seccion.height = std::max(seccion.height, kLogo + 3);
}

report::Box entreLogos(double ancho, double arriba, double alto) {
    const double izquierda = kLogo + kAire;
    return {izquierda, arriba, ancho - 2 * izquierda, alto};
}

void ponerFiltro(report::Section& seccion, double ancho) {
    seccion.elements.push_back(
        report::label(QString(), entreLogos(ancho, 1, 4.2), u"lblFiltro"_s).points(9).growing());
}

report::Section pieDePagina(double ancho, bool conFecha) {
    const double medio = ancho / 2;
    report::Section pie{u"PageFooter"_s,
                        7,
                        {report::line({0, 1.5, ancho, 0}).ruled(0.15),
                         report::pageText(u"Página %p de %P"_s, {medio, 2.5, medio, 4}).points(8).right()}};
    if (conFecha) pie.elements.push_back(report::pageText(u"%D."_s, {0, 2.5, medio, 4}).points(8));
    return pie;
}

void AgregarFormatoExportacion(report::Report& informe) {
    informe.exportFormats.push_back(
        {u"HojaCampo"_s, report::ExportFormat::Kind::Html, u"HojaCampo(*.htm)"_s, u"*.HTM"_s, kPlantilla});
}

void DataReport_QueryClose(report::Document& documento) {
    while (documento.AsynchronousOperations() >= 1)
        forms::host().DoEvents();
}

void mostrarInforme(report::Report informe, const std::function<ado::Recordset()>& datos,
                    const std::function<void(report::Document&)>& rotulos, forms::Modality modo) {
    AgregarFormatoExportacion(informe);
    ado::Recordset filas;
    basic::resumeNext([&] { filas = datos(); });
    const auto documento = std::make_shared<report::Document>(
        std::move(informe), std::make_unique<report::RecordsetRows>(std::move(filas)));
    basic::resumeNext([&] { rotulos(*documento); });
    documento->QueryClose = DataReport_QueryClose;
    forms::host().ShowReport(documento, modo);
}

}  // namespace tarmel
