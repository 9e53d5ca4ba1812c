#include "platform/access_sql/Resolver.h"

#include <algorithm>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/FunctionTable.h"
#include "platform/access_sql/Types.h"
#include "platform/access_sql/Walk.h"

namespace tarmel::access_sql {

namespace {

bool same(QStringView a, QStringView b) {
    return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

basic::RuntimeError ambiguous(QStringView name) {
    return statementError(
        QStringLiteral("El campo especificado '%1' puede hacer referencia a más de una de las tablas de la "
                       "cláusula FROM de la instrucción SQL.")
            .arg(name));
}

basic::RuntimeError notGrouped(QStringView name) {
    return statementError(
        QStringLiteral("Ha intentado ejecutar una consulta que no incluye la expresión especificada '%1' "
                       "como parte de una función de agregado.")
            .arg(name));
}

basic::RuntimeError aggregateNotAllowed(QStringView name) {
    return statementError(QStringLiteral("No puede estar aquí la función de agregado '%1'.").arg(name));
}

bool isAggregate(const Expression& expression) {
    const Call* call = expression.as<Call>();
    return call && call->function->aggregate;
}

bool containsAggregate(const Expression& expression) {
    bool found = false;
    forEach(expression, [&found](const Expression& part) { found = found || isAggregate(part); });
    return found;
}

ExpressionPtr columnOf(const Source& source, int column) {
    auto expression = std::make_unique<Expression>();
    ColumnName name;
    name.source = &source;
    name.column = column;
    name.name = name.definition().name;
    name.table = source.exposedName();
    expression->type = name.definition().type;
    expression->node = name;
    return expression;
}

bool sameColumn(const ColumnName& a, const ColumnName& b) {
    return a.source == b.source && a.column == b.column;
}

/// Whether two expressions are written alike. Literals that are bound count as alike: their values are not
/// part of the statement's shape.
bool alike(const Expression& a, const Expression& b) {
    if (a.node.index() != b.node.index()) return false;
    if (const auto* literal = a.as<Literal>()) return literal->token.kind == b.as<Literal>()->token.kind;
    if (const auto* column = a.as<ColumnName>()) return sameColumn(*column, *b.as<ColumnName>());
    if (const auto* constant = a.as<Constant>()) return *constant == *b.as<Constant>();
    if (const auto* unary = a.as<Unary>(); unary && unary->op != b.as<Unary>()->op) return false;
    if (const auto* binary = a.as<Binary>(); binary && binary->op != b.as<Binary>()->op) return false;
    if (const auto* call = a.as<Call>(); call && call->function != b.as<Call>()->function) return false;
    if (a.as<ScalarQuery>() || a.as<InQuery>() || a.as<Exists>()) return false;
    std::vector<const Expression*> left, right;
    forEachOperand(a, [&left](const Expression& operand) { left.push_back(&operand); });
    forEachOperand(b, [&right](const Expression& operand) { right.push_back(&operand); });
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const Expression* l, const Expression* r) { return alike(*l, *r); });
}

Type literalType(TokenKind kind) {
    switch (kind) {
        case TokenKind::Whole:
            return Type::Long;
        case TokenKind::Number:
            return Type::Double;
        case TokenKind::Date:
            return Type::Date;
        default:
            return Type::Text;
    }
}

Type numberType(Type type) {
    const Kind kind = kindOf(type);
    if (kind == Kind::Boolean) return Type::Long;
    return kind == Kind::Number ? type : Type::Double;
}

Type sumType(Operator op, Type left, Type right) {
    const Kind l = kindOf(left), r = kindOf(right);
    if (op == Operator::Add && joinsTexts(l, r)) return Type::Memo;
    if (l == Kind::Date && r == Kind::Date && op == Operator::Subtract) return Type::Double;
    if (l == Kind::Date || r == Kind::Date) return Type::Date;
    return commonType(numberType(left), numberType(right));
}

/// A comparison and what is joined of them gives the number -1 or 0; only a yes/no column is yes or no.
constexpr Type kLogicType = Type::Integer;

Type binaryType(Operator op, Type left, Type right) {
    switch (op) {
        case Operator::Join:
            return Type::Memo;
        case Operator::Add:
        case Operator::Subtract:
            return sumType(op, left, right);
        case Operator::Multiply:
            return commonType(numberType(left), numberType(right));
        case Operator::Divide:
        case Operator::Power:
            return Type::Double;
        case Operator::Modulo:
        case Operator::DivideWhole:
            return Type::Long;
        default:
            return kLogicType;
    }
}

Type callType(const Call& call) {
    const FunctionFacts& function = *call.function;
    if (function.result != Type::Unknown) return function.result;
    const auto argument = [&call](std::size_t i) { return call.arguments[i]->type; };
    switch (function.id) {
        case Function::IIf:
            return commonType(argument(1), argument(2));
        case Function::Nz:
            return call.arguments.size() == 2 ? commonType(argument(0), argument(1)) : argument(0);
        case Function::Abs:
        case Function::Int:
            return numberType(argument(0));
        default:
            return argument(0);
    }
}

}  // namespace

