#pragma once

#include <QString>
#include <vector>

#include "platform/access_sql/Ast.h"

namespace tarmel::access_sql {

/// Finds what the names of a statement mean, replaces each * by its columns, and gives every expression its
/// type. Names that stand for nothing are parameters to whom nobody gave a value: they are counted, and
/// finish() refuses them.
class Resolver {
 public:
    explicit Resolver(const Schema& schema) : schema_(schema) {}

    void resolve(Query& query) { resolveQuery(query, nullptr); }
    void resolve(Insert& insert);
    void resolve(Update& update);
    void resolve(Delete& deletion);
    /// Raises the statement error when names were left over.
    void finish() const;

 private:
    /// The tables whose columns an expression may name: its own SELECT's, then those around it.
    struct Scope {
        Select& select;
        const Scope* outer;
        bool inAggregate = false;
        bool aggregatesAllowed = false;
    };

    void resolveQuery(Query& query, const Scope* outer);
    void resolveSelect(Select& select, const Scope* outer);
    void resolveRows(Select& select, Scope& scope);
    void resolveSource(Source& source, const Scope* outer);
    void resolveJoin(JoinTree& tree, const Scope& scope);
    void expandOutputs(Select& select);
    void resolveOrder(Query& query, const Scope* outer);
    void resolveUnionOrder(Query& query);

    void resolve(Expression& expression, const Scope& scope);
    void resolveName(Expression& expression, ColumnName& column, const Scope& scope);
    void resolveCall(Call& call, const Scope& scope);
    void checkGrouping(const Select& select, const Expression& expression) const;
    void noteMissing(const ColumnName& column);

    const Schema& schema_;
    std::vector<QString> missing_;  ///< in small letters
};

/// The table of that name; the statement error when there is none.
[[nodiscard]] const TableDef& tableNamed(QStringView name, const Schema& schema);

/// Output names of which none stands twice, for views and sub-selects: a repeated one becomes TABLE.COLUMN.
[[nodiscard]] std::vector<QString> distinctNames(const std::vector<Output>& outputs);

}  // namespace tarmel::access_sql
