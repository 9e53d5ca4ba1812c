#pragma once

#include <QString>

#include "core/DefinicionesGlobales.h"

/// What becomes of a query: the captures of a condition are laid out flat in `Consultas`, a balance adds them
/// up per species in `ICABAL`, and both stand there for the reports and the text files until the next query.
namespace tarmel {

/// The text at the head of a report (`lblFiltro`): the description under its heading, or nothing.
[[nodiscard]] QString TextoFiltro();

/// Fills `Consultas` with the captures that satisfy `where`, for a balance those of its type alone (the
/// condition is completed for it). The number of rows, which is told unless a balance is to follow. A failed
/// statement ends in RuntimeError 91.
int EjecutarConsulta(QString& where, bool BalanceA, bool BalanceR);
/// Fills `ICABAL` from `Consultas` for the balance that was asked for, and tells the number of species.
/// A failed statement ends in RuntimeError 91.
void GenerarBalance();

/// Write `Consultas` and `ICABAL` to <NombreFichero>.txt in the application folder's `Consultas`: ANSI code
/// page, CR LF, ";" between fields, nothing quoted. A file of that name is replaced as a whole, or stays as
/// it was. Errors: 76 no folder, 75 refused, 61 no room.
void EscribirListado(const QString& NombreFichero);
void EscribirBalance(const QString& NombreFichero);

}  // namespace tarmel
