#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <optional>

#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"

/// What the tests of this room share: a folder of their own, whole files, errors as values, and a plain
/// SQLite handle that stands for any other program.
namespace tarmel::ado::test {

using basic::RuntimeError;
using basic::Variant;

inline QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

inline void write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
}

/// The error that the step raises.
template <typename Step>
std::optional<RuntimeError> errorOf(Step&& step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        return error;
    }
    return {};
}

/// The result of a query as text: fields joined by ";", rows by "|", Null empty.
inline QString rowsOf(Connection& connection, const QString& sql,
                      const std::vector<Variant>& parameters = {}) {
    Recordset rs;
    rs.Open(sql, connection, Cursor::ForwardOnly, Lock::ReadOnly, -1, parameters);
    QStringList rows;
    for (; !rs.Eof(); rs.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < rs.FieldCount(); ++i)
            fields << rs.Text(i);
        rows << fields.join(u';');
    }
    return rows.join(u'|');
}

/// Another program at the same file: none of our functions, none of our settings.
class Plain {
 public:
    explicit Plain(const QString& path) {
        EXPECT_EQ(sqlite3_open(path.toUtf8().constData(), &db_), SQLITE_OK);
    }
    ~Plain() { sqlite3_close(db_); }
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;
    int run(const char* sql) { return sqlite3_exec(db_, sql, nullptr, nullptr, nullptr); }
    /// A column of the result; more than one row are joined by "|".
    QString value(const char* sql, int column = 0) {
        sqlite3_stmt* statement = nullptr;
        EXPECT_EQ(sqlite3_prepare_v2(db_, sql, -1, &statement, nullptr), SQLITE_OK) << sqlite3_errmsg(db_);
        QStringList rows;
        while (sqlite3_step(statement) == SQLITE_ROW)
            rows << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
        sqlite3_finalize(statement);
        return rows.join(u'|');
    }

 private:
    sqlite3* db_ = nullptr;
};

inline void makeBase(const QString& path, int rows = 400) {
    using namespace Qt::StringLiterals;
    Connection connection;
    connection.OpenFile(path, true);
    connection.Execute(u"CREATE TABLE T (N INTEGER PRIMARY KEY, Texto VARCHAR(200))"_s);
    Connection::Batch batch(connection);
    for (int n = 1; n <= rows; ++n) {
        connection.Execute(u"INSERT INTO T VALUES (%1, '%2')"_s.arg(n).arg(QString(120, u'x')));
    }
    batch.commit();
}

inline void replaceBytes(const QString& path, qsizetype from, qsizetype count) {
    QByteArray bytes = bytesOf(path);
    bytes.replace(from, count, QByteArray(count, '\xee'));
    write(path, bytes);
}

class FolderTest : public ::testing::Test {
 protected:
    [[nodiscard]] QString path(const QString& name = QStringLiteral("base.mdb")) const {
        return folder_.filePath(name);
    }
    QTemporaryDir folder_;
};

class MemoryTest : public ::testing::Test {
 protected:
    void SetUp() override { connection.OpenFile(QStringLiteral(":memory:")); }
    int run(const QString& sql) { return connection.Execute(sql); }
    QString rows(const QString& sql) { return rowsOf(connection, sql); }
    Connection connection;
};

}  // namespace tarmel::ado::test
