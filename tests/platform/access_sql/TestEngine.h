#pragma once

#include <sqlite3.h>

#include <QString>
#include <QStringList>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/access_sql/Translator.h"

namespace tarmel::access_sql {

/// The dialect over a plain SQLite connection in memory: what the data layer does with a translation, in its
/// simplest form. Tables are made from dialect text, so their types, widths and checks are those of the
/// files.
class TestEngine : public Schema {
 public:
    TestEngine();

    /// Runs the statement; the rows of a query as text, Null as "Null", dates in the file's form.
    std::vector<QStringList> run(const QString& sql, const std::vector<basic::Variant>& parameters = {});
    /// The rows as "a|b;c|d".
    std::string rows(const QString& sql, const std::vector<basic::Variant>& parameters = {});
    /// The first value of the first row.
    std::string value(const QString& sql);
    /// The description of the refusal; empty when the statement is not refused.
    std::string refusal(const QString& sql);
    /// Runs every statement of the file: one a line, "--" in front of a remark.
    void runFile(const QString& path);
    [[nodiscard]] int changes() const { return sqlite3_changes(db_.get()); }
    /// What the planner says about the statement, as one text.
    std::string plan(const QString& sql);
    /// SQLite text, for indexes.
    void plain(const char* sql);

    /// For what only SQLite itself can tell or limit.
    [[nodiscard]] sqlite3* handle() const { return db_.get(); }

    [[nodiscard]] const TableDef* table(QStringView name) const override;
    [[nodiscard]] const std::vector<OutputColumn>& columns() const { return columns_; }

 private:
    struct Closer {
        void operator()(sqlite3* db) const { sqlite3_close(db); }
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Prepared = std::unique_ptr<sqlite3_stmt, Closer>;

    Prepared prepared(const QString& sql, const std::vector<basic::Variant>& parameters,
                      const char* before = "");
    void define(const Definition& definition);
    void define(const TableDef& table);
    [[nodiscard]] basic::RuntimeError failure() const;

    std::unique_ptr<sqlite3, Closer> db_;
    std::map<QString, TableDef> tables_;
    std::vector<OutputColumn> columns_;
};

/// The statements of a data file, one a line, without remarks and blank lines.
[[nodiscard]] QStringList statementsOf(const QString& path);

}  // namespace tarmel::access_sql
