#pragma once

#include <QString>

#include "platform/basic/RuntimeError.h"

/// The refusals of the dialect, in the words that its users read. All carry the statement error's number.
namespace tarmel::access_sql {

[[nodiscard]] basic::RuntimeError statementError(const QString& description);

[[nodiscard]] basic::RuntimeError syntaxError(QStringView near, qsizetype position);
[[nodiscard]] basic::RuntimeError tooComplex();
[[nodiscard]] basic::RuntimeError unknownTable(QStringView name);
[[nodiscard]] basic::RuntimeError unknownField(QStringView name);  ///< of an INSERT
[[nodiscard]] basic::RuntimeError missingParameters(int count);
[[nodiscard]] basic::RuntimeError notForViews(QStringView what);  ///< what plain SQLite does not have

}  // namespace tarmel::access_sql
