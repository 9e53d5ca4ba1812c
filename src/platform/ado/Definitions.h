#pragma once

#include "platform/access_sql/Translator.h"
#include "platform/ado/Catalog.h"

struct sqlite3;

namespace tarmel::ado::detail {

/// The definition of a table as SQLite text, under the given name.
[[nodiscard]] QByteArray createText(const TableInfo& table, const QString& name);

/// Carries out DDL. Each definition is whole or not at all; the catalog follows. What SQLite cannot
/// alter is done by rebuilding the table: rows, keys, partners, indexes, triggers and the counter's last
/// number stay.
class DefinitionRunner {
 public:
    DefinitionRunner(sqlite3* db, Catalog& catalog) : db_(db), catalog_(catalog) {}
    void run(const access_sql::Definition& definition);

 private:
    void apply(std::monostate);
    void apply(const access_sql::CreateTable& what);
    void apply(const access_sql::DropTable& what);
    void apply(const access_sql::AddColumn& what);
    void apply(const access_sql::AlterColumn& what);
    void apply(const access_sql::AddForeignKey& what);
    void apply(const access_sql::DropConstraint& what);
    void apply(const access_sql::CreateView& what);
    void apply(const access_sql::DropView& what);

    [[nodiscard]] const TableInfo& existing(const QString& table) const;
    [[nodiscard]] access_sql::ForeignKey completed(access_sql::ForeignKey key) const;
    void mustBeFree(const QString& name) const;
    /// The table as `wanted` describes it, with the rows of the present one; `changed` is the column whose
    /// values are converted, if any.
    void rebuild(const TableInfo& present, const TableInfo& wanted, const access_sql::ColumnDef* changed);

    sqlite3* db_;
    Catalog& catalog_;
};

}  // namespace tarmel::ado::detail
