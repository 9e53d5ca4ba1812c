#include "core/DefinicionesGlobales.h"
#include "platform/forms/Pantallas.h"
#include "queries/InformeComun.h"
#include "store/InformesAlmacen.h"
#include "store/frm16_ConsultaAnillas.h"

/// The history of the store: its movements, model by model.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

using report::Align;

constexpr double kAlto = 4.6;

const std::vector<ColumnaInforme>& columnas() {
    static const std::vector<ColumnaInforme> lista{
        {u"MODELO"_s, u"Modelo"_s, 22},
        {u"INSCRIPCIÓN"_s, u"Inscripcion"_s, 28},
        {u"Nº INICIAL"_s, u"NumInicial"_s, 26, Align::Right, u"txtNumInicial"_s},
        {u"Nº FINAL"_s, u"NumFinal"_s, 24, Align::Right, u"txtNumFinal"_s},
        {u"CANTIDAD"_s, u"Cantidad"_s, 24, Align::Right, u"txtCantidad"_s},
        {u"FECHA"_s, u"Fecha"_s, 26, Align::Right},
        {u"TIPO MOVIMIENTO"_s, u"TipoMovimiento"_s, 36, Align::Centre, u"txtTipoMovimiento"_s}};
    return lista;
}

/// Where the column of quantities begins, and how wide it is: the sums stand under it.
report::Box bajoCantidad(double arriba) {
    double x = 0;
    for (const ColumnaInforme& columna : columnas()) {
        if (columna.campo == u"Cantidad"_s) return {x, arriba, columna.ancho - 1, kAlto};
        x += columna.ancho;
    }
    return {};
}

report::Report diseño() {
    report::Report informe;
    informe.name = u"ConsultaAnillas"_s;
    informe.title = u"Movimientos de anillas"_s;
    informe.fontSize = 9;
    informe.banded = true;
    informe.groupBy = {u"Modelo"_s};
    const double ancho = informe.width();
    informe.reportHeader.name = u"ReportHeader"_s;
    ponerLogos(informe.reportHeader, ancho);
    informe.pageHeader = {
        u"PageHeader"_s,
        13,
        {report::label(u"MOVIMIENTOS DE ANILLAS"_s, {40, 0, ancho - 80, 7}).bold().points(14).centred(),
         report::pageText(u"%d"_s, {ancho - 39, 1.5, 38, 4.6}).right()}};
    informe.groupHeader.name = u"Consulta_Anillas_Grouping_Header"_s;
    informe.detail.name = u"Consulta_Anillas_Detail"_s;
    ponerColumnas(columnas(), 0, kAlto, informe.pageHeader, informe.detail);
    const report::Box suma = bajoCantidad(0.9);
    informe.groupFooter = {u"Consulta_Anillas_Grouping_Footer"_s,
                           8,
                           {report::line({suma.left, 0.4, suma.width, 0}),
                            report::label(u"Total"_s, {suma.left - 50, 0.9, 48, kAlto}).bold().right(),
                            report::sum(u"Cantidad"_s, suma, u"txtSuma_Modelo"_s).bold()}};
    informe.reportFooter = {
        u"ReportFooter"_s,
        8,
        {report::line({0, 0.4, ancho, 0}).ruled(0.4),
         report::label(u"TOTAL GENERAL"_s, {suma.left - 50, 1.4, 48, kAlto}).bold().right(),
         report::sum(u"Cantidad"_s, bajoCantidad(1.4), u"FunciionSumaTotal"_s).bold()}};
    informe.pageFooter = pieDePagina(ancho, false);
    return informe;
}

}  // namespace

void mostrarConsultaAnillas() {
    mostrarInforme(
        diseño(),
        [] {
            const QString tipo = forms::pantallas().Get<frm16_ConsultaAnillas>().TipoHistorial;
            ado::Recordset filas;
            filas.Open(u"SELECT * FROM ALMACEN"_s +
                           (tipo.isEmpty() ? QString() : u" WHERE TipoMovimiento='"_s + tipo + u'\''),
                       gConexion);
            return filas;
        },
        [](report::Document&) {}, forms::Modality::Modal);
}

}  // namespace tarmel