const TableDef& tableNamed(QStringView name, const Schema& schema) {
    const TableDef* table = schema.table(name);
    if (!table) throw unknownTable(name);
    return *table;
}

std::vector<QString> distinctNames(const std::vector<Output>& outputs) {
    std::vector<QString> names;
    const auto isTaken = [&names](const QString& name) {
        return std::any_of(names.begin(), names.end(),
                           [&name](const QString& other) { return same(name, other); });
    };
    for (const Output& output : outputs) {
        QString name = output.name;
        if (isTaken(name) && !output.table.isEmpty()) name = output.table + u'.' + output.name;
        const QString stem = name;
        for (int n = 2; isTaken(name); ++n)
            name = stem + QString::number(n);
        names.push_back(name);
    }
    return names;
}

void Resolver::finish() const {
    if (!missing_.empty()) throw missingParameters(static_cast<int>(missing_.size()));
}

void Resolver::noteMissing(const ColumnName& column) {
    QString name = column.name.toString().toLower();
    if (!column.table.isEmpty()) name = column.table.toString().toLower() + u'.' + name;
    if (std::find(missing_.begin(), missing_.end(), name) == missing_.end()) missing_.push_back(name);
}

// ---- Queries

void Resolver::resolveQuery(Query& query, const Scope* outer) {
    for (Select& select : query.parts)
        resolveSelect(select, outer);
    const std::size_t width = query.parts.front().outputs.size();
    for (const Select& select : query.parts) {
        if (select.outputs.size() != width) {
            throw statementError(QStringLiteral(
                "El número de columnas de las tablas o consultas de una consulta de unión no coincide."));
        }
    }
    if (query.parts.size() > 1) {
        resolveUnionOrder(query);
    } else {
        resolveOrder(query, outer);
    }
}

void Resolver::resolveSelect(Select& select, const Scope* outer) {
    Scope scope{select, outer};
    resolveRows(select, scope);
    expandOutputs(select);
    scope.aggregatesAllowed = true;
    for (Output& output : select.outputs) {
        resolve(*output.value, scope);
        const ColumnName* column = output.value->as<ColumnName>();
        if (!column || !column->source) continue;
        output.table = column->source->exposedName().toString();
        if (output.name.isEmpty()) output.name = column->definition().name;
    }
    for (std::size_t i = 0; i < select.outputs.size(); ++i) {
        QString& name = select.outputs[i].name;
        if (name.isEmpty()) name = QStringLiteral("Expr%1").arg(1000 + i);
    }
    if (select.having) resolve(*select.having, scope);
    scope.aggregatesAllowed = false;
    for (ExpressionPtr& group : select.groupBy)
        resolve(*group, scope);
    select.aggregates = !select.groupBy.empty() || select.having != nullptr ||
                        std::any_of(select.outputs.begin(), select.outputs.end(),
                                    [](const Output& output) { return containsAggregate(*output.value); });
    if (!select.aggregates) return;
    for (const Output& output : select.outputs)
        checkGrouping(select, *output.value);
    if (select.having) checkGrouping(select, *select.having);
}

/// Tables, joins and condition.
void Resolver::resolveRows(Select& select, Scope& scope) {
    for (std::size_t i = 0; i < select.sources.size(); ++i) {
        Source& source = select.sources[i];
        resolveSource(source, scope.outer);
        for (std::size_t k = 0; k < i; ++k) {
            if (!source.exposedName().isEmpty() &&
                same(source.exposedName(), select.sources[k].exposedName())) {
                throw statementError(
                    QStringLiteral(
                        "La tabla '%1' está dos veces en la cláusula FROM: dé un alias a una de ellas.")
                        .arg(source.exposedName()));
            }
        }
    }
    if (select.from) resolveJoin(*select.from, scope);
    if (select.where) resolve(*select.where, scope);
}

