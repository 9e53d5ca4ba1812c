#include "platform/access_sql/Writer.h"

#include <algorithm>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Resolver.h"
#include "platform/access_sql/Walk.h"

/// The writer's part for SELECT.
namespace tarmel::access_sql {

namespace {

constexpr qsizetype kLongestText =
    4'000'000;  // bytes of SQLite text; operands that are written twice can multiply

const Source& sourceOf(const Select& select, const JoinTree& tree) {
    return select.sources[tree.source];
}

bool isInner(const JoinTree& tree) {
    if (tree.kind == JoinTree::Kind::Table) return true;
    return tree.kind == JoinTree::Kind::Inner && isInner(*tree.left) && isInner(*tree.right);
}

/// The tables and conditions of a tree of inner joins, where neither order nor brackets matter.
void collectInner(const JoinTree& tree, std::vector<const JoinTree*>& tables,
                  std::vector<const Expression*>& conditions) {
    if (tree.kind == JoinTree::Kind::Table) {
        tables.push_back(&tree);
        return;
    }
    collectInner(*tree.left, tables, conditions);
    collectInner(*tree.right, tables, conditions);
    if (tree.on) conditions.push_back(tree.on.get());
}

bool isText(const Expression& expression) {
    const Kind kind = kindOf(expression.type);
    return kind == Kind::Text;
}

QString keyName(std::size_t i) {
    return QStringLiteral("~o%1").arg(i);
}
const Select& onlyPart(const Query& query) {
    return query.parts.front();
}

/// What an item of ORDER BY orders by; of a union, the first SELECT tells its type.
const Expression& keyOf(const Query& query, const OrderItem& item) {
    if (item.output < 0) return *item.value;
    return *onlyPart(query).outputs[static_cast<std::size_t>(item.output)].value;
}

/// The tables whose rows a DISTINCTROW tells apart; empty when every row of the join is one of its own.
std::vector<const Source*> namedSources(const Select& select) {
    std::vector<const Source*> named;
    for (const Source& source : select.sources) {
        const bool isNamed =
            std::any_of(select.outputs.begin(), select.outputs.end(), [&source](const Output& output) {
                bool found = false;
                forEach(*output.value, [&](const Expression& part) {
                    const ColumnName* column = part.as<ColumnName>();
                    found = found || (column && column->source == &source);
                });
                return found;
            });
        if (isNamed) named.push_back(&source);
    }
    if (named.size() == select.sources.size()) named.clear();
    return named;
}

}  // namespace

bool hasBrackets(const JoinTree& tree) {
    if (tree.kind == JoinTree::Kind::Table) return false;
    const auto isJoin = [](const JoinTree& side) { return side.kind != JoinTree::Kind::Table; };
    if (tree.kind == JoinTree::Kind::Left && isJoin(*tree.right)) return true;
    if (tree.kind == JoinTree::Kind::Right && isJoin(*tree.left)) return true;
    return hasBrackets(*tree.left) || hasBrackets(*tree.right);
}

void Writer::checkSize() const {
    if (out_.size() > kLongestText) throw tooComplex();
}

void Writer::write(const Query& query, const Names& names) {
    const bool withTop = std::any_of(query.parts.begin(), query.parts.end(),
                                     [](const Select& part) { return part.top.has_value(); });
    if (withTop) return topQuery(query, names);
    const bool removesRepeats = std::find(query.all.begin(), query.all.end(), false) != query.all.end();
    for (std::size_t i = 0; i < query.parts.size(); ++i) {
        if (i > 0) out_ += query.all[i - 1] ? " UNION ALL " : " UNION ";
        select(query.parts[i], i == 0 ? names : Names{}, removesRepeats || query.parts[i].distinct);
    }
    order(query);
    checkSize();
}

void Writer::select(const Select& select, const Names& names, bool distinctText) {
    out_ += select.distinct ? "SELECT DISTINCT " : "SELECT ";
    outputs(select, names, distinctText);
    rows(select);
}

/// All of a SELECT behind its outputs.
void Writer::rows(const Select& select) {
    if (select.from) {
        out_ += " FROM ";
        tables(select);
    }
    where(select);
    groups(select);
    if (!select.having) return;
    out_ += " HAVING ";
    condition(*select.having);
}

void Writer::outputs(const Select& select, const Names& names, bool distinctText) {
    for (std::size_t i = 0; i < select.outputs.size(); ++i) {
        if (i > 0) out_ += ", ";
        const Expression& output = *select.outputs[i].value;
        if (distinctText && isText(output)) {
            value(output, kOperandLevel);
            // In a view a column of the file brings its own collation along.
            if (!plain_ || equalityCollation({&output})) collate(spanish());
        } else {
            value(output);
        }
        if (i < names.size()) out_ += " AS " + quoted(names[i]);
    }
}

void Writer::where(const Select& select) {
    if (!select.where) return;
    out_ += " WHERE ";
    condition(*select.where);
}

void Writer::groups(const Select& select) {
    std::vector<const Source*> rows;
    if (select.distinctRow && !select.aggregates) rows = namedSources(select);
    if (select.groupBy.empty() && rows.empty()) return;
    out_ += " GROUP BY ";
    bool first = true;
    for (const ExpressionPtr& group : select.groupBy) {
        if (!first) out_ += ", ";
        first = false;
        sortKey(*group);
        if (isText(*group) && (!plain_ || equalityCollation({group.get()}))) collate(spanish());
    }
    for (const Source* source : rows) {
        if (!first) out_ += ", ";
        first = false;
        rowNumber(select, *source);
    }
}

/// What tells the rows of a table apart. Where it has no row number (a view, a bracketed join), all its
/// columns do it.
void Writer::rowNumber(const Select& select, const Source& source) {
    const QByteArray name = quoted(source.writtenName());
    if (source.isStored() && !hasBrackets(*select.from)) {
        out_ += name + ".rowid";
        return;
    }
    for (std::size_t i = 0; i < source.definition->columns.size(); ++i) {
        if (i > 0) out_ += ", ";
        out_ += name + "." + quoted(source.definition->columns[i].name);
    }
}

/// A number that stands alone would be taken for a position.
void Writer::sortKey(const Expression& expression) {
    bool constant = true;
    forEach(expression,
            [&constant](const Expression& part) { constant = constant && !part.as<ColumnName>(); });
    if (constant) out_ += "coalesce(";
    value(expression, kOperandLevel);
    if (constant) out_ += ", NULL)";
}

void Writer::order(const Query& query) {
    for (std::size_t i = 0; i < query.orderBy.size(); ++i) {
        out_ += i == 0 ? " ORDER BY " : ", ";
        orderItem(query, query.orderBy[i]);
    }
}

void Writer::orderItem(const Query& query, const OrderItem& item) {
    const Expression& key = keyOf(query, item);
    if (item.output >= 0) {
        out_ += QByteArray::number(item.output + 1);
    } else {
        sortKey(key);
    }
    if (isText(key)) collate(spanish());
    if (item.descending) out_ += " DESC";
}

/// TOP n keeps the rows that tie with the last one, so the rows are ranked first and counted by their rank.
void Writer::topQuery(const Query& query, const Names& names) {
    if (query.parts.size() > 1) {
        throw statementError(QStringLiteral("TOP no se admite en una consulta de unión."));
    }
    const Select& part = onlyPart(query);
    const Names inner = distinctNames(part.outputs);
    out_ += "SELECT ";
    for (std::size_t i = 0; i < inner.size(); ++i) {
        if (i > 0) out_ += ", ";
        out_ += quoted(inner[i]);
        if (i < names.size()) out_ += " AS " + quoted(names[i]);
    }
    out_ += " FROM (SELECT *, ";
    rank(query, inner);
    out_ += " AS \"~rank\"";
    if (part.top->percent) out_ += ", count(*) OVER () AS \"~count\"";
    out_ += " FROM (";
    out_ += part.distinct ? "SELECT DISTINCT " : "SELECT ";
    outputs(part, inner, part.distinct);
    for (std::size_t i = 0; i < query.orderBy.size(); ++i) {
        if (query.orderBy[i].output >= 0) continue;
        out_ += ", ";
        value(*query.orderBy[i].value);
        out_ += " AS " + quoted(keyName(i));
    }
    rows(part);
    out_ += ")) WHERE \"~rank\" <= " + QByteArray::number(part.top->count);
    // A part of a row counts as a whole one.
    if (part.top->percent) out_ += " * \"~count\" / 100.0 + 0.999999";
    out_ += " ORDER BY \"~rank\"";
    checkSize();
}

void Writer::rank(const Query& query, const Names& inner) {
    if (query.orderBy.empty()) {
        out_ += "row_number() OVER ()";
        return;
    }
    out_ += "rank() OVER (ORDER BY ";
    for (std::size_t i = 0; i < query.orderBy.size(); ++i) {
        const OrderItem& item = query.orderBy[i];
        if (i > 0) out_ += ", ";
        out_ += quoted(item.output >= 0 ? inner[static_cast<std::size_t>(item.output)] : keyName(i));
        if (isText(keyOf(query, item))) collate(spanish());
        if (item.descending) out_ += " DESC";
    }
    out_ += ")";
}

// ---- Tables

void Writer::tables(const Select& select) {
    joins(select, *select.from);
}

void Writer::table(const Source& source) {
    if (source.query) {
        out_ += "(";
        Names names;
        for (const ColumnDef& column : source.derived.columns)
            names.push_back(column.name);
        write(*source.query, names);
        out_ += ")";
    } else {
        out_ += quoted(source.definition->name);
    }
    if (!source.alias.isEmpty()) out_ += " AS " + quoted(source.alias);
}

void Writer::conditionsOn(const std::vector<const Expression*>& conditions) {
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        out_ += i == 0 ? " ON " : " AND ";
        condition(*conditions[i], factsOf(Operator::And).writtenLevel);
    }
}

