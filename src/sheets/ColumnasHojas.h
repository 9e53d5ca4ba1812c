#pragma once

#include <vector>

#include "sheets/HojasComun.h"

/// The list of field sheets: its columns.
namespace tarmel::hoja {

/// Places in a row: 0 is its text.
enum : int { kNumHoja = 1, kMunicipio = 2, kParaje = 3, kDifFecha = 5, kEstado = 29 };

[[nodiscard]] const std::vector<ColumnaDePantalla>& Columnas();

}  // namespace tarmel::hoja
