#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/access_sql/Translator.h"

struct sqlite3;

namespace tarmel::ado::detail {

/// A table or view with what a rebuild of it must keep.
struct TableInfo {
    access_sql::TableDef definition;
    QString primaryKeyName;
    std::vector<access_sql::ForeignKey> foreignKeys;  ///< of this table, by name where they have one
};

/// The tables and views of the file. Everything about a table is read from the file's own text, so that what
/// another program changed is seen too; of a view, the column types come from the side table that CREATE VIEW
/// fills.
class Catalog : public access_sql::Schema {
 public:
    void load(sqlite3* db);
    /// Reads one table or view anew, after it was made, changed or dropped.
    void refresh(sqlite3* db, const QString& name);
    [[nodiscard]] const access_sql::TableDef* table(QStringView name) const override;
    [[nodiscard]] const TableInfo* find(QStringView name) const;
    /// In the order of their making.
    [[nodiscard]] std::vector<QString> names() const;
    [[nodiscard]] std::vector<access_sql::ForeignKey> foreignKeys() const;

    [[nodiscard]] bool hasViewTexts() const { return hasViewTexts_; }
    /// The side table of the views: name, text in the dialect, and the columns' names and types, one a line.
    static constexpr const char* kViewTable = "tarmel_vistas";
    [[nodiscard]] static QString columnsText(const std::vector<access_sql::OutputColumn>& columns);

 private:
    void add(sqlite3* db, const QString& name, bool isView, const QString& text);
    void complete(TableInfo& info) const;

    bool hasViewTexts_ = false;
    std::vector<std::unique_ptr<TableInfo>> tables_;
    QHash<QString, const TableInfo*> byName_;  // in small letters
};

/// The column that the declared type of a table stands for.
[[nodiscard]] access_sql::ColumnDef columnOfDeclaration(const QString& name, const QString& declared);

}  // namespace tarmel::ado::detail
