#pragma once

#include "platform/access_sql/Ast.h"
#include "platform/access_sql/Types.h"

/// What the writer asks of a resolved expression.
namespace tarmel::access_sql {

[[nodiscard]] inline Kind kindOf(const Expression& expression) {
    return kindOf(expression.type);
}
/// Gives true, false or Null: a comparison, a test, a logical operator.
[[nodiscard]] bool isCondition(const Expression& expression);
/// A literal or a parameter: its value is bound.
[[nodiscard]] bool isGiven(const Expression& expression);
/// The word Null.
[[nodiscard]] bool isNull(const Expression& expression);

}  // namespace tarmel::access_sql
