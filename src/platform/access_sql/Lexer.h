#pragma once

#include <QStringView>

#include "platform/access_sql/Token.h"
#include "platform/basic/Variant.h"

namespace tarmel::access_sql {

/// Cuts a statement into tokens, one pass, no memory of its own: it runs for every statement that is
/// executed. Unfinished texts, dates and names and unknown characters raise the statement error.
///
/// It also knows which literals belong to the shape (Token::fixed): those of definitions, of ORDER BY and
/// GROUP BY, behind TOP, and the pattern behind LIKE, whose fixed head the database's planner must see.
class Lexer {
 public:
    explicit Lexer(QStringView sql);
    [[nodiscard]] Token next();

 private:
    enum class Verb { Unread, Insert, Update, Define, Other };
    enum class Zone { Compared, Stored, Fixed };

    [[nodiscard]] Token symbol(TokenKind kind, qsizetype length);
    [[nodiscard]] Token name();
    [[nodiscard]] Token bracketedName();
    [[nodiscard]] Token text(QChar quote);
    [[nodiscard]] Token number();
    [[nodiscard]] Token date();
    void literal(Token& token);
    void noteWord(QStringView word);
    [[noreturn]] void refuse(qsizetype from) const;
    [[nodiscard]] char16_t at(qsizetype place) const { return place < size_ ? text_[place] : u'\0'; }

    const char16_t* text_;
    qsizetype size_;
    qsizetype place_ = 0;
    Verb verb_ = Verb::Unread;
    Zone zone_ = Zone::Compared;
    int depth_ = 0;       ///< of parentheses
    int fixedDepth_ = 0;  ///< at which the fixed zone began
    bool fixNext_ = false;
};

/// The value of a literal token. A date that is none raises the statement error.
[[nodiscard]] basic::Variant literalValue(const Token& token);

}  // namespace tarmel::access_sql
