#pragma once

#include <QString>

namespace tarmel {

/// Makes the data source "AccessDSN" for the database file; on failure says so and ends the program.
void CrearDSN(const QString& ruta);

}  // namespace tarmel