void Resolver::resolveSource(Source& source, const Scope* outer) {
    if (!source.query) {
        source.definition = &tableNamed(source.table, schema_);
        return;
    }
    resolveQuery(*source.query, outer);
    const std::vector<Output>& outputs = source.query->parts.front().outputs;
    const std::vector<QString> names = distinctNames(outputs);
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        ColumnDef column;
        column.name = names[i];
        column.type = outputs[i].value->type;
        source.derived.columns.push_back(column);
    }
    source.derived.name = source.alias.toString();
    source.definition = &source.derived;
}

void Resolver::resolveJoin(JoinTree& tree, const Scope& scope) {
    if (tree.left) resolveJoin(*tree.left, scope);
    if (tree.right) resolveJoin(*tree.right, scope);
    if (tree.on) resolve(*tree.on, scope);
}

void Resolver::expandOutputs(Select& select) {
    std::vector<Output> expanded;
    for (Output& output : select.outputs) {
        if (output.value) {
            expanded.push_back(std::move(output));
            continue;
        }
        bool found = false;
        for (const Source& source : select.sources) {
            if (!output.starOf.isEmpty() && !same(output.starOf, source.exposedName())) continue;
            found = true;
            for (std::size_t c = 0; c < source.definition->columns.size(); ++c) {
                Output column;
                column.value = columnOf(source, static_cast<int>(c));
                expanded.push_back(std::move(column));
            }
        }
        if (!found && !output.starOf.isEmpty()) throw unknownTable(output.starOf);
        if (!found)
            throw statementError(QStringLiteral("La consulta no tiene tabla de la que tomar los campos."));
    }
    select.outputs = std::move(expanded);
}

void Resolver::resolveOrder(Query& query, const Scope* outer) {
    Select& select = query.parts.front();
    Scope scope{select, outer};
    scope.aggregatesAllowed = true;
    const auto outputNamed = [&select](QStringView name) {
        const auto found = std::find_if(select.outputs.begin(), select.outputs.end(),
                                        [name](const Output& output) { return same(output.name, name); });
        return found == select.outputs.end() ? -1 : static_cast<int>(found - select.outputs.begin());
    };
    for (OrderItem& item : query.orderBy) {
        if (const Literal* literal = item.value->as<Literal>();
            literal && literal->token.kind == TokenKind::Whole) {
            const qlonglong position = literal->token.text.toLongLong();
            if (position < 1 || position > static_cast<qlonglong>(select.outputs.size())) {
                throw statementError(
                    QStringLiteral("El motor de base de datos no reconoce '%1' como un nombre de campo o "
                                   "expresión válidos en ORDER BY.")
                        .arg(position));
            }
            item.output = static_cast<int>(position) - 1;
            continue;
        }
        if (const ColumnName* name = item.value->as<ColumnName>(); name && name->table.isEmpty()) {
            item.output = outputNamed(name->name);
            if (item.output >= 0) continue;
        }
        resolve(*item.value, scope);
        for (std::size_t i = 0; i < select.outputs.size() && item.output < 0; ++i) {
            if (alike(*select.outputs[i].value, *item.value) && item.value->as<ColumnName>())
                item.output = static_cast<int>(i);
        }
        if (item.output < 0 && containsAggregate(*item.value)) select.aggregates = true;
        if (item.output < 0 && select.aggregates) checkGrouping(select, *item.value);
    }
}

/// A union is ordered by its output alone, under the names of the first SELECT.
void Resolver::resolveUnionOrder(Query& query) {
    const std::vector<Output>& outputs = query.parts.front().outputs;
    for (OrderItem& item : query.orderBy) {
        qlonglong found = -1;
        if (const Literal* literal = item.value->as<Literal>();
            literal && literal->token.kind == TokenKind::Whole) {
            found = literal->token.text.toLongLong() - 1;
        } else if (const ColumnName* name = item.value->as<ColumnName>()) {
            for (std::size_t i = outputs.size(); i-- > 0;) {
                const bool ofTable = name->table.isEmpty() || same(name->table, outputs[i].table);
                if (ofTable && same(name->name, outputs[i].name)) found = static_cast<qlonglong>(i);
            }
        }
        if (found < 0 || found >= static_cast<qlonglong>(outputs.size())) {
            throw statementError(
                QStringLiteral("La expresión de ORDER BY no está entre los campos de la consulta de unión."));
        }
        item.output = static_cast<int>(found);
    }
}

// ---- Changes

