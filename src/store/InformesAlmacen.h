#pragma once

/// The printed reports over the ring store, each in a preview of its own; both return when it is closed. A
/// report whose data cannot be read opens empty; none of them writes to the database.
namespace tarmel {

/// The movements of the type that frm16_ConsultaAnillas holds (`TipoHistorial`), model by model.
void mostrarConsultaAnillas();
/// `TIPOANILLAS.Total` as the last count of frm16_ConsultaAnillas left it, model by model.
void mostrarConsultaAnillasPuestas();

}  // namespace tarmel
