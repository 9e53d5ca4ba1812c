#include "platform/ado/Definitions.h"

#include <QRegularExpression>
#include <algorithm>
#include <optional>

#include "platform/ado/Errors.h"
#include "platform/ado/Sqlite.h"

namespace tarmel::ado::detail {

using access_sql::ColumnDef;
using access_sql::ForeignKey;
using access_sql::quoted;
using access_sql::statementError;
using access_sql::TableDef;
using access_sql::Type;
using namespace Qt::StringLiterals;

namespace {

const QString kUnnamedKey = u"PrimaryKey"_s;
const QByteArray kNewTable = "tarmel_nueva";
constexpr const char* kConvert = "tarmel_convertir";

bool same(QStringView a, QStringView b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// Undoes everything unless it is told that all went well.
class Savepoint {
 public:
    explicit Savepoint(sqlite3* db) : db_(db) { run(db_, "SAVEPOINT definicion"); }
    ~Savepoint() {
        if (open_) sqlite3_exec(db_, "ROLLBACK TO definicion; RELEASE definicion", nullptr, nullptr, nullptr);
    }
    Savepoint(const Savepoint&) = delete;
    Savepoint& operator=(const Savepoint&) = delete;
    void keep() {
        run(db_, "RELEASE definicion");
        open_ = false;
    }

 private:
    sqlite3* db_;
    bool open_ = true;
};

/// While a table is rebuilt its partners must not notice that it is gone for a moment, nor views be looked
/// through.
class PartnersAtRest {
 public:
    explicit PartnersAtRest(sqlite3* db) : db_(db) {
        run(db_, "PRAGMA foreign_keys=OFF; PRAGMA legacy_alter_table=ON");
    }
    ~PartnersAtRest() {
        sqlite3_exec(db_, "PRAGMA legacy_alter_table=OFF; PRAGMA foreign_keys=ON", nullptr, nullptr, nullptr);
    }
    PartnersAtRest(const PartnersAtRest&) = delete;
    PartnersAtRest& operator=(const PartnersAtRest&) = delete;

 private:
    sqlite3* db_;
};

QByteArray nameList(const std::vector<QString>& names) {
    QByteArray list;
    for (const QString& name : names)
        list += (list.isEmpty() ? "" : ", ") + quoted(name);
    return list;
}

/// A default as SQLite text: a number, a text, or one of the words for yes and no.
QByteArray defaultText(const ColumnDef& column) {
    const QString text = column.defaultValue->trimmed();
    static const QRegularExpression number(u"^[-+]?\\d+(\\.\\d*)?$"_s);
    if (number.match(text).hasMatch()) return text.toLatin1();
    if (text.size() >= 2 && (text.front() == u'\'' || text.front() == u'"') && text.back() == text.front()) {
        const QString quote(text.front());
        return literal(text.mid(1, text.size() - 2).replace(quote + quote, quote));
    }
    for (const auto* yes : {u"true", u"yes", u"on", u"verdadero"}) {
        if (same(text, QStringView(yes))) return "-1";
    }
    for (const auto* no : {u"false", u"no", u"off", u"falso"}) {
        if (same(text, QStringView(no))) return "0";
    }
    if (same(text, u"null")) return "NULL";
    throw statementError(u"El valor predeterminado «%1» de la columna %2 no es un número ni un texto."_s.arg(
        text, column.name));
}

QByteArray ruleText(const ColumnDef& column) {
    const QByteArray check = access_sql::columnCheck(column);
    return check.isEmpty() ? QByteArray() : " CONSTRAINT " + quoted(column.name) + " CHECK (" + check + ")";
}

QByteArray columnLine(const ColumnDef& column) {
    QByteArray line = quoted(column.name) + " " + access_sql::declaredType(column);
    if (column.notNull) line += " NOT NULL";
    if (column.defaultValue) line += " DEFAULT " + defaultText(column);
    return line + ruleText(column);
}

QByteArray foreignKeyText(const ForeignKey& key) {
    return "CONSTRAINT " + quoted(key.name) + " FOREIGN KEY (" + quoted(key.column) + ") REFERENCES " +
           quoted(key.targetTable) + " (" + quoted(key.targetColumn) + ")";
}

/// The value of a column of the former type, as the language's runtime sees it.
basic::Variant formerValue(sqlite3_value* value, Type type) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_INTEGER: {
            const qint64 n = sqlite3_value_int64(value);
            return type == Type::Boolean ? basic::Variant(n != 0) : basic::Variant(n);
        }
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        case SQLITE_NULL:
            return basic::Null{};
        default:
            break;
    }
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)),
                                           sqlite3_value_bytes(value));
    return type == Type::Date ? basic::Variant(basic::Date::fromIso(text)) : basic::Variant(text);
}

