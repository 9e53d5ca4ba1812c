#pragma once

namespace tarmel {

/// Opens the help at its first page.
void MostrarAyuda();

}  // namespace tarmel
