#pragma once

#include <QString>

#include "platform/basic/RuntimeError.h"

struct sqlite3;

/// What the data layer reports, in the words that its users read.
namespace tarmel::ado::detail {

/// Number of a database that cannot be opened (missing, locked, damaged ...).
inline constexpr int kOpenFailed = -2147467259;

[[nodiscard]] basic::RuntimeError openError(const QString& description);
[[nodiscard]] basic::RuntimeError noCurrentRow();
[[nodiscard]] basic::RuntimeError noSuchField(const QString& name);
[[nodiscard]] basic::RuntimeError recordsetClosed();
[[nodiscard]] basic::RuntimeError connectionClosed();

/// The last failure of the database as a statement error, naming what was refused: the table and columns of a
/// repeated key, the column whose rule a value breaks. A missing partner is not known here: see
/// Engine::partnerError.
[[nodiscard]] basic::RuntimeError lastError(sqlite3* db);
/// The plain words for a result code alone: locked, read-only, full, damaged ...; empty for the others.
[[nodiscard]] QString troubleOfFile(int resultCode);

}  // namespace tarmel::ado::detail
