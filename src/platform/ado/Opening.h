#pragma once

#include <QString>

#include "platform/ado/Sqlite.h"

namespace tarmel::ado::detail {

/// Opens a database file for this program alone to write. Everything that could be wrong with the file
/// (missing, no database, cut short, damaged, read-only, locked by another program) is found before the first
/// byte is written, and raises openError.
[[nodiscard]] Handle openDatabase(const QString& path, bool create);

}  // namespace tarmel::ado::detail
