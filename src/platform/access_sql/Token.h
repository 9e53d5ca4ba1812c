#pragma once

#include <QStringView>

namespace tarmel::access_sql {

enum class TokenKind {
    End,
    Name,       ///< word or [name]
    Text,       ///< '...' or "..."
    Whole,      ///< digits that fit 64 bits
    Number,     ///< any other number
    Date,       ///< #...#
    Parameter,  ///< ?
    LeftParenthesis,
    RightParenthesis,
    Comma,
    Dot,
    Semicolon,
    Star,
    Slash,
    Backslash,
    Caret,
    Plus,
    Minus,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

/// The letters of a text literal. They decide which collation a comparison takes, and so belong to the
/// statement's shape; where texts are only stored they do not matter and stay untold, so that such statements
/// share one shape.
enum class Letters { Untold, Ascii, Any };

/// A piece of a statement. The views point into the statement's text.
struct Token {
    TokenKind kind = TokenKind::End;
    QStringView text;  ///< a name without its brackets, a text or date without its signs, else as it stands
    qsizetype position = 0;  ///< of its first character, from 0
    bool bracketed = false;  ///< a [name], which is never a keyword
    bool doubled = false;    ///< a text in which its quote stands doubled
    QChar quote;             ///< of a text
    Letters letters = Letters::Untold;
    bool fixed = false;  ///< a literal that belongs to the shape itself and is never bound
    int index = -1;      ///< of a literal that is bound, or of a parameter, counted from 0 by the parser

    [[nodiscard]] bool isLiteral() const { return kind >= TokenKind::Text && kind <= TokenKind::Date; }
};

}  // namespace tarmel::access_sql
