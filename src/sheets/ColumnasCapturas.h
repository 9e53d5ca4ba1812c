#pragma once

#include <QString>
#include <vector>

#include "platform/ado/Recordset.h"
#include "sheets/HojasComun.h"

/// The list of captures: its columns, and what is read off its rows.
namespace tarmel::captura {

/// Places in a row: 0 is its text.
enum : int {
    kNumRegistro = 0,
    kCentro = 2,
    kFecha = 3,
    kDifFecha = 4,
    kAnilla = 5,
    kHora = 21,
    kNumHoja = 37,
    kIdCabecera = 38,
};

[[nodiscard]] const std::vector<ColumnaDePantalla>& Columnas();

/// The place of a sheet as the lists of rings give it, from a row with the three columns of the place.
[[nodiscard]] QString LugarDeLaHoja(const ado::Recordset& hoja);

}  // namespace tarmel::captura
