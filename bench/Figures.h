#pragma once

#include "Comparison.h"

/// The figures, a file each.
namespace tarmel::bench {

void addStatements();
void addCapture();
void addAccess();
void addLista();
void addConsultas();

}  // namespace tarmel::bench
