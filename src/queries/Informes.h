#pragma once

/// The printed reports over sheets and queries, each in a preview of its own. A report whose data cannot be
/// read opens empty; none of them writes to the database.
namespace tarmel {

/// The field sheets from gHojaInicial to gHojaFinal, sheet by sheet; returns at once, the preview stays open.
void mostrarRepHojCam();
/// The listing of the last query (`Consultas`); returns when the preview is closed.
void mostrarRepHojCamC();
/// The balance of the last query (`ICABAL`); returns when the preview is closed.
void mostrarRepHojCamB();

}  // namespace tarmel
