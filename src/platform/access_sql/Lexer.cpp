#include "platform/access_sql/Lexer.h"

#include <array>
#include <limits>
#include <optional>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Translator.h"
#include "platform/basic/Text.h"

namespace tarmel::access_sql {

using basic::Date;
using basic::Variant;

namespace {

constexpr qsizetype kLongestStatement = 1'000'000;  // characters

enum Class : unsigned char { Blank = 1, Digit = 2, StartsName = 4, ContinuesName = 8 };

/// What the ASCII characters are, looked up: every character of every statement comes by here.
constexpr std::array<unsigned char, 0x80> kClasses = [] {
    std::array<unsigned char, 0x80> classes{};
    for (std::size_t c = 0; c < classes.size(); ++c) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        const bool digit = c >= '0' && c <= '9';
        if (c == ' ' || (c >= '\t' && c <= '\r')) classes[c] = Blank;
        if (digit) classes[c] = Digit | ContinuesName;
        if (letter) classes[c] = StartsName | ContinuesName;
        if (c == '$') classes[c] = ContinuesName;
    }
    return classes;
}();

bool isBlank(char16_t c) {
    return c < 0x80 ? (kClasses[c] & Blank) != 0 : c == 0x00a0;
}
bool isDigit(char16_t c) {
    return c < 0x80 && (kClasses[c] & Digit) != 0;
}
bool startsName(char16_t c) {
    return c < 0x80 ? (kClasses[c] & StartsName) != 0 : QChar(c).isLetter();
}
bool continuesName(char16_t c) {
    if (c < 0x80) return (kClasses[c] & ContinuesName) != 0;
    return QChar(c).isLetterOrNumber() || QChar(c).isMark();
}

/// An ASCII word in capitals against a word of the statement.
bool is(QStringView word, QStringView capitals) {
    if (word.size() != capitals.size()) return false;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const char16_t c = word[i].unicode();
        if ((c >= u'a' && c <= u'z' ? c - 0x20 : c) != capitals[i].unicode()) return false;
    }
    return true;
}

/// Reads "10", "1.5" and the like from a date literal.
class DateReader {
 public:
    explicit DateReader(QStringView text) : text_(text.trimmed()) {}

    std::optional<Date> read() {
        const auto first = figure();
        if (!first) return std::nullopt;
        int year = 1899, month = 12, day = 30;
        std::optional<int> hour = first;
        if (peek() == u'/' || peek() == u'-') {
            if (!readDay(*first, year, month, day)) return std::nullopt;
            if (atEnd()) return made(year, month, day, 0, 0, 0);
            if (!blanks()) return std::nullopt;
            hour = figure();
        }
        int minute = 0, second = 0;
        if (!hour || !readTime(*hour, minute, second) || !atEnd()) return std::nullopt;
        return made(year, month, day, *hour, minute, second);
    }

 private:
    [[nodiscard]] QChar peek() const { return atEnd() ? QChar() : text_[place_]; }
    [[nodiscard]] bool atEnd() const { return place_ >= text_.size(); }
    bool take(QChar c) {
        if (peek() != c) return false;
        ++place_;
        return true;
    }
    bool blanks() {
        const qsizetype from = place_;
        while (!atEnd() && isBlank(peek().unicode()))
            ++place_;
        return place_ > from;
    }
    std::optional<int> figure() {
        const qsizetype from = place_;
        int value = 0;
        while (place_ - from < 4 && isDigit(peek().unicode()))
            value = value * 10 + (text_[place_++].unicode() - u'0');
        digits_ = place_ - from;
        if (digits_ == 0) return std::nullopt;
        return value;
    }
    /// Month first, day first where that is impossible; the year first where it has four digits.
    bool readDay(int first, int& year, int& month, int& day) {
        const bool yearFirst = digits_ == 4;
        const QChar separator = text_[place_++];
        const auto second = figure();
        if (!second || !take(separator)) return false;
        const auto third = figure();
        if (!third) return false;
        if (yearFirst) {
            year = first, month = *second, day = *third;
            return true;
        }
        year = digits_ > 2 ? *third : *third + (*third < 30 ? 2000 : 1900);
        const bool monthFirst = first <= 12;
        month = monthFirst ? first : *second;
        day = monthFirst ? *second : first;
        return true;
    }
    bool readTime(int& hour, int& minute, int& second) {
        if (!take(u':')) return false;
        const auto minutes = figure();
        if (!minutes) return false;
        minute = *minutes;
        if (take(u':')) {
            const auto seconds = figure();
            if (!seconds) return false;
            second = *seconds;
        }
        blanks();
        const QStringView half = text_.sliced(place_);
        if (half.isEmpty()) return true;
        if (hour < 1 || hour > 12) return false;
        if (!is(half, u"AM") && !is(half, u"PM")) return false;
        hour = hour % 12 + (is(half, u"PM") ? 12 : 0);
        place_ = text_.size();
        return true;
    }
    static std::optional<Date> made(int year, int month, int day, int hour, int minute, int second) {
        try {
            return Date::of(year, month, day, hour, minute, second);
        } catch (const basic::RuntimeError&) {
            return std::nullopt;
        }
    }

