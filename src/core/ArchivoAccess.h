#pragma once

#include <QString>

#include "database/Salud.h"

namespace tarmel {

/// A database that is still an Access file is brought in and its user told; any other file is left alone.
/// When it cannot be brought in it stays as it was, the user reads why, and the program ends.
void TraerArchivoAccess(const QString& fichero, const Avance& avance);

}  // namespace tarmel
