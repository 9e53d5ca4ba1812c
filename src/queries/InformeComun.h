#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "platform/ado/Recordset.h"
#include "platform/forms/Form.h"
#include "platform/report/Document.h"
#include "platform/report/Report.h"

/// What the printed reports have in common: how their columns, heads and feet are laid out, the format in
/// which they are exported, and how they open. Lengths are millimetres.
namespace tarmel {

/// A column of a report: its title and, under it, the field of each row; without a field the title stands
/// alone.
struct ColumnaInforme {
    QString titulo;
    QString campo;
    double ancho = 0;
    report::Align lado = report::Align::Left;
    QString nombre = {};   ///< of the field's element, where it is not the column's
    QString formato = {};  ///< of a date
};

/// Puts the columns side by side from `izquierda`: titles over a rule into one section, fields into the
/// other.
void ponerColumnas(const std::vector<ColumnaInforme>& columnas, double izquierda, double alto,
                   report::Section& titulos, report::Section& detalle);
/// The two logos, `Image1` and `Image2`, in the upper corners.
void ponerLogos(report::Section& seccion, double ancho);
/// What is left between the logos.
[[nodiscard]] report::Box entreLogos(double ancho, double arriba, double alto);
/// The filter's text between the logos, as many lines as it needs.
void ponerFiltro(report::Section& seccion, double ancho);
/// The day at the left, unless the report tells it elsewhere, and the page at the right.
[[nodiscard]] report::Section pieDePagina(double ancho, bool conFecha = true);

/// Adds "HojaCampo", an HTML page, to the formats in which the report can be exported.
void AgregarFormatoExportacion(report::Report& informe);
/// A report that is still being printed or exported holds its window open.
void DataReport_QueryClose(report::Document& documento);

/// Opens a report's preview. `datos` fetches its rows, `rotulos` fills its labels; whichever of the two fails
/// is passed over, so that a report whose data cannot be read opens empty.
void mostrarInforme(report::Report informe, const std::function<ado::Recordset()>& datos,
                    const std::function<void(report::Document&)>& rotulos, forms::Modality modo);

}  // namespace tarmel
