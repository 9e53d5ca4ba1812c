#include "platform/access_sql/ExpressionFacts.h"

#include "platform/access_sql/FunctionTable.h"

namespace tarmel::access_sql {

bool isCondition(const Expression& expression) {
    if (const auto* binary = expression.as<Binary>())
        return isComparison(binary->op) || isLogical(binary->op);
    if (const auto* unary = expression.as<Unary>()) return unary->op == Operator::Not;
    if (const auto* call = expression.as<Call>()) return call->function->id == Function::IsNull;
    return expression.as<Between>() || expression.as<InList>() || expression.as<InQuery>() ||
           expression.as<NullTest>() || expression.as<Exists>();
}

bool isGiven(const Expression& expression) {
    return expression.as<Literal>() || expression.as<Parameter>();
}

bool isNull(const Expression& expression) {
    const auto* constant = expression.as<Constant>();
    return constant && *constant == Constant::Null;
}

}  // namespace tarmel::access_sql