    QStringView text_;
    qsizetype place_ = 0;
    qsizetype digits_ = 0;  ///< of the last figure
};

QString textValue(const Token& token) {
    QString value = token.text.toString();
    if (token.doubled) value.replace(QString(2, token.quote), QString(token.quote));
    return value;
}

/// Writes the shape's key: the statement without its blanks, each literal that is bound as one mark of its
/// kind.
class KeyWriter {
 public:
    explicit KeyWriter(qsizetype characters) : buffer_(4 * characters + 16, Qt::Uninitialized) {
        out_ = buffer_.data();
    }

    void add(const Token& token) {
        if (token.isLiteral()) return token.fixed ? addFixed(token) : addMark(token);
        const bool wasName = afterName_;
        afterName_ = false;
        if (token.kind != TokenKind::Name) return addSymbol(token);
        if (wasName) *out_++ = ' ';
        if (token.bracketed) *out_++ = '[';
        addText(token.text);
        if (token.bracketed) *out_++ = ']';
        afterName_ = true;
    }
    QByteArray take() { return QByteArray(buffer_.constData(), out_ - buffer_.constData()); }

 private:
    // No statement holds these characters outside a literal, so marks cannot be mistaken for its text.
    enum Mark : char {
        WholeMark = 1,
        NumberMark,
        DateMark,
        TextMark,
        AsciiTextMark,
        AnyTextMark,
        FixedMark,
        SymbolMark
    };

    void addMark(const Token& token) {
        afterName_ = false;
        switch (token.kind) {
            case TokenKind::Whole:
                *out_++ = WholeMark;
                return;
            case TokenKind::Number:
                *out_++ = NumberMark;
                return;
            case TokenKind::Date:
                *out_++ = DateMark;
                return;
            default:
                *out_++ = static_cast<char>(TextMark + static_cast<int>(token.letters));
        }
    }
    void addFixed(const Token& token) {
        afterName_ = false;
        *out_++ = FixedMark;
        *out_++ = static_cast<char>('A' + static_cast<int>(token.kind));
        addText(token.text);
        *out_++ = token.kind == TokenKind::Text ? static_cast<char>(token.quote.unicode()) : ' ';
    }
    void addSymbol(const Token& token) {
        if (token.text.size() > 1) *out_++ = SymbolMark;
        addText(token.text);
    }
    void addText(QStringView text) {
        const char16_t* const from = text.utf16();
        const qsizetype size = text.size();
        char16_t all = 0;
        for (qsizetype i = 0; i < size; ++i) {
            all |= from[i];
            out_[i] = static_cast<char>(from[i]);
        }
        if (all >= 0x80) return addBeyondAscii(text);
        out_ += size;
    }
    void addBeyondAscii(QStringView text) {
        for (const QChar c : text) {
            const char16_t u = c.unicode();
            if (u < 0x80) {
                *out_++ = static_cast<char>(u);
                continue;
            }
            // Not real UTF-8 beyond the basic plane; a key need only differ where the text does.
            if (u >= 0x800) *out_++ = static_cast<char>(0xe0 | (u >> 12));
            *out_++ = static_cast<char>(u < 0x800 ? 0xc0 | (u >> 6) : 0x80 | ((u >> 6) & 0x3f));
            *out_++ = static_cast<char>(0x80 | (u & 0x3f));
        }
    }

    QByteArray buffer_;
    char* out_;
    bool afterName_ = false;
};

}  // namespace

Lexer::Lexer(QStringView sql) : text_(sql.utf16()), size_(sql.size()) {
    if (size_ > kLongestStatement) throw tooComplex();
}