void Resolver::resolve(Insert& insert) {
    const TableDef& table = tableNamed(insert.table, schema_);
    for (std::size_t i = 0; i < insert.columns.size(); ++i) {
        if (table.indexOf(insert.columns[i]) < 0) throw unknownField(insert.columns[i]);
        for (std::size_t k = 0; k < i; ++k) {
            if (!same(insert.columns[i], insert.columns[k])) continue;
            throw statementError(QStringLiteral("Destino de salida '%1' duplicado.").arg(insert.columns[i]));
        }
    }
    Select none;
    const Scope scope{none, nullptr};
    for (ExpressionPtr& value : insert.values)
        resolve(*value, scope);
    if (insert.query) resolveQuery(*insert.query, nullptr);
}

void Resolver::resolve(Update& update) {
    Scope scope{update.rows, nullptr};
    resolveRows(update.rows, scope);
    for (Assignment& assignment : update.assignments) {
        resolve(*assignment.column, scope);
        resolve(*assignment.value, scope);
    }
}

void Resolver::resolve(Delete& deletion) {
    Scope scope{deletion.rows, nullptr};
    resolveRows(deletion.rows, scope);
}

// ---- Expressions

void Resolver::resolve(Expression& expression, const Scope& scope) {
    if (auto* column = expression.as<ColumnName>()) return resolveName(expression, *column, scope);
    if (auto* call = expression.as<Call>()) {
        resolveCall(*call, scope);
        expression.type = callType(*call);
        return;
    }
    forEachOperand(expression, [&](Expression& operand) { resolve(operand, scope); });
    if (const auto* literal = expression.as<Literal>()) {
        expression.type = literalType(literal->token.kind);
    } else if (const auto* constant = expression.as<Constant>()) {
        expression.type = *constant == Constant::Null ? Type::Unknown : Type::Boolean;
    } else if (const auto* unary = expression.as<Unary>()) {
        expression.type = unary->op == Operator::Not ? kLogicType : numberType(unary->operand->type);
    } else if (const auto* binary = expression.as<Binary>()) {
        expression.type = binaryType(binary->op, binary->left->type, binary->right->type);
    } else if (auto* scalar = expression.as<ScalarQuery>()) {
        resolveQuery(*scalar->query, &scope);
        if (scalar->query->parts.front().outputs.size() != 1) {
            throw statementError(QStringLiteral("La subconsulta debe devolver un solo campo."));
        }
        expression.type = scalar->query->parts.front().outputs.front().value->type;
    } else if (!expression.as<Parameter>()) {
        expression.type = kLogicType;
    }
    if (auto* in = expression.as<InQuery>()) {
        resolveQuery(*in->query, &scope);
        if (in->query->parts.front().outputs.size() != 1) {
            throw statementError(QStringLiteral("La subconsulta debe devolver un solo campo."));
        }
    }
    if (auto* exists = expression.as<Exists>()) resolveQuery(*exists->query, &scope);
}

void Resolver::resolveName(Expression& expression, ColumnName& column, const Scope& scope) {
    if (column.source) return;  // made by an expanded *
    for (const Scope* at = &scope; at; at = at->outer) {
        for (const Source& source : at->select.sources) {
            if (!source.definition) continue;  // a later table's name in an earlier sub-select
            if (!column.table.isEmpty() && !same(column.table, source.exposedName())) continue;
            const int index = source.definition->indexOf(column.name);
            if (index < 0) continue;
            if (column.source) throw ambiguous(column.name);
            column.source = &source;
            column.column = index;
        }
        if (!column.source) continue;
        expression.type = column.definition().type;
        return;
    }
    noteMissing(column);
}

void Resolver::resolveCall(Call& call, const Scope& scope) {
    Scope inside = scope;
    if (call.function->aggregate) {
        if (!scope.aggregatesAllowed || scope.inAggregate) throw aggregateNotAllowed(call.function->name);
        inside.inAggregate = true;
    }
    for (ExpressionPtr& argument : call.arguments)
        resolve(*argument, inside);
}

/// In a query of groups each output is made of aggregates and of what is grouped by.
void Resolver::checkGrouping(const Select& select, const Expression& expression) const {
    if (isAggregate(expression)) return;
    const bool grouped =
        std::any_of(select.groupBy.begin(), select.groupBy.end(),
                    [&expression](const ExpressionPtr& group) { return alike(*group, expression); });
    if (grouped) return;
    if (const ColumnName* column = expression.as<ColumnName>()) {
        const bool own = std::any_of(select.sources.begin(), select.sources.end(),
                                     [column](const Source& source) { return &source == column->source; });
        if (own) throw notGrouped(column->name);
    }
    forEachOperand(expression, [&](const Expression& operand) { checkGrouping(select, operand); });
}

}  // namespace tarmel::access_sql
