#pragma once

#include <QString>
#include <QStringList>

#include "database/Salud.h"

/// A database that the user still has as a real Access file becomes one of ours, all of it: rows, columns and
/// tables that we do not know too. The new file is built beside it under a name of its own and takes its
/// place only when every row has been counted; the Access file stays, under another name, and is never
/// written.
namespace tarmel {

/// By its header, whatever its name is.
[[nodiscard]] bool esArchivoDeAccess(const QString& ruta);

struct TraidaAccess {
    qint64 filas = 0;
    int tablas = 0;
    bool anterior = false;  ///< of the former version: it waits for the upgrade
    QString guardado;       ///< where the Access file is now
    QStringList avisos;     ///< keys that its rows break, and what else its user should know
};

/// What a reader may be silent for before it is given up.
inline constexpr int kSilencioDelLector = 60'000;  // ms

/// Raises RuntimeError with what went wrong, table and row where there are any; everything is then as it was.
/// A process that dies in the middle leaves the Access file in its place or the finished one, never neither.
/// `lector` is the program that reads Access files.
[[nodiscard]] TraidaAccess traerAccess(const QString& base, const QString& lector, const Avance& avance,
                                       int silencio = kSilencioDelLector);

}  // namespace tarmel
