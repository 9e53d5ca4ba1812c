#include "platform/ado/BulkFile.h"

#include <QFileInfo>
#include <algorithm>

#include "platform/ado/Catalog.h"
#include "platform/ado/Definitions.h"
#include "platform/ado/Errors.h"
#include "platform/ado/Sqlite.h"

namespace tarmel::ado {

using access_sql::ForeignKey;
using access_sql::quoted;
using access_sql::TableDef;

namespace {

const QString kNewTable = QStringLiteral("tarmel_nueva");

QByteArray nameList(const std::vector<QString>& names) {
    QByteArrayList list;
    for (const QString& name : names)
        list << quoted(name);
    return list.join(", ");
}

/// Columns of a key hold a value.
detail::TableInfo infoOf(TableDef table, const std::vector<ForeignKey>& foreignKeys) {
    for (const QString& key : table.primaryKey) {
        const int place = table.indexOf(key);
        if (place >= 0) table.columns[static_cast<std::size_t>(place)].notNull = true;
    }
    return {std::move(table), {}, foreignKeys};
}

}  // namespace

struct BulkFile::Open {
    detail::Handle db;
    detail::Statement rows;
};

BulkFile::BulkFile(const QString& path) : open_(std::make_unique<Open>()) {
    if (QFileInfo::exists(path))
        throw detail::openError(QStringLiteral("El archivo «%1» ya existe.").arg(path));
    sqlite3* raw = nullptr;
    const int result =
        sqlite3_open_v2(path.toUtf8().constData(), &raw,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
    open_->db.reset(raw);
    if (result != SQLITE_OK) throw detail::openError(detail::troubleOfFile(result));
    sqlite3_extended_result_codes(raw, 1);
    // A file that is only begun is thrown away, so nothing needs to last before it is closed.
    detail::run(raw,
                "PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF; PRAGMA locking_mode=EXCLUSIVE; "
                "PRAGMA foreign_keys=OFF; PRAGMA ignore_check_constraints=ON; PRAGMA legacy_alter_table=ON; "
                "PRAGMA temp_store=MEMORY; "
                "PRAGMA cache_size=-64000; BEGIN");
}

BulkFile::~BulkFile() = default;

void BulkFile::createTable(const TableDef& table, const std::vector<ForeignKey>& foreignKeys) {
    detail::run(open_->db.get(), detail::createText(infoOf(table, foreignKeys), table.name));
}

void BulkFile::changeTable(const TableDef& table, const std::vector<ForeignKey>& foreignKeys) {
    endRows();
    sqlite3* db = open_->db.get();
    std::vector<QString> columns;
    for (const access_sql::ColumnDef& column : table.columns)
        columns.push_back(column.name);
    const QByteArray names = nameList(columns);
    detail::run(db, detail::createText(infoOf(table, foreignKeys), kNewTable));
    detail::run(db, "INSERT INTO " + quoted(kNewTable) + " (" + names + ") SELECT " + names + " FROM " +
                        quoted(table.name) + " ORDER BY rowid");
    detail::run(db, "DROP TABLE " + quoted(table.name));
    detail::run(db, "ALTER TABLE " + quoted(kNewTable) + " RENAME TO " + quoted(table.name));
}

void BulkFile::setCounter(const QString& table, qint64 last) {
    const QByteArray name = detail::literal(table);
    detail::run(open_->db.get(), "DELETE FROM sqlite_sequence WHERE name = " + name +
                                     "; INSERT INTO sqlite_sequence VALUES (" + name + ", " +
                                     QByteArray::number(last) + ")");
}

void BulkFile::beginRows(const QString& table, const std::vector<QString>& columns) {
    QByteArray marks(static_cast<qsizetype>(columns.size()) * 2 - 1, ',');
    for (qsizetype i = 0; i < marks.size(); i += 2)
        marks[i] = '?';
    open_->rows = detail::prepare(
        open_->db.get(),
        "INSERT INTO " + quoted(table) + " (" + nameList(columns) + ") VALUES (" + marks + ")",
        SQLITE_PREPARE_PERSISTENT);
}

void BulkFile::bindNull(int column) {
    sqlite3_bind_null(open_->rows.get(), column + 1);
}

void BulkFile::bind(int column, qint64 value) {
    sqlite3_bind_int64(open_->rows.get(), column + 1, value);
}

void BulkFile::bind(int column, double value) {
    sqlite3_bind_double(open_->rows.get(), column + 1, value);
}

void BulkFile::bindText(int column, QByteArrayView utf8) {
    const char* text = utf8.isEmpty() ? "" : utf8.data();  // a null pointer would bind Null
    sqlite3_bind_text64(open_->rows.get(), column + 1, text, static_cast<sqlite3_uint64>(utf8.size()),
                        SQLITE_STATIC, SQLITE_UTF8);
}

void BulkFile::bindBytes(int column, QByteArrayView bytes) {
    const char* data = bytes.isEmpty() ? "" : bytes.data();
    sqlite3_bind_blob64(open_->rows.get(), column + 1, data, static_cast<sqlite3_uint64>(bytes.size()),
                        SQLITE_STATIC);
}

bool BulkFile::insertRow() {
    sqlite3* db = open_->db.get();
    const int result = sqlite3_step(open_->rows.get());
    if (result == SQLITE_DONE) {
        sqlite3_reset(open_->rows.get());
        return true;
    }
    const bool refused = result == SQLITE_CONSTRAINT_PRIMARYKEY || result == SQLITE_CONSTRAINT_UNIQUE ||
                         result == SQLITE_CONSTRAINT_ROWID || result == SQLITE_CONSTRAINT_NOTNULL;
    if (!refused) throw detail::lastError(db);
    sqlite3_reset(open_->rows.get());
    return false;
}

void BulkFile::endRows() {
    open_->rows.reset();
}

qint64 BulkFile::number(const QByteArray& query) {
    const detail::Statement statement = detail::prepare(open_->db.get(), query);
    return detail::step(open_->db.get(), statement.get()) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void BulkFile::close() {
    endRows();
    detail::run(open_->db.get(), "COMMIT");
    const int result = sqlite3_close(open_->db.release());
    if (result != SQLITE_OK) throw detail::openError(detail::troubleOfFile(result));
}

}  // namespace tarmel::ado
