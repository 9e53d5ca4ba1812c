#pragma once

#include "platform/ado/Connection.h"

namespace tarmel::muestra {

/// What a database was filled with.
struct Resumen {
    int anilladores = 0;
    int hojas = 0;
    int capturas = 0;
    int recuperaciones = 0;  ///< among the captures
};

/// The code of the first invented ringer, coordinator of his group; the others follow him.
inline constexpr int kPrimerAnillador = 123456;

/// Fills a prepared database without sheets, captures and store movements with invented captures and all that
/// they refer to, as the program would have saved them. The same seed makes the same rows. Raises 5 when the
/// database is not prepared or holds such rows already, or when the ring series are used up (beyond two
/// million captures); what was written by then stays.
Resumen poblar(ado::Connection& conexion, int capturas, quint64 semilla);

}  // namespace tarmel::muestra
