#include "platform/ado/Catalog.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

#include "platform/access_sql/Types.h"
#include "platform/ado/Sqlite.h"

namespace tarmel::ado::detail {

using access_sql::ColumnDef;
using access_sql::ForeignKey;
using access_sql::TableDef;
using access_sql::Type;
using namespace Qt::StringLiterals;

namespace {

const QByteArray kSideTable = literal(QString::fromLatin1(Catalog::kViewTable));
constexpr int kGuidWidth = 38;  // {8-4-4-4-12}

QString unquoted(QString name) {
    return name.mid(1, name.size() - 2).replace(u"\"\""_s, u"\""_s);
}

const QString kName = u"(\"(?:[^\"]|\"\")*\")"_s;

/// Reads constraint names out of the table's text, where this layer wrote them.
void readConstraints(const QString& text, TableInfo& info) {
    static const QRegularExpression foreign(
        u"CONSTRAINT %1 FOREIGN KEY \\(%1\\) REFERENCES %1 \\(%1\\)"_s.arg(kName));
    for (auto match = foreign.globalMatch(text); match.hasNext();) {
        const auto found = match.next();
        info.foreignKeys.push_back({unquoted(found.captured(1)), info.definition.name,
                                    unquoted(found.captured(2)), unquoted(found.captured(3)),
                                    unquoted(found.captured(4))});
    }
    static const QRegularExpression primary(u"CONSTRAINT %1 (?:PRIMARY KEY|UNIQUE \\()"_s.arg(kName));
    const auto found = primary.match(text);
    if (found.hasMatch()) info.primaryKeyName = unquoted(found.captured(1));
}

/// Foreign keys that another program wrote in its own way have no name that we could read.
void readForeignKeys(sqlite3* db, TableInfo& info) {
    const Statement list =
        prepare(db, "PRAGMA foreign_key_list(" + access_sql::quoted(info.definition.name) + ")");
    while (step(db, list.get())) {
        const QString column = columnText(list.get(), 3);
        const QString target = columnText(list.get(), 2);
        const bool known = std::ranges::any_of(info.foreignKeys, [&](const ForeignKey& key) {
            return key.column.compare(column, Qt::CaseInsensitive) == 0 &&
                   key.targetTable.compare(target, Qt::CaseInsensitive) == 0;
        });
        if (!known)
            info.foreignKeys.push_back({{}, info.definition.name, column, target, columnText(list.get(), 4)});
    }
}

/// Where the counter is the row's number, the key that the table was given stands as a unique constraint.
std::vector<QString> uniqueConstraint(sqlite3* db, const QString& table) {
    const Statement list =
        prepare(db, "SELECT i.name FROM pragma_index_list(" + literal(table) +
                        ") l JOIN pragma_index_info(l.name) i "
                        "WHERE l.origin = 'u' AND l.seq = (SELECT MAX(seq) FROM pragma_index_list(" +
                        literal(table) + ") WHERE origin = 'u') ORDER BY i.seqno");
    std::vector<QString> columns;
    while (step(db, list.get()))
        columns.push_back(columnText(list.get(), 0));
    return columns;
}

void readTable(sqlite3* db, const QString& text, TableInfo& info) {
    TableDef& table = info.definition;
    const Statement columns = prepare(db, "PRAGMA table_xinfo(" + access_sql::quoted(table.name) + ")");
    std::vector<std::pair<int, QString>> key;
    const bool numbered = text.contains(u"AUTOINCREMENT"_s, Qt::CaseInsensitive);
    bool counter = false;
    while (step(db, columns.get())) {
        ColumnDef column = columnOfDeclaration(columnText(columns.get(), 1), columnText(columns.get(), 2));
        column.notNull = sqlite3_column_int(columns.get(), 3) != 0;
        if (sqlite3_column_type(columns.get(), 4) != SQLITE_NULL)
            column.defaultValue = columnText(columns.get(), 4);
        const int place = sqlite3_column_int(columns.get(), 5);
        if (place > 0) key.emplace_back(place, column.name);
        if (place > 0 && numbered) {
            column.type = Type::Counter;
            counter = true;
        }
        table.columns.push_back(std::move(column));
    }
    std::ranges::sort(key);
    for (auto& [place, name] : key)
        table.primaryKey.push_back(name);
    readConstraints(text, info);
    readForeignKeys(db, info);
    if (!counter) return;
    if (std::vector<QString> declared = uniqueConstraint(db, table.name); !declared.empty()) {
        table.primaryKey = std::move(declared);
    }
}

/// Of a view that another program made, what SQLite tells.
void readView(sqlite3* db, const QString& stored, TableInfo& info) {
    TableDef& view = info.definition;
    view.isView = true;
    if (!stored.isEmpty()) {
        for (const QString& line : stored.split(u'\n', Qt::SkipEmptyParts)) {
            view.columns.push_back(columnOfDeclaration(line.section(u'\t', 0, 0), line.section(u'\t', 1)));
        }
        return;
    }
    const Statement columns = prepare(db, "PRAGMA table_xinfo(" + access_sql::quoted(view.name) + ")");
    while (step(db, columns.get())) {
        view.columns.push_back(
            columnOfDeclaration(columnText(columns.get(), 1), columnText(columns.get(), 2)));
    }
}

}  // namespace

ColumnDef columnOfDeclaration(const QString& name, const QString& declared) {
    static const QRegularExpression form(u"^\\s*(\\w+)[^(]*(?:\\(\\s*(\\d+)\\s*(?:,\\s*(\\d+)\\s*)?\\))?"_s);
    const auto match = form.match(declared);
    const QString word = match.captured(1).toUpper();
    ColumnDef column;
    column.name = name;
    column.width = match.captured(2).toInt();
    column.scale = match.captured(3).toInt();
    // The dialect's words, but for the few that mean something else where SQLite says them.
    if (word == u"CHAR" && column.width == kGuidWidth) {
        column.type = Type::Guid;
    } else if (word == u"BLOB") {
        column.type = Type::Binary;
    } else if (const auto* known = access_sql::typeNamed(word)) {
        column.type = known->type;
    }
    if (column.type == Type::Text && column.width == 0) column.type = Type::Memo;
    return column;
}

QString Catalog::columnsText(const std::vector<access_sql::OutputColumn>& columns) {
    QString text;
    for (const auto& column : columns) {
        ColumnDef typed;
        typed.type = column.type;
        text += column.name + u'\t' + QString::fromLatin1(access_sql::declaredType(typed)) + u'\n';
    }
    return text;
}

void Catalog::load(sqlite3* db) {
    tables_.clear();
    byName_.clear();
    hasViewTexts_ =
        !firstText(db, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = " + kSideTable).isEmpty();
    const Statement list =
        prepare(db,
                "SELECT name, type, sql FROM sqlite_schema WHERE type IN ('table', 'view') AND "
                "name NOT LIKE 'sqlite\\_%' ESCAPE '\\' AND name <> " +
                    kSideTable + " ORDER BY type, rowid");
    while (step(db, list.get())) {
        add(db, columnText(list.get(), 0), columnText(list.get(), 1) == u"view", columnText(list.get(), 2));
    }
    for (auto& info : tables_)
        complete(*info);
}

void Catalog::refresh(sqlite3* db, const QString& name) {
    if (const TableInfo* known = find(name)) {
        byName_.remove(name.toLower());
        std::erase_if(tables_, [&](const auto& info) { return info.get() == known; });
    }
    const Statement found =
        prepare(db,
                "SELECT name, type, sql FROM sqlite_schema WHERE type IN ('table', 'view') AND "
                "name = " +
                    literal(name));
    if (!step(db, found.get())) return;
    const bool isView = columnText(found.get(), 1) == u"view";
    hasViewTexts_ = hasViewTexts_ || isView;
    add(db, columnText(found.get(), 0), isView, columnText(found.get(), 2));
    complete(*tables_.back());
}

void Catalog::add(sqlite3* db, const QString& name, bool isView, const QString& text) {
    auto info = std::make_unique<TableInfo>();
    info->definition.name = name;
    if (isView) {
        const QByteArray side =
            "SELECT Columnas FROM " + QByteArray(kViewTable) + " WHERE Nombre = " + literal(name);
        readView(db, hasViewTexts_ ? QString::fromUtf8(firstText(db, side)) : QString(), *info);
    } else {
        readTable(db, text, *info);
    }
    byName_.insert(name.toLower(), info.get());
    tables_.push_back(std::move(info));
}

/// A foreign key without a column of its own means the other table's key.
void Catalog::complete(TableInfo& info) const {
    for (ForeignKey& key : info.foreignKeys) {
        const TableInfo* target = find(key.targetTable);
        if (key.targetColumn.isEmpty() && target && target->definition.primaryKey.size() == 1) {
            key.targetColumn = target->definition.primaryKey.front();
        }
    }
}

const TableInfo* Catalog::find(QStringView name) const {
    return byName_.value(name.toString().toLower());
}

const TableDef* Catalog::table(QStringView name) const {
    const TableInfo* info = find(name);
    return info ? &info->definition : nullptr;
}

std::vector<QString> Catalog::names() const {
    std::vector<QString> names;
    for (const auto& info : tables_)
        names.push_back(info->definition.name);
    return names;
}

std::vector<ForeignKey> Catalog::foreignKeys() const {
    std::vector<ForeignKey> keys;
    for (const auto& info : tables_)
        keys.insert(keys.end(), info->foreignKeys.begin(), info->foreignKeys.end());
    return keys;
}

}  // namespace tarmel::ado::detail
