#pragma once

namespace tarmel {

/// Makes all screens of the program known to the registry, once.
void registrarPantallas();

}  // namespace tarmel
