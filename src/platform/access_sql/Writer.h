#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "platform/access_sql/Ast.h"
#include "platform/access_sql/Types.h"

namespace tarmel::access_sql {

/// Writes a resolved tree as SQLite text. Types decide what an operator becomes; each literal that is bound
/// becomes a parameter with the conversion that its place asks for.
class Writer {
 public:
    /// Engine: literals are bound, and the registered functions and the Spanish collation serve.
    /// File: a view; literals stand in the text, which is plain SQLite that any program can read.
    enum class Target { Engine, File };

    Writer(Target target, const Schema& schema) : plain_(target == Target::File), schema_(schema) {
        out_.reserve(1024);
    }

    /// The columns of a SELECT are called as `names` says; as they come when it is empty.
    void write(const Query& query, const std::vector<QString>& names = {});
    void write(const Insert& insert);
    void write(const Update& update);
    void write(const Delete& deletion);

    [[nodiscard]] QByteArray takeText() { return std::move(out_); }
    [[nodiscard]] std::vector<Binding> takeBindings() { return std::move(bindings_); }

 private:
    using Names = std::vector<QString>;

    // Queries (Writer.cpp)
    void select(const Select& select, const Names& names, bool distinctText);
    void outputs(const Select& select, const Names& names, bool distinctText);
    void rows(const Select& select);
    void topQuery(const Query& query, const Names& names);
    void rank(const Query& query, const Names& inner);
    void groups(const Select& select);
    void sortKey(const Expression& expression);
    void order(const Query& query);
    void orderItem(const Query& query, const OrderItem& item);
    void tables(const Select& select);
    void joins(const Select& select, const JoinTree& tree);
    void joinOperand(const Select& select, const JoinTree& tree);
    void conditionsOn(const std::vector<const Expression*>& conditions);
    void table(const Source& source);
    void where(const Select& select);
    void rowNumber(const Select& select, const Source& source);

    // Changes (WriterChanges.cpp)
    void insertQuery(const Insert& insert, const TableDef& table);
    void updateJoined(const Update& update, const Source& target);
    [[nodiscard]] const Source& updateTarget(const Update& update) const;
    void stored(const Expression& value, const ColumnDef& column);
    void storedCall(const QByteArray& text, Type from, const ColumnDef& column);

    // Expressions (WriterExpressions.cpp). `level` is SQLite's precedence that the place asks for.
    void value(const Expression& expression, int level = 0);
    void condition(const Expression& expression, int level = 0);
    void number(const Expression& expression, int level = 0);
    void text(const Expression& expression);
    void joinable(const Expression& expression);
    void date(const Expression& expression);
    void comparable(const Expression& expression, Kind kind, int level);

    void literal(const Literal& literal, Type convertTo = Type::Unknown);
    [[nodiscard]] QByteArray written(const Expression& expression);
    void fixedValue(const basic::Variant& value);
    void parameter(const Parameter& parameter, Type convertTo = Type::Unknown);
    void column(const ColumnName& column);
    void binary(const Expression& expression, const Binary& binary, int level);
    void sum(const Binary& sum, int level);
    void join(const Expression& expression);
    void comparison(Operator op, const Expression& left, const Expression& right);
    void like(const Binary& like);
    void between(const Between& between);
    void in(const InList& in, int level);
    void in(const InQuery& in);

    // Functions (WriterFunctions.cpp)
    void call(const Expression& expression, const Call& call);
    void aggregate(const Call& call);
    void datePart(const Call& call, int from, int length);
    void plainCall(const Call& call);
    void ownCall(const char* name, std::initializer_list<const Expression*> numbers);
    void branch(const Expression& expression, Type common);

    void collate(const char* name) { out_ += name; }
    [[nodiscard]] const char* equalityCollation(std::initializer_list<const Expression*> operands) const;
    [[nodiscard]] const char* spanish() const { return plain_ ? " COLLATE NOCASE" : " COLLATE ES"; }

    void bind(Binding binding);
    void open(bool needed) {
        if (needed) out_ += '(';
    }
    void close(bool needed) {
        if (needed) out_ += ')';
    }
    void checkSize() const;

    const bool plain_;
    const Schema& schema_;
    QByteArray out_;
    std::vector<Binding> bindings_;
};

/// Whether the join needs brackets in SQLite too. The tables inside them have no row numbers outside.
[[nodiscard]] bool hasBrackets(const JoinTree& tree);
/// A text as a SQLite literal.
[[nodiscard]] QByteArray quotedText(const QString& text);

}  // namespace tarmel::access_sql
