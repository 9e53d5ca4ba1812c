#pragma once

#include <QByteArrayView>
#include <QString>
#include <memory>
#include <vector>

#include "platform/access_sql/Translator.h"

namespace tarmel::ado {

/// A database file that is made in one go out of rows that come from elsewhere. Values are stored as they are
/// bound: keys are kept, but ranges, widths and foreign keys are looked at by whoever binds. Nothing is safe
/// on the disk before close(): the file stands under a name of its own until then. Errors are RuntimeErrors,
/// as of Connection.
class BulkFile {
 public:
    /// Makes the file; one that is there is refused.
    explicit BulkFile(const QString& path);
    /// Without close() the file is left to be thrown away.
    ~BulkFile();
    BulkFile(const BulkFile&) = delete;
    BulkFile& operator=(const BulkFile&) = delete;

    void createTable(const access_sql::TableDef& table,
                     const std::vector<access_sql::ForeignKey>& foreignKeys = {});
    /// The table as described, with the rows that it has; columns are found by name.
    void changeTable(const access_sql::TableDef& table,
                     const std::vector<access_sql::ForeignKey>& foreignKeys = {});
    /// The number that the table's counter is to have given last.
    void setCounter(const QString& table, qint64 last);

    /// Rows for these columns of the table follow; columns left out take their defaults.
    void beginRows(const QString& table, const std::vector<QString>& columns);
    void bindNull(int column);
    void bind(int column, qint64 value);
    void bind(int column, double value);
    /// The bytes must stay until the row is inserted.
    void bindText(int column, QByteArrayView utf8);
    void bindBytes(int column, QByteArrayView bytes);
    /// False when a key of the table refuses the row; what was bound stays bound.
    [[nodiscard]] bool insertRow();
    void endRows();

    /// The whole number that a plain SQLite query gives.
    [[nodiscard]] qint64 number(const QByteArray& query);
    /// All of it has been handed to the file, which is closed.
    void close();

 private:
    struct Open;
    std::unique_ptr<Open> open_;
};

}  // namespace tarmel::ado
