#pragma once

#include <QString>

#include "platform/ado/Sqlite.h"

namespace tarmel::ado::detail {

/// Opens a database file for this program alone to write. What can be seen without reading all of it
/// (missing, no database, cut short, an unreadable catalogue, read-only, locked by another program) is found
/// before the first byte is written, and raises openError. The whole file is looked into by FileCheck.
[[nodiscard]] Handle openDatabase(const QString& path, bool create);

inline constexpr int kHeaderSize = 100;  ///< bytes
/// What the file's first bytes and its length tell: what is wrong, in the user's words; empty when nothing
/// is. `hasLog`: a log completes the file.
[[nodiscard]] QString troubleOfHeader(const QString& path, const QByteArray& header, qint64 size,
                                      bool hasLog);

}  // namespace tarmel::ado::detail
