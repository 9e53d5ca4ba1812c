#pragma once

#include <QStringView>

#include "platform/access_sql/Token.h"

namespace tarmel::access_sql {

enum class Operator {
    Or,
    And,
    Not,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Like,
    Join,  ///< &
    Add,
    Subtract,
    Modulo,
    DivideWhole,
    Multiply,
    Divide,
    Negate,
    Power,
};

/// What parser and writer know of an operator. Levels grow with tightness; operators of one level lean left.
struct OperatorFacts {
    Operator op;
    TokenKind token;  ///< Name for operators that are words
    QStringView word;
    int level;            ///< in the dialect
    const char* written;  ///< in SQLite; null where a function does the work
    int writtenLevel;     ///< in SQLite; kOperandLevel for functions
};

inline constexpr int kComparisonLevel = 4;  ///< of =, Like, In, Between and Is, in the dialect
inline constexpr int kOperandLevel = 100;   ///< what needs no parentheses anywhere

[[nodiscard]] const OperatorFacts& factsOf(Operator op);
/// The operator that stands between two operands as this token; null when it is none.
[[nodiscard]] const OperatorFacts* binaryOperator(const Token& token);

[[nodiscard]] inline bool isComparison(Operator op) {
    return op >= Operator::Equal && op <= Operator::Like;
}
[[nodiscard]] inline bool isLogical(Operator op) {
    return op <= Operator::Not;
}

}  // namespace tarmel::access_sql
