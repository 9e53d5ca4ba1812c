#pragma once

#include "platform/access_sql/Ast.h"

namespace tarmel::access_sql {

/// Calls `visit` on each direct operand of the expression; sub-selects are not entered.
template <typename Expr, typename Visit>
void forEachOperand(Expr& expression, const Visit& visit) {
    const auto each = [&visit](auto& node) {
        using Node = std::decay_t<decltype(node)>;
        if constexpr (std::is_same_v<Node, Unary>) {
            visit(*node.operand);
        } else if constexpr (std::is_same_v<Node, Binary>) {
            visit(*node.left);
            visit(*node.right);
        } else if constexpr (std::is_same_v<Node, Between>) {
            visit(*node.value);
            visit(*node.low);
            visit(*node.high);
        } else if constexpr (std::is_same_v<Node, InList>) {
            visit(*node.value);
            for (auto& item : node.items)
                visit(*item);
        } else if constexpr (std::is_same_v<Node, InQuery> || std::is_same_v<Node, NullTest>) {
            visit(*node.value);
        } else if constexpr (std::is_same_v<Node, Call>) {
            for (auto& argument : node.arguments)
                visit(*argument);
        }
    };
    std::visit(each, expression.node);
}

/// Calls `visit` on the expression and everything below it; sub-selects are not entered.
template <typename Visit>
void forEach(const Expression& expression, const Visit& visit) {
    visit(expression);
    forEachOperand(expression, [&visit](const Expression& operand) { forEach(operand, visit); });
}

}  // namespace tarmel::access_sql
