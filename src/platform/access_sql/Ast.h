#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "platform/access_sql/Operators.h"
#include "platform/access_sql/Token.h"
#include "platform/access_sql/Translator.h"

/// A statement as a tree: what the parser builds, the resolver completes and the writer reads.
/// Names are views into the statement's text or into the schema, so a tree lives no longer than either.
namespace tarmel::access_sql {

struct FunctionFacts;
struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;
struct Query;
using QueryPtr = std::unique_ptr<Query>;

// ---- Expressions

struct Literal {
    Token token;
};
struct Parameter {
    int index = 0;
};
enum class Constant { Null, True, False };

/// A table, view or sub-select in a FROM list.
struct Source {
    QStringView table;  ///< empty for a sub-select
    QStringView alias;
    QueryPtr query;
    qsizetype position = 0;

    // By the resolver:
    const TableDef* definition = nullptr;
    TableDef derived;  ///< the sub-select's columns; `definition` points here then

    [[nodiscard]] QStringView exposedName() const { return alias.isEmpty() ? table : alias; }
    /// The name that its columns are qualified with in SQLite.
    [[nodiscard]] QStringView writtenName() const {
        return alias.isEmpty() ? QStringView(definition->name) : alias;
    }
    /// Columns of a table of the file, which carry its collation and a row number. Those of views and
    /// sub-selects do not.
    [[nodiscard]] bool isStored() const { return !query && !definition->isView; }
};

struct ColumnName {
    QStringView table;  ///< as qualified in the text; empty when it is not
    QStringView name;

    // By the resolver:
    const Source* source = nullptr;
    int column = -1;

    [[nodiscard]] const ColumnDef& definition() const {
        return source->definition->columns[static_cast<std::size_t>(column)];
    }
};

struct Unary {
    Operator op;
    ExpressionPtr operand;
};
struct Binary {
    Operator op;
    ExpressionPtr left, right;
    bool negated = false;  ///< NOT LIKE
};
struct Between {
    ExpressionPtr value, low, high;
    bool negated = false;
};
struct InList {
    ExpressionPtr value;
    std::vector<ExpressionPtr> items;
    bool negated = false;
};
struct InQuery {
    ExpressionPtr value;
    QueryPtr query;
    bool negated = false;
};
struct NullTest {
    ExpressionPtr value;
    bool negated = false;
};
struct Call {
    const FunctionFacts* function = nullptr;
    std::vector<ExpressionPtr> arguments;
    bool star = false;  ///< Count(*)
};
struct ScalarQuery {
    QueryPtr query;
};
struct Exists {
    QueryPtr query;
};

struct Expression {
    using Node = std::variant<Literal, Parameter, Constant, ColumnName, Unary, Binary, Between, InList,
                              InQuery, NullTest, Call, ScalarQuery, Exists>;
    Node node;
    qsizetype position = 0;     ///< of its first character
    int depth = 1;              ///< of the tree below
    Type type = Type::Unknown;  ///< by the resolver

    template <typename T>
    [[nodiscard]] const T* as() const {
        return std::get_if<T>(&node);
    }
    template <typename T>
    [[nodiscard]] T* as() {
        return std::get_if<T>(&node);
    }
};

// ---- Queries

struct JoinTree {
    enum class Kind { Table, Inner, Left, Right } kind = Kind::Table;
    std::size_t source = 0;  ///< of a Table: position in Select::sources
    std::unique_ptr<JoinTree> left, right;
    ExpressionPtr on;  ///< none for tables in a list
};

struct Output {
    ExpressionPtr value;  ///< none for * and T.*, which the resolver replaces by the columns
    QStringView starOf;   ///< T of T.*
    QString name;         ///< as AS says, then completed by the resolver
    QString table;        ///< by the resolver: that of a plain column
};

struct OrderItem {
    ExpressionPtr value;
    bool descending = false;
    int output = -1;  ///< by the resolver: position of the output that is meant, from 0
};

struct Top {
    qint64 count = 0;
    bool percent = false;
};

struct Select {
    bool distinct = false;
    bool distinctRow = false;
    std::optional<Top> top;
    std::vector<Output> outputs;
    std::vector<Source> sources;
    std::unique_ptr<JoinTree> from;  ///< null without a FROM
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;

    bool aggregates = false;  ///< by the resolver: gives one row for each group
};

/// One SELECT or several joined by UNION, in an order.
struct Query {
    std::vector<Select> parts;
    std::vector<bool> all;  ///< UNION ALL in front of parts[i + 1]
    std::vector<OrderItem> orderBy;
};

// ---- Statements

struct Assignment {
    ExpressionPtr column;
    ExpressionPtr value;
};
struct Insert {
    QStringView table;
    std::vector<QStringView> columns;  ///< empty when none are named
    std::vector<ExpressionPtr> values;
    QueryPtr query;
};
/// `rows` holds the tables and the condition; it has no outputs.
struct Update {
    Select rows;
    std::vector<Assignment> assignments;
};
struct Delete {
    Select rows;
    QStringView target;  ///< T of DELETE T.* FROM; empty when it is not told
};
struct NewView {
    QStringView name;
    std::vector<QStringView> columns;
    Query query;
    QString text;  ///< the SELECT as it was written
};
using Statement = std::variant<Query, Insert, Update, Delete, NewView, Definition>;

}  // namespace tarmel::access_sql
