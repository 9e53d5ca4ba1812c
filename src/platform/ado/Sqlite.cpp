#include "platform/ado/Sqlite.h"

#include "platform/ado/Errors.h"

namespace tarmel::ado::detail {

Statement prepare(sqlite3* db, const QByteArray& text, unsigned flags) {
    sqlite3_stmt* raw = nullptr;
    const int result =
        sqlite3_prepare_v3(db, text.constData(), static_cast<int>(text.size()) + 1, flags, &raw, nullptr);
    Statement statement(raw);
    if (result != SQLITE_OK) throw lastError(db);
    return statement;
}

bool step(sqlite3* db, sqlite3_stmt* statement) {
    switch (sqlite3_step(statement)) {
        case SQLITE_ROW:
            return true;
        case SQLITE_DONE:
            return false;
        default:
            throw lastError(db);
    }
}

void run(sqlite3* db, const QByteArray& text) {
    if (sqlite3_exec(db, text.constData(), nullptr, nullptr, nullptr) != SQLITE_OK) throw lastError(db);
}

QByteArray firstText(sqlite3* db, const QByteArray& text) {
    const Statement statement = prepare(db, text);
    if (!step(db, statement.get())) return {};
    return reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
}

QString columnText(sqlite3_stmt* statement, int column) {
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)),
                             sqlite3_column_bytes(statement, column));
}

QByteArray literal(const QString& text) {
    return "'" + text.toUtf8().replace("'", "''") + "'";
}

}  // namespace tarmel::ado::detail
