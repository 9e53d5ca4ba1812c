#pragma once

#include <QString>

namespace tarmel::ado {

/// Writes the database `source` anew into `target` (a file that is there is replaced), without the room that
/// deleted rows left; everything else is as it was, the counters too. The new file is read through and on the
/// disk before this returns. The source must not be open in this program, is held against all others
/// meanwhile, and is not written to. RuntimeError when it is in use, the disk refuses, or the copy turns out
/// to be damaged; then no target is left.
void compactDatabase(const QString& source, const QString& target);

}  // namespace tarmel::ado