void giveResult(sqlite3_context* context, const basic::Variant& value) {
    if (value.isNull() || value.isEmpty()) return sqlite3_result_null(context);
    if (value.isBool()) return sqlite3_result_int(context, value.toBool() ? -1 : 0);
    if (value.isDouble()) return sqlite3_result_double(context, value.toDouble());
    if (value.isWhole()) return sqlite3_result_int64(context, *std::get_if<qint64>(&value.raw()));
    const QByteArray text = (value.isDate() ? value.toDate().iso() : value.toText()).toUtf8();
    sqlite3_result_text(context, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

/// How a column's values change at a rebuild; lives as long as the statement that calls it.
struct Conversion {
    Type former = Type::Unknown;
    ColumnDef column;

    static void call(sqlite3_context* context, int, sqlite3_value** arguments) {
        const auto& self = *static_cast<const Conversion*>(sqlite3_user_data(context));
        try {
            const ColumnDef& c = self.column;
            giveResult(context, access_sql::convertForStoring(formerValue(arguments[0], self.former), c.type,
                                                              c.width, c.scale, c.name));
        } catch (const basic::RuntimeError& error) {
            const QByteArray words = error.description().toUtf8();
            sqlite3_result_error(context, words.constData(), static_cast<int>(words.size()));
        }
    }
};

/// Indexes and triggers of a table, as the file has them.
std::vector<QByteArray> attachedTexts(sqlite3* db, const QString& table) {
    const Statement list =
        prepare(db,
                "SELECT sql FROM sqlite_schema WHERE type IN ('index', 'trigger') AND sql IS NOT "
                "NULL AND lower(tbl_name) = lower(" +
                    literal(table) + ") ORDER BY rowid");
    std::vector<QByteArray> texts;
    while (step(db, list.get()))
        texts.push_back(columnText(list.get(), 0).toUtf8());
    return texts;
}

void mustHavePartners(sqlite3* db, const QString& table) {
    const Statement check = prepare(db, "PRAGMA foreign_key_check(" + quoted(table) + ")");
    if (!step(db, check.get())) return;
    throw statementError(u"Hay filas en %1 sin pareja en %2: no se puede crear la relación."_s.arg(
        table, columnText(check.get(), 2)));
}

bool isUnique(sqlite3* db, const TableDef& table, const QString& column) {
    if (table.primaryKey.size() == 1 && same(table.primaryKey.front(), column)) return true;
    const QByteArray name = literal(table.name);
    return !firstText(
                db,
                "SELECT 1 FROM pragma_index_list(" + name +
                    ") l WHERE l.\"unique\" = 1 AND l.partial = 0 AND (SELECT group_concat(lower(name)) FROM "
                    "pragma_index_info(l.name)) = lower(" +
                    literal(column) + ")")
                .isEmpty();
}

bool hasCounter(const TableDef& table) {
    return std::ranges::any_of(table.columns, [](const ColumnDef& c) { return c.type == Type::Counter; });
}

/// The number that the table's counter gave last, kept by SQLite beside the table; empty when it never gave
/// one.
QByteArray lastCounterNumber(sqlite3* db, const QString& table) {
    if (firstText(db, "SELECT 1 FROM sqlite_schema WHERE name = 'sqlite_sequence'").isEmpty()) return {};
    return firstText(db, "SELECT seq FROM sqlite_sequence WHERE name = " + literal(table));
}

void setLastCounterNumber(sqlite3* db, const QString& table, const QByteArray& number) {
    run(db, "DELETE FROM sqlite_sequence WHERE name = " + literal(table) +
                "; INSERT INTO sqlite_sequence VALUES (" + literal(table) + ", " + number + ")");
}

bool isText(Type type) {
    return type == Type::Text || type == Type::Memo || type == Type::Guid;
}

void markKeyColumns(TableDef& table) {
    for (const QString& key : table.primaryKey) {
        const int place = table.indexOf(key);
        if (place < 0)
            throw statementError(u"La columna %1 de la clave no está en la tabla %2."_s.arg(key, table.name));
        table.columns[static_cast<std::size_t>(place)].notNull = true;
    }
}

}  // namespace

QByteArray createText(const TableInfo& table, const QString& name) {
    const TableDef& def = table.definition;
    const bool lonely = def.primaryKey.size() == 1;
    const QByteArray keyName = quoted(table.primaryKeyName.isEmpty() ? kUnnamedKey : table.primaryKeyName);
    QByteArrayList lines;
    bool counter = false;
    bool keyIsCounter = false;
    for (const ColumnDef& column : def.columns) {
        const bool alone = lonely && same(def.primaryKey.front(), column.name);
        if (column.type != Type::Counter) {
            lines << columnLine(column);
            continue;
        }
        if (counter) throw statementError(u"La tabla %1 sólo puede tener un contador."_s.arg(def.name));
        counter = true;
        keyIsCounter = alone;
        lines << quoted(column.name) + " INTEGER" + (alone ? " CONSTRAINT " + keyName : QByteArray()) +
                     " PRIMARY KEY AUTOINCREMENT" + ruleText(column);
    }
    if (!def.primaryKey.empty() && !keyIsCounter) {
        lines << "CONSTRAINT " + keyName + (counter ? " UNIQUE (" : " PRIMARY KEY (") +
                     nameList(def.primaryKey) + ")";
    }
    for (const ForeignKey& key : table.foreignKeys)
        lines << foreignKeyText(key);
    return "CREATE TABLE " + quoted(name) + " (\n    " + lines.join(",\n    ") + "\n)";
}

void DefinitionRunner::run(const access_sql::Definition& definition) {
    std::visit([this](const auto& what) { apply(what); }, definition);
}

void DefinitionRunner::apply(std::monostate) {}

const TableInfo& DefinitionRunner::existing(const QString& table) const {
    const TableInfo* info = catalog_.find(table);
    if (!info || info->definition.isView) throw statementError(u"La tabla «%1» no existe."_s.arg(table));
    return *info;
}

void DefinitionRunner::mustBeFree(const QString& name) const {
    if (catalog_.find(name)) throw statementError(u"La tabla o consulta «%1» ya existe."_s.arg(name));
}

ForeignKey DefinitionRunner::completed(ForeignKey key) const {
    const TableDef& table = existing(key.table).definition;
    const TableDef& target = existing(key.targetTable).definition;
    if (key.targetColumn.isEmpty()) {
        if (target.primaryKey.size() != 1) {
            throw statementError(u"La tabla «%1» no tiene una clave de una sola columna."_s.arg(target.name));
        }
        key.targetColumn = target.primaryKey.front();
    }
    const int from = table.indexOf(key.column);
    const int to = target.indexOf(key.targetColumn);
    if (from < 0 || to < 0) {
        throw statementError(u"La columna «%1» no existe."_s.arg(from < 0 ? key.column : key.targetColumn));
    }
    const ColumnDef& own = table.columns[static_cast<std::size_t>(from)];
    const ColumnDef& other = target.columns[static_cast<std::size_t>(to)];
    if (isText(own.type) != isText(other.type)) {
        throw statementError(
            u"La relación «%1» necesita el mismo tipo de datos en sus dos columnas."_s.arg(key.name));
    }
    if (!isUnique(db_, target, other.name)) {
        throw statementError(
            u"La columna «%1» de la tabla «%2» admite duplicados: no puede ser el otro lado de una relación."_s
                .arg(other.name, target.name));
    }
    return {key.name, table.name, own.name, target.name, other.name};
}

void DefinitionRunner::apply(const access_sql::CreateTable& what) {
    mustBeFree(what.table.name);
    TableInfo info{what.table, what.primaryKeyName, {}};
    markKeyColumns(info.definition);
    detail::run(db_, createText(info, what.table.name));
    catalog_.refresh(db_, what.table.name);
}

void DefinitionRunner::apply(const access_sql::DropTable& what) {
    const TableInfo& table = existing(what.name);
    const QString name = table.definition.name;
    for (const ForeignKey& key : catalog_.foreignKeys()) {
        if (same(key.targetTable, table.definition.name) && !same(key.table, table.definition.name)) {
            throw statementError(
                u"La tabla «%1» no se puede eliminar: es parte de la relación «%2» con «%3»."_s.arg(
                    table.definition.name, key.name, key.table));
        }
    }
    detail::run(db_, "DROP TABLE " + quoted(name));
    catalog_.refresh(db_, name);
}

void DefinitionRunner::apply(const access_sql::AddColumn& what) {
    const TableInfo& table = existing(what.table);
    if (table.definition.indexOf(what.column.name) >= 0) {
        throw statementError(
            u"La columna «%1» ya existe en la tabla «%2»."_s.arg(what.column.name, table.definition.name));
    }
    if (what.column.type != Type::Counter) {
        detail::run(
            db_, "ALTER TABLE " + quoted(table.definition.name) + " ADD COLUMN " + columnLine(what.column));
        catalog_.refresh(db_, what.table);
        return;
    }
    TableInfo wanted = table;
    wanted.definition.columns.push_back(what.column);
    rebuild(table, wanted, nullptr);
}

void DefinitionRunner::apply(const access_sql::AlterColumn& what) {
    const TableInfo& table = existing(what.table);
    const int place = table.definition.indexOf(what.column.name);
    if (place < 0) {
        throw statementError(
            u"La columna «%1» no existe en la tabla «%2»."_s.arg(what.column.name, table.definition.name));
    }
    TableInfo wanted = table;
    ColumnDef& column = wanted.definition.columns[static_cast<std::size_t>(place)];
    const ColumnDef former = column;
    column = what.column;
    column.name = former.name;
    column.notNull = column.notNull || former.notNull;
    if (!column.defaultValue) column.defaultValue = former.defaultValue;
    rebuild(table, wanted, &column);
}

void DefinitionRunner::apply(const access_sql::AddForeignKey& what) {
    for (const ForeignKey& key : catalog_.foreignKeys()) {
        if (same(key.name, what.key.name)) {
            throw statementError(u"Ya existe una relación llamada «%1»."_s.arg(what.key.name));
        }
    }
    const ForeignKey key = completed(what.key);
    TableInfo wanted = existing(key.table);
    wanted.foreignKeys.push_back(key);
    rebuild(existing(key.table), wanted, nullptr);
}

void DefinitionRunner::apply(const access_sql::DropConstraint& what) {
    const TableInfo& named = existing(what.table);
    const QString& name = named.definition.name;
    for (const ForeignKey& key : catalog_.foreignKeys()) {
        // A relation is found from either of its tables.
        if (!same(key.name, what.name) || (!same(key.table, name) && !same(key.targetTable, name))) continue;
        TableInfo wanted = existing(key.table);
        std::erase_if(wanted.foreignKeys,
                      [&](const ForeignKey& other) { return same(other.name, what.name); });
        rebuild(existing(key.table), wanted, nullptr);
        return;
    }
    if (named.definition.primaryKey.empty() || !same(named.primaryKeyName, what.name)) {
        throw statementError(u"No existe la restricción «%1» en la tabla «%2»."_s.arg(what.name, name));
    }
    for (const ForeignKey& key : catalog_.foreignKeys()) {
        if (same(key.targetTable, name) && same(key.targetColumn, named.definition.primaryKey.front())) {
            throw statementError(
                u"La clave «%1» no se puede quitar: la usa la relación «%2»."_s.arg(what.name, key.name));
        }
    }
    TableInfo wanted = named;
    wanted.definition.primaryKey.clear();
    wanted.primaryKeyName.clear();
    rebuild(named, wanted, nullptr);
}

void DefinitionRunner::apply(const access_sql::CreateView& what) {
    mustBeFree(what.name);
    Savepoint savepoint(db_);
    const QByteArray side(Catalog::kViewTable);
    detail::run(db_, "CREATE VIEW " + quoted(what.name) + " AS " + what.sqliteText);
    detail::run(db_,
                "CREATE TABLE IF NOT EXISTS " + side +
                    " (Nombre TEXT PRIMARY KEY COLLATE NOCASE, Texto TEXT NOT NULL, Columnas TEXT NOT NULL)");
    detail::run(db_, "INSERT INTO " + side + " VALUES (" + literal(what.name) + ", " +
                         literal(what.dialectText) + ", " + literal(Catalog::columnsText(what.columns)) +
                         ")");
    // A view is only looked through when it is used: what it cannot do must show now.
    (void)prepare(db_, "SELECT * FROM " + quoted(what.name));
    savepoint.keep();
    catalog_.refresh(db_, what.name);
}

void DefinitionRunner::apply(const access_sql::DropView& what) {
    const TableInfo* view = catalog_.find(what.name);
    if (!view || !view->definition.isView)
        throw statementError(u"La consulta «%1» no existe."_s.arg(what.name));
    Savepoint savepoint(db_);
    detail::run(db_, "DROP VIEW " + quoted(view->definition.name));
    if (catalog_.hasViewTexts()) {
        detail::run(db_, QByteArray("DELETE FROM ") + Catalog::kViewTable +
                             " WHERE Nombre = " + literal(view->definition.name));
    }
    savepoint.keep();
    catalog_.refresh(db_, what.name);
}

void DefinitionRunner::rebuild(const TableInfo& present, const TableInfo& wanted, const ColumnDef* changed) {
    if (sqlite3_get_autocommit(db_) == 0) {
        throw statementError(u"La definición de una tabla no se puede cambiar dentro de un lote."_s);
    }
    const QString table = present.definition.name;
    Conversion conversion;
    std::vector<QString> names;
    QByteArray values;
    for (const ColumnDef& column : present.definition.columns) {
        names.push_back(column.name);
        if (!values.isEmpty()) values += ", ";
        if (changed && same(changed->name, column.name)) {
            conversion = {column.type, *changed};
            values += QByteArray(kConvert) + "(" + quoted(column.name) + ")";
        } else {
            values += quoted(column.name);
        }
    }
    sqlite3_create_function(db_, kConvert, 1, SQLITE_UTF8, &conversion, &Conversion::call, nullptr, nullptr);
    const std::vector<QByteArray> attached = attachedTexts(db_, table);
    const PartnersAtRest rest(db_);
    Savepoint savepoint(db_);
    detail::run(db_, createText(wanted, QString::fromLatin1(kNewTable)));
    detail::run(db_, "INSERT INTO " + kNewTable + " (" + nameList(names) + ") SELECT " + values + " FROM " +
                         quoted(table) + " ORDER BY rowid");
    const QByteArray lastNumber = lastCounterNumber(db_, table);
    detail::run(db_, "DROP TABLE " + quoted(table));
    detail::run(db_, "ALTER TABLE " + kNewTable + " RENAME TO " + quoted(table));
    if (!lastNumber.isEmpty() && hasCounter(wanted.definition)) setLastCounterNumber(db_, table, lastNumber);
    for (const QByteArray& text : attached)
        detail::run(db_, text);
    mustHavePartners(db_, table);
    for (const ForeignKey& key : catalog_.foreignKeys()) {
        if (same(key.targetTable, table)) mustHavePartners(db_, key.table);
    }
    savepoint.keep();
    catalog_.refresh(db_, table);
}

}  // namespace tarmel::ado::detail
