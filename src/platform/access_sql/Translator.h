#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <variant>
#include <vector>

#include "platform/basic/Variant.h"

/// The Access dialect on SQLite: a statement is lexed, its literals are lifted out, and the shape that is
/// left is parsed, resolved against the schema and written as SQLite text. What is not understood is an error
/// (RuntimeError with number -2147217900), never passed through.
namespace tarmel::access_sql {

/// What a column holds. The declared types in the file are those that declaredType() gives.
enum class Type {
    Unknown,
    Boolean,  ///< -1 and 0
    Byte,     ///< 0..255
    Integer,  ///< 16 bit
    Long,     ///< 32 bit
    Single,
    Double,
    Currency,
    Decimal,  ///< up to 15 digits; stored as integer where scale is 0
    Date,     ///< ISO text "yyyy-mm-dd hh:mm:ss"
    Text,     ///< up to `width` characters
    Memo,
    Binary,
    Guid,
    Counter,  ///< 32 bit, numbered by the file, never given twice
};

struct ColumnDef {
    QString name;
    Type type = Type::Unknown;
    int width = 0;  ///< characters of Text, digits of Decimal
    int scale = 0;  ///< decimals of Decimal
    bool notNull = false;
    std::optional<QString> defaultValue;  ///< as dialect text, e.g. "0" or "''"
};

/// A table or a view as the resolver sees it.
struct TableDef {
    QString name;
    std::vector<ColumnDef> columns;
    std::vector<QString> primaryKey;
    bool isView = false;
    /// Finds a column without regard to case; -1 when there is none.
    [[nodiscard]] int indexOf(QStringView column) const;
};

/// Where names are looked up: the catalog of the open file.
class Schema {
 public:
    virtual ~Schema() = default;
    /// Null when there is no such table or view. The pointer lives until the schema changes.
    [[nodiscard]] virtual const TableDef* table(QStringView name) const = 0;
};

/// A statement with its literals lifted out. Statements of one shape have equal keys.
struct Shape {
    QByteArray key;
    std::vector<basic::Variant> literals;  ///< text, whole number, double, date: in the order of the text
};

/// Lexes only. Unfinished text, date or name and unknown characters raise the statement error.
[[nodiscard]] Shape lift(const QString& sql);

/// What a parameter of the SQLite text is bound to.
struct Binding {
    enum class Source { Literal, Parameter } source = Source::Literal;
    int index = 0;  ///< of Shape::literals, or of the "?" marks from 0
    /// Unknown: bound as it is. Otherwise the value is converted to this column type when it is bound; a
    /// value that cannot be converted, or is too long for `width`, fails the statement and names `column`.
    Type convertTo = Type::Unknown;
    int width = 0;
    int scale = 0;
    bool storing =
        false;  ///< convertForStoring(), which may fail; otherwise convertForComparing(), which never does
    QString column;
};

struct OutputColumn {
    QString name;
    QString table;  ///< name or alias of the table it stands in; empty for an expression
    Type type = Type::Unknown;
};

struct ForeignKey {
    QString name, table, column, targetTable, targetColumn;  ///< targetColumn empty: the target's primary key
};
struct CreateTable {
    TableDef table;
    QString primaryKeyName;
};
struct DropTable {
    QString name;
};
struct AddColumn {
    QString table;
    ColumnDef column;
};
struct AlterColumn {
    QString table;
    ColumnDef column;
};
struct AddForeignKey {
    ForeignKey key;
};
struct DropConstraint {
    QString table, name;
};
struct CreateView {
    QString name;
    QString dialectText;    ///< the SELECT as it was written
    QByteArray sqliteText;  ///< the SELECT in plain SQLite, no function or collation of ours
    /// No two share a name: a repeated one is called "TABLE.COLUMN".
    std::vector<OutputColumn> columns;
};
struct DropView {
    QString name;
};
using Definition = std::variant<std::monostate, CreateTable, DropTable, AddColumn, AlterColumn, AddForeignKey,
                                DropConstraint, CreateView, DropView>;

struct Translation {
    enum class Kind { Select, Change, Define } kind = Kind::Select;
    QByteArray text;                    ///< SQLite, UTF-8, parameters ?1..?n (Select, Change)
    std::vector<Binding> bindings;      ///< one for each parameter, in order
    std::vector<OutputColumn> columns;  ///< of a Select
    Definition definition;              ///< of a Define
};

/// Translates a statement of the dialect. The translation serves every statement of the same shape
/// (lift().key) until the schema changes. The key holds what decides the translation: each literal's kind;
/// whether a text that is compared is plain ASCII, since its collation depends on that; and the literals that
/// are never bound (those of ORDER BY, GROUP BY, TOP, definitions and views, and the patterns of LIKE).
[[nodiscard]] Translation translate(const QString& sql, const Schema& schema);

/// The type as it stands in a CREATE TABLE of the file, e.g. "VARCHAR(50) COLLATE NOCASE", and its CHECK, in
/// SQLite.
[[nodiscard]] QByteArray declaredType(const ColumnDef& column);
[[nodiscard]] QByteArray columnCheck(const ColumnDef& column);
[[nodiscard]] QByteArray quoted(QStringView name);  ///< "name" with its quotes doubled

/// Converts a value for a column as storing does (see Binding::storing). Raises the statement error that
/// names `column`.
[[nodiscard]] basic::Variant convertForStoring(const basic::Variant& value, Type type, int width, int scale,
                                               const QString& column);
/// Converts a literal for comparing with a column of the type: a text that reads as a number or date becomes
/// one. Any other text comes back with a "~" in front: unequal to every number and date, and greater than all
/// of them.
[[nodiscard]] basic::Variant convertForComparing(const basic::Variant& value, Type type);

[[nodiscard]] basic::RuntimeError statementError(const QString& description);

}  // namespace tarmel::access_sql