Token Lexer::next() {
    while (place_ < size_ && isBlank(text_[place_]))
        ++place_;
    if (place_ >= size_) return symbol(TokenKind::End, 0);
    const char16_t c = text_[place_];
    if (startsName(c)) return name();
    if (isDigit(c) || (c == u'.' && isDigit(at(place_ + 1)))) return number();
    switch (c) {
        case u'\'':
        case u'"':
            return text(c);
        case u'[':
            return bracketedName();
        case u'#':
            return date();
        case u'(':
            ++depth_;
            return symbol(TokenKind::LeftParenthesis, 1);
        case u')':
            --depth_;
            if (zone_ == Zone::Fixed && depth_ < fixedDepth_) zone_ = Zone::Compared;
            return symbol(TokenKind::RightParenthesis, 1);
        case u',':
            return symbol(TokenKind::Comma, 1);
        case u'.':
            return symbol(TokenKind::Dot, 1);
        case u';':
            return symbol(TokenKind::Semicolon, 1);
        case u'*':
            return symbol(TokenKind::Star, 1);
        case u'/':
            return symbol(TokenKind::Slash, 1);
        case u'\\':
            return symbol(TokenKind::Backslash, 1);
        case u'^':
            return symbol(TokenKind::Caret, 1);
        case u'+':
            return symbol(TokenKind::Plus, 1);
        case u'-':
            return symbol(TokenKind::Minus, 1);
        case u'&':
            return symbol(TokenKind::Ampersand, 1);
        case u'=':
            return symbol(TokenKind::Equal, 1);
        case u'?':
            return symbol(TokenKind::Parameter, 1);
        case u'<':
            if (at(place_ + 1) == u'>') return symbol(TokenKind::NotEqual, 2);
            return at(place_ + 1) == u'=' ? symbol(TokenKind::LessEqual, 2) : symbol(TokenKind::Less, 1);
        case u'>':
            return at(place_ + 1) == u'=' ? symbol(TokenKind::GreaterEqual, 2)
                                          : symbol(TokenKind::Greater, 1);
        default:
            refuse(place_);
    }
}

void Lexer::refuse(qsizetype from) const {
    throw syntaxError(QStringView(text_ + from, size_ - from), from);
}

Token Lexer::symbol(TokenKind kind, qsizetype length) {
    fixNext_ = false;
    Token token;
    token.kind = kind;
    token.position = place_;
    token.text = QStringView(text_ + place_, length);
    place_ += length;
    return token;
}

Token Lexer::name() {
    const qsizetype from = place_;
    qsizetype to = from + 1;
    while (to < size_ && continuesName(text_[to]))
        ++to;
    place_ = to;
    Token token;
    token.kind = TokenKind::Name;
    token.position = from;
    token.text = QStringView(text_ + from, to - from);
    fixNext_ = false;
    noteWord(token.text);
    return token;
}

Token Lexer::bracketedName() {
    const qsizetype from = place_ + 1;
    qsizetype to = from;
    while (to < size_ && text_[to] != u']' && text_[to] >= u' ')
        ++to;
    if (to >= size_ || text_[to] != u']' || to == from) refuse(place_);
    Token token;
    token.kind = TokenKind::Name;
    token.bracketed = true;
    token.position = place_;
    token.text = QStringView(text_ + from, to - from);
    place_ = to + 1;
    fixNext_ = false;
    return token;
}

Token Lexer::text(QChar quote) {
    Token token;
    token.kind = TokenKind::Text;
    token.quote = quote;
    token.position = place_;
    const qsizetype from = place_ + 1;
    const char16_t end = quote.unicode();
    char16_t all = 0;
    qsizetype to = from;
    for (;; ++to) {
        if (to >= size_) refuse(place_);
        if (text_[to] != end) {
            all |= text_[to];
            continue;
        }
        if (at(to + 1) != end) break;
        token.doubled = true;
        ++to;
    }
    token.text = QStringView(text_ + from, to - from);
    token.letters = all < 0x80 ? Letters::Ascii : Letters::Any;
    place_ = to + 1;
    literal(token);
    return token;
}

