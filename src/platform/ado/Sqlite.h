#pragma once

#include <sqlite3.h>

#include <QByteArray>
#include <QString>
#include <memory>

/// The C API's handles as owners, and the few calls that every file of this room makes.
namespace tarmel::ado::detail {

struct CloseHandle {
    void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Handle = std::unique_ptr<sqlite3, CloseHandle>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// Prepares the one statement of the text; raises the statement error.
[[nodiscard]] Statement prepare(sqlite3* db, const QByteArray& text, unsigned flags = 0);
/// One step: true when a row stands ready; raises the statement error.
bool step(sqlite3* db, sqlite3_stmt* statement);
/// Runs all statements of the text; raises the statement error.
void run(sqlite3* db, const QByteArray& text);
/// The first column of the first row as text; empty when there is no row.
[[nodiscard]] QByteArray firstText(sqlite3* db, const QByteArray& text);

[[nodiscard]] QString columnText(sqlite3_stmt* statement, int column);
/// 'text' with its quotes doubled.
[[nodiscard]] QByteArray literal(const QString& text);

}  // namespace tarmel::ado::detail
