#include "platform/access_sql/Operators.h"

#include <array>

namespace tarmel::access_sql {

namespace {

using enum Operator;

// In the order of the enumeration. The left column of levels is the dialect's precedence, the right one
// SQLite's.
constexpr std::array kOperators = {
    OperatorFacts{Or, TokenKind::Name, u"OR", 1, " OR ", 1},
    OperatorFacts{And, TokenKind::Name, u"AND", 2, " AND ", 2},
    OperatorFacts{Not, TokenKind::Name, u"NOT", 3, "NOT ", 3},
    OperatorFacts{Equal, TokenKind::Equal, {}, kComparisonLevel, " = ", 4},
    OperatorFacts{NotEqual, TokenKind::NotEqual, {}, kComparisonLevel, " <> ", 4},
    OperatorFacts{Less, TokenKind::Less, {}, kComparisonLevel, " < ", 5},
    OperatorFacts{LessEqual, TokenKind::LessEqual, {}, kComparisonLevel, " <= ", 5},
    OperatorFacts{Greater, TokenKind::Greater, {}, kComparisonLevel, " > ", 5},
    OperatorFacts{GreaterEqual, TokenKind::GreaterEqual, {}, kComparisonLevel, " >= ", 5},
    OperatorFacts{Like, TokenKind::Name, u"LIKE", kComparisonLevel, " LIKE ", 4},
    OperatorFacts{Join, TokenKind::Ampersand, {}, 5, nullptr, kOperandLevel},
    OperatorFacts{Add, TokenKind::Plus, {}, 6, " + ", 6},
    OperatorFacts{Subtract, TokenKind::Minus, {}, 6, " - ", 6},
    OperatorFacts{Modulo, TokenKind::Name, u"MOD", 7, nullptr, kOperandLevel},
    OperatorFacts{DivideWhole, TokenKind::Backslash, {}, 8, nullptr, kOperandLevel},
    OperatorFacts{Multiply, TokenKind::Star, {}, 9, " * ", 7},
    OperatorFacts{Divide, TokenKind::Slash, {}, 9, nullptr, kOperandLevel},
    OperatorFacts{Negate, TokenKind::End, {}, 10, "- ", 9},
    OperatorFacts{Power, TokenKind::Caret, {}, 11, nullptr, kOperandLevel},
};

constexpr bool isInOrder() {
    for (std::size_t i = 0; i < kOperators.size(); ++i) {
        if (static_cast<std::size_t>(kOperators[i].op) != i) return false;
    }
    return true;
}
static_assert(isInOrder());

}  // namespace

const OperatorFacts& factsOf(Operator op) {
    return kOperators[static_cast<std::size_t>(op)];
}

const OperatorFacts* binaryOperator(const Token& token) {
    for (const OperatorFacts& facts : kOperators) {
        if (facts.token != token.kind || facts.op == Operator::Not || facts.op == Operator::Negate) continue;
        if (token.kind != TokenKind::Name) return &facts;
        if (!token.bracketed && facts.word.compare(token.text, Qt::CaseInsensitive) == 0) return &facts;
    }
    return nullptr;
}

}  // namespace tarmel::access_sql