Token Lexer::number() {
    const qsizetype from = place_;
    Token token;
    token.kind = TokenKind::Whole;
    token.position = from;
    while (isDigit(at(place_)))
        ++place_;
    if (at(place_) == u'.') {
        token.kind = TokenKind::Number;
        ++place_;
        while (isDigit(at(place_)))
            ++place_;
    }
    if (at(place_) == u'e' || at(place_) == u'E') {
        const bool sign = at(place_ + 1) == u'+' || at(place_ + 1) == u'-';
        if (isDigit(at(place_ + (sign ? 2 : 1)))) {
            token.kind = TokenKind::Number;
            place_ += sign ? 2 : 1;
            while (isDigit(at(place_)))
                ++place_;
        }
    }
    token.text = QStringView(text_ + from, place_ - from);
    constexpr qsizetype kSafeDigits = std::numeric_limits<qint64>::digits10;
    if (token.kind == TokenKind::Whole && token.text.size() > kSafeDigits) token.kind = TokenKind::Number;
    literal(token);
    return token;
}

Token Lexer::date() {
    qsizetype to = place_ + 1;
    while (to < size_ && text_[to] != u'#')
        ++to;
    if (to >= size_) refuse(place_);
    Token token;
    token.kind = TokenKind::Date;
    token.position = place_;
    token.text = QStringView(text_ + place_ + 1, to - place_ - 1);
    place_ = to + 1;
    literal(token);
    return token;
}

void Lexer::literal(Token& token) {
    token.fixed = fixNext_ || zone_ == Zone::Fixed;
    if (zone_ == Zone::Stored) token.letters = Letters::Untold;
    fixNext_ = false;
}

/// Follows the statement just far enough to know what its literals are for. A word that is mistaken (a column
/// named "Group", say) costs a shape that is shared less, never a wrong answer: the parser reads the same
/// marks.
void Lexer::noteWord(QStringView word) {
    if (verb_ == Verb::Unread) {
        verb_ = Verb::Other;
        if (is(word, u"INSERT")) verb_ = Verb::Insert;
        if (is(word, u"UPDATE")) verb_ = Verb::Update;
        if (is(word, u"CREATE") || is(word, u"ALTER") || is(word, u"DROP")) {
            verb_ = Verb::Define;
            zone_ = Zone::Fixed;
            fixedDepth_ = std::numeric_limits<int>::min();
        }
        return;
    }
    if (verb_ == Verb::Define || word.size() < 3 || word.size() > 6) return;
    switch (word[0].unicode() | 0x20) {
        case u'l':
            fixNext_ = is(word, u"LIKE");
            return;
        case u't':
            fixNext_ = is(word, u"TOP");
            return;
        case u'o':
        case u'g':
            if (!is(word, u"ORDER") && !is(word, u"GROUP")) return;
            zone_ = Zone::Fixed;
            fixedDepth_ = depth_;
            return;
        case u'h':
        case u'u':
            if (zone_ == Zone::Fixed && (is(word, u"HAVING") || is(word, u"UNION"))) zone_ = Zone::Compared;
            return;
        case u'v':
            if (verb_ == Verb::Insert && depth_ == 0 && is(word, u"VALUES")) zone_ = Zone::Stored;
            return;
        case u's':
            if (verb_ == Verb::Update && depth_ == 0 && is(word, u"SET")) zone_ = Zone::Stored;
            return;
        case u'w':
            if (zone_ == Zone::Stored && depth_ == 0 && is(word, u"WHERE")) zone_ = Zone::Compared;
            return;
        default:
            return;
    }
}

Variant literalValue(const Token& token) {
    switch (token.kind) {
        case TokenKind::Whole:
            return Variant(token.text.toLongLong());
        case TokenKind::Number: {
            bool fits = false;
            const double number = token.text.toDouble(&fits);
            if (!fits) throw statementError(basic::errorText(basic::error::Overflow));
            return Variant(number);
        }
        case TokenKind::Date: {
            const std::optional<Date> date = DateReader(token.text).read();
            if (!date) {
                throw statementError(QStringLiteral("Error de sintaxis en la fecha «#%1#».")
                                         .arg(token.text.left(40).toString()));
            }
            return Variant(*date);
        }
        default:
            return Variant(textValue(token));
    }
}

Shape lift(const QString& sql) {
    Shape shape;
    Lexer lexer(sql);
    KeyWriter key(sql.size());
    constexpr qsizetype kUsualSpacing =
        24;  // characters of a statement to each of its literals, at the least
    shape.literals.reserve(static_cast<std::size_t>(sql.size() / kUsualSpacing));
    for (Token token = lexer.next(); token.kind != TokenKind::End; token = lexer.next()) {
        key.add(token);
        if (token.isLiteral() && !token.fixed) shape.literals.push_back(literalValue(token));
    }
    shape.key = key.take();
    return shape;
}

}  // namespace tarmel::access_sql
