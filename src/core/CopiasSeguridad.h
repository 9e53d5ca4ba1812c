#pragma once

#include <QString>

/// When the program copies its database. A copy that cannot be made is said in the status bar and stops
/// nothing; nobody is ever asked.
namespace tarmel {

/// Once a day, while the main window stands and the user pauses.
void empezarCopiasDiarias();

/// At once, before an operation that changes much ("la importación"), unless the last copy holds the very
/// same. The screens are painted meanwhile. Not inside a transaction.
void copiarAntesDe(const QString& operacion);

/// Gives up what is under way, for programs that follow each other in one process.
void olvidarCopias();

}  // namespace tarmel