/// The join as a chain that leans left: brackets only where an outer join has joins on its inner side. A
/// right join is the left join of its sides exchanged, which is the same since every column is named.
void Writer::joins(const Select& select, const JoinTree& tree) {
    std::vector<const JoinTree*> tables;
    std::vector<const Expression*> conditions;
    if (isInner(tree)) {
        collectInner(tree, tables, conditions);
        for (std::size_t i = 0; i < tables.size(); ++i) {
            if (i > 0) out_ += " JOIN ";
            table(sourceOf(select, *tables[i]));
        }
        conditionsOn(conditions);
        return;
    }
    if (tree.kind != JoinTree::Kind::Inner) {
        const bool left = tree.kind == JoinTree::Kind::Left;
        joins(select, left ? *tree.left : *tree.right);
        out_ += " LEFT JOIN ";
        joinOperand(select, left ? *tree.right : *tree.left);
        conditionsOn({tree.on.get()});
        return;
    }
    const bool rightIsInner = isInner(*tree.right);
    const bool leftIsInner = isInner(*tree.left);
    joins(select, rightIsInner || !leftIsInner ? *tree.left : *tree.right);
    if (rightIsInner || leftIsInner) {
        collectInner(rightIsInner ? *tree.right : *tree.left, tables, conditions);
        for (const JoinTree* each : tables) {
            out_ += " JOIN ";
            table(sourceOf(select, *each));
        }
    } else {
        out_ += " JOIN ";
        joinOperand(select, *tree.right);
    }
    if (tree.on) conditions.push_back(tree.on.get());
    conditionsOn(conditions);
}

void Writer::joinOperand(const Select& select, const JoinTree& tree) {
    if (tree.kind == JoinTree::Kind::Table) return table(sourceOf(select, tree));
    out_ += "(";
    joins(select, tree);
    out_ += ")";
}

}  // namespace tarmel::access_sql
