#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "platform/basic/RuntimeError.h"

/// Files as the desktop platform looked at them: the last name of a path, and patterns with * and ?, are
/// found without regard to case; names that are written keep theirs.
///
/// Errors are RuntimeErrors: 76 the folder is missing, 53 the file is not there, 58 the new name is taken, 61
/// no room, 75 refused by the system or a bad name.
namespace tarmel::sys {

/// A file (not a folder) of that name is there.
[[nodiscard]] bool exists(const QString& path);
/// The path with its last name spelt as on the disk; nothing when no file is there. Exact spelling goes
/// first.
[[nodiscard]] std::optional<QString> actualPath(const QString& path);
[[nodiscard]] bool isFolder(const QString& path);
/// The names of the folder's files that fit the pattern, in order of name; none for a missing folder.
[[nodiscard]] QStringList find(const QString& folder, const QString& pattern);

/// A write-protected file is refused, as the desktop platform did.
void remove(const QString& path);
/// Removes in order of name up to the first that is refused; 53 when none fits.
void removeMatching(const QString& folder, const QString& pattern);
void rename(const QString& from, const QString& to);
/// With its permissions. A file that is there is replaced, as a whole or not at all.
void copy(const QString& from, const QString& to);
/// The file has exactly these bytes, on the disk, or stays as it was.
void writeWhole(const QString& path, const QByteArray& bytes);
/// Makes names just created, renamed or removed in the folder last through a power cut, where the system can.
void syncFolder(const QString& folder);

/// The error to raise for a system error code met on `path`.
[[nodiscard]] basic::RuntimeError fileError(const QString& path, int systemError);

}  // namespace tarmel::sys
