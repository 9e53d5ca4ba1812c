#pragma once

#include <QString>

#include "platform/ado/Connection.h"

/// The files beside the database: what compaction leaves and what exports leave.
///
/// Compaction rewrites the database. The new file is written beside the old one as `.999`, read through and
/// on the disk; only then the old one becomes `.bak` and the new one takes its name. So between any two steps
/// the data are whole in a file of which the program knows.
namespace tarmel {

struct FicherosDeBase {
    QString base;      ///< as it is spelt on the disk
    QString copia;     ///< the compacted copy, short-lived
    QString anterior;  ///< the database as it was before the last compaction
};

[[nodiscard]] FicherosDeBase ficherosDeBase(const QString& rutaBase);

/// Rewrites the database file and keeps the former one, instead of the one of the compaction before. The
/// connection is closed and stays closed, however it ends. A RuntimeError before the renaming leaves the old
/// file as it was.
void CompactarBase(ado::Connection& conexion, const QString& rutaBase);

/// Finishes the renaming of a compaction during which the program died: nothing bears the database's name
/// then, and copy and former file are there. The copy takes the name if it is whole; if it is not, a copy of
/// the former file.
void TerminarCompactacion(const QString& rutaBase);

/// Deletes the files of a folder that fit the pattern, up to the first that is refused; errors are ignored. A
/// pattern that begins with a backslash means the root of the drive, which this platform does not have: it
/// deletes nothing.
void BorrarFicheros(const QString& carpeta, const QString& patron);

}  // namespace tarmel
