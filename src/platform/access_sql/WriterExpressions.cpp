#include <algorithm>
#include <array>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/ExpressionFacts.h"
#include "platform/access_sql/Lexer.h"
#include "platform/access_sql/Writer.h"

/// The writer's part for expressions. A comparison or a logical operator is a condition; where a value is
/// asked for, it becomes -1 or 0.
namespace tarmel::access_sql {

using basic::Variant;

namespace {

bool isAscii(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

/// As what two sides are compared.
Kind meeting(const Expression& left, const Expression& right) {
    const Kind l = kindOf(left), r = kindOf(right);
    const auto is = [l, r](Kind kind) { return l == kind || r == kind; };
    if (is(Kind::Date)) {
        const Expression& other = l == Kind::Date ? right : left;
        const Kind kind = kindOf(other);
        const bool asNumbers = (kind == Kind::Number || kind == Kind::Boolean) && !isGiven(other);
        return asNumbers ? Kind::Number : Kind::Date;
    }
    if (is(Kind::Number)) return Kind::Number;
    if (is(Kind::Boolean)) return Kind::Boolean;
    return Kind::Text;
}

/// The operands of a chain of &, from the left; & gives the same in whatever order it is bracketed.
void collectJoined(const Expression& expression, std::vector<const Expression*>& operands) {
    const auto* binary = expression.as<Binary>();
    if (!binary || binary->op != Operator::Join) {
        operands.push_back(&expression);
        return;
    }
    collectJoined(*binary->left, operands);
    collectJoined(*binary->right, operands);
}

}  // namespace

QByteArray quotedText(const QString& text) {
    if (text.contains(QChar(0)))
        throw statementError(QStringLiteral("El texto contiene un carácter no válido."));
    QByteArray utf8 = text.toUtf8();
    utf8.replace('\'', "''");
    return '\'' + utf8 + '\'';
}

// ---- Literals, parameters, columns

void Writer::bind(Binding binding) {
    bindings_.push_back(std::move(binding));
    out_ += '?';
    out_ += QByteArray::number(static_cast<qlonglong>(bindings_.size()));
}

void Writer::literal(const Literal& literal, Type convertTo) {
    if (literal.token.fixed) {
        const Variant value = literalValue(literal.token);
        return fixedValue(convertTo == Type::Unknown ? value : convertForComparing(value, convertTo));
    }
    Binding binding;
    binding.index = literal.token.index;
    binding.convertTo = convertTo;
    bind(std::move(binding));
}

/// The value's text, for where it is needed more than once.
QByteArray Writer::written(const Expression& expression) {
    const qsizetype from = out_.size();
    value(expression);
    QByteArray text = out_.sliced(from);
    out_.truncate(from);
    return text;
}

void Writer::fixedValue(const Variant& value) {
    if (value.isBool()) {
        out_ += value.toBool() ? "-1" : "0";
    } else if (value.isWhole()) {
        out_ += QByteArray::number(std::get<qint64>(value.raw()));
    } else if (value.isDouble()) {
        constexpr int kAllDigits = 17;
        const QByteArray number = QByteArray::number(value.toDouble(), 'g', kAllDigits);
        out_ += number;
        if (!number.contains('.') && !number.contains('e')) out_ += ".0";
    } else if (value.isDate()) {
        out_ += '\'' + value.toDate().iso().toLatin1() + '\'';
    } else {
        out_ += quotedText(value.toText());
    }
}

void Writer::parameter(const Parameter& parameter, Type convertTo) {
    if (plain_) throw notForViews(u"?");
    Binding binding;
    binding.source = Binding::Source::Parameter;
    binding.index = parameter.index;
    binding.convertTo = convertTo;
    bind(std::move(binding));
}

void Writer::column(const ColumnName& column) {
    appendQuoted(out_, column.source->writtenName());
    out_ += '.';
    appendQuoted(out_, column.definition().name);
}

// ---- The three ways to write an expression

void Writer::value(const Expression& expression, int level) {
    if (isCondition(expression)) {
        out_ += "(-(";
        condition(expression);
        out_ += "))";
    } else if (const auto* given = expression.as<Literal>()) {
        literal(*given);
    } else if (const auto* mark = expression.as<Parameter>()) {
        parameter(*mark);
    } else if (const auto* constant = expression.as<Constant>()) {
        out_ += *constant == Constant::Null ? "NULL" : *constant == Constant::True ? "-1" : "0";
    } else if (const auto* name = expression.as<ColumnName>()) {
        column(*name);
    } else if (const auto* unary = expression.as<Unary>()) {
        const OperatorFacts& facts = factsOf(unary->op);
        open(facts.writtenLevel < level);
        out_ += facts.written;
        number(*unary->operand, facts.writtenLevel);
        close(facts.writtenLevel < level);
    } else if (const auto* two = expression.as<Binary>()) {
        binary(expression, *two, level);
    } else if (const auto* function = expression.as<Call>()) {
        call(expression, *function);
    } else if (const auto* scalar = expression.as<ScalarQuery>()) {
        out_ += "(";
        write(*scalar->query);
        out_ += ")";
    }
}

void Writer::condition(const Expression& expression, int level) {
    if (const auto* two = expression.as<Binary>(); two && isLogical(two->op)) {
        // AND and OR may lean either way: a chain of one of them needs no brackets.
        const OperatorFacts& facts = factsOf(two->op);
        open(facts.writtenLevel < level);
        condition(*two->left, facts.writtenLevel);
        out_ += facts.written;
        condition(*two->right, facts.writtenLevel);
        close(facts.writtenLevel < level);
        return;
    }
    if (const auto* unary = expression.as<Unary>(); unary && unary->op == Operator::Not) {
        const OperatorFacts& facts = factsOf(unary->op);
        open(facts.writtenLevel < level);
        out_ += facts.written;
        condition(*unary->operand, facts.writtenLevel + 1);
        close(facts.writtenLevel < level);
        return;
    }
    if (!isCondition(expression)) return number(expression, level);
    if (const auto* list = expression.as<InList>()) return in(*list, level);
    const int own = factsOf(Operator::Equal).writtenLevel;
    open(own < level);
    if (const auto* two = expression.as<Binary>()) {
        if (two->op == Operator::Like) {
            like(*two);
        } else {
            comparison(two->op, *two->left, *two->right);
        }
    } else if (const auto* range = expression.as<Between>()) {
        between(*range);
    } else if (const auto* rows = expression.as<InQuery>()) {
        in(*rows);
    } else if (const auto* test = expression.as<NullTest>()) {
        value(*test->value, kOperandLevel);
        out_ += test->negated ? " IS NOT NULL" : " IS NULL";
    } else if (const auto* function = expression.as<Call>()) {
        value(*function->arguments[0], kOperandLevel);
        out_ += " IS NULL";
    } else if (const auto* exists = expression.as<Exists>()) {
        out_ += "EXISTS (";
        write(*exists->query);
        out_ += ")";
    }
    close(own < level);
}

/// As an operand of arithmetic: a text that reads as no number fails the statement.
void Writer::number(const Expression& expression, int level) {
    switch (kindOf(expression)) {
        case Kind::Text:
            out_ += plain_ ? "CAST(" : "tarmel_to_number(";
            value(expression);
            out_ += plain_ ? " AS REAL)" : ")";
            return;
        case Kind::Date:
            out_ += plain_ ? "(julianday(" : "tarmel_serial(";
            value(expression);
            out_ += plain_ ? ") - 2415018.5)" : ")";
            return;
        default:
            value(expression, level);
    }
}

/// As text in the runtime's form.
void Writer::text(const Expression& expression) {
    const Kind kind = kindOf(expression);
    if (kind == Kind::Text || isNull(expression)) return value(expression, kOperandLevel);
    if (plain_) {
        const QByteArray own = written(expression);
        if (kind == Kind::Date) {
            out_ += "(CASE WHEN substr(" + own +
                    ", 1, 10) = '1899-12-30' THEN '' ELSE strftime('%d/%m/%Y', " + own +
                    ") END || CASE WHEN substr(" + own +
                    ", 12) = '00:00:00' THEN '' ELSE ltrim(strftime(' %H:%M:%S', " + own + ")) END)";
        } else if (kind == Kind::Boolean) {
            out_ += "CASE " + own + " WHEN 0 THEN 'Falso' WHEN -1 THEN 'Verdadero' END";
        } else {
            out_ +=
                "CASE WHEN " + own + " IS NOT NULL THEN replace(printf('%.15g', " + own + "), '.', ',') END";
        }
        return;
    }
    out_ += kind == Kind::Date      ? "tarmel_date_text("
            : kind == Kind::Boolean ? "tarmel_boolean_text("
                                    : "tarmel_text(";
    value(expression);
    out_ += ")";
}

/// As an argument of tarmel_join, which finds numbers and texts out by itself.
void Writer::joinable(const Expression& expression) {
    const Kind kind = kindOf(expression);
    if (kind == Kind::Date || kind == Kind::Boolean) return text(expression);
    value(expression);
}

/// As a date in the file's form.
void Writer::date(const Expression& expression) {
    if (kindOf(expression) == Kind::Date || isNull(expression)) return value(expression);
    if (plain_) throw notForViews(u"CDate");
    out_ += "tarmel_cdate(";
    value(expression);
    out_ += ")";
}

/// As one side of a comparison. A text that reads as a number or date meets one as such; any other is unequal
/// to it.
void Writer::comparable(const Expression& expression, Kind kind, int level) {
    const Kind own = kindOf(expression);
    const bool given = isGiven(expression);
    const bool numbers = kind == Kind::Number || kind == Kind::Boolean;
    const bool asItIs = own == kind || isNull(expression) || kind == Kind::Text ||
                        (numbers && (own == Kind::Number || own == Kind::Boolean)) ||
                        (!given && own == Kind::Unknown);
    if (asItIs) return value(expression, level);
    if (given) {
        const Type type = kind == Kind::Date      ? Type::Date
                          : kind == Kind::Boolean ? Type::Boolean
                                                  : Type::Double;
        if (const auto* mark = expression.as<Parameter>()) return parameter(*mark, type);
        return literal(*expression.as<Literal>(), type);
    }
    if (own == Kind::Date) return number(expression, level);
    if (!plain_) {
        out_ += kind == Kind::Date ? "tarmel_as_date(" : "tarmel_as_number(";
        value(expression);
        out_ += ")";
        return;
    }
    if (kind == Kind::Date) return value(expression, level);
    const QByteArray plainText = written(expression);
    const QByteArray digits = "replace(replace(trim(" + plainText + "), '.', ''), ',', '.')";
    out_ += "CASE WHEN " + digits + " GLOB '*[0-9]*' AND ltrim(" + digits +
            ", '+-') NOT GLOB '*[^0-9.]*' THEN CAST(" + digits + " AS NUMERIC) ELSE '~' || " + plainText +
            " END";
}

// ---- Comparisons

/// Which collation equality takes; null when that of the columns serves, so that their indexes do.
const char* Writer::equalityCollation(std::initializer_list<const Expression*> operands) const {
    bool anyStored = false;
    for (const Expression* operand : operands) {
        if (isNull(*operand)) continue;
        if (const auto* name = operand->as<ColumnName>()) {
            anyStored = anyStored || name->source->isStored();
            continue;
        }
        const auto* given = operand->as<Literal>();
        const bool ascii =
            given && (given->token.kind != TokenKind::Text || given->token.letters == Letters::Ascii);
        if (!ascii && !plain_) return spanish();
    }
    return anyStored ? nullptr : " COLLATE NOCASE";
}

void Writer::comparison(Operator op, const Expression& left, const Expression& right) {
    const OperatorFacts& facts = factsOf(op);
    const Kind kind = meeting(left, right);
    const bool equality = op == Operator::Equal || op == Operator::NotEqual;
    const char* collation = nullptr;
    if (kind == Kind::Text) collation = equality || plain_ ? equalityCollation({&left, &right}) : spanish();
    comparable(left, kind, kOperandLevel);
    out_ += facts.written;
    comparable(right, kind, kOperandLevel);
    if (collation) collate(collation);
}

void Writer::like(const Binary& like) {
    const Literal* given = like.right->as<Literal>();
    const bool fixed = given && given->token.fixed && given->token.kind == TokenKind::Text;
    if (plain_ || (fixed && isAscii(literalValue(given->token).toText()))) {
        text(*like.left);
        out_ += like.negated ? " NOT LIKE " : " LIKE ";
        text(*like.right);
        return;
    }
    if (like.negated) out_ += "NOT ";
    out_ += "tarmel_like(";
    text(*like.right);
    out_ += ", ";
    text(*like.left);
    out_ += ")";
}

/// The bounds may stand in either order.
void Writer::between(const Between& between) {
    const Kind low = meeting(*between.value, *between.low);
    const Kind kind = low == Kind::Text ? meeting(*between.value, *between.high) : low;
    const bool texts = kind == Kind::Text;
    comparable(*between.value, kind, kOperandLevel);
    if (texts) collate(spanish());
    out_ += between.negated ? " NOT BETWEEN " : " BETWEEN ";
    for (const char* bound : {"min(", " AND max("}) {
        out_ += bound;
        comparable(*between.low, kind, kOperandLevel);
        if (texts) collate(spanish());
        out_ += ", ";
        comparable(*between.high, kind, kOperandLevel);
        out_ += ")";
    }
}

void Writer::in(const InList& in, int level) {
    const Kind kind = meeting(*in.value, *in.items.front());
    const bool alike = std::all_of(in.items.begin(), in.items.end(), [&](const ExpressionPtr& item) {
        return meeting(*in.value, *item) == kind;
    });
    const int own = alike ? factsOf(Operator::Equal).writtenLevel
                          : factsOf(in.negated ? Operator::Not : Operator::Or).writtenLevel;
    open(own < level);
    if (!alike) {
        if (in.negated) out_ += "NOT (";
        for (std::size_t i = 0; i < in.items.size(); ++i) {
            if (i > 0) out_ += " OR ";
            comparison(Operator::Equal, *in.value, *in.items[i]);
            checkSize();
        }
        close(in.negated);
    } else {
        comparable(*in.value, kind, kOperandLevel);
        const char* collation = nullptr;
        for (const ExpressionPtr& item : in.items) {
            if (kind != Kind::Text || collation == spanish()) break;
            collation = equalityCollation({in.value.get(), item.get()});
        }
        if (collation) collate(collation);
        out_ += in.negated ? " NOT IN (" : " IN (";
        for (std::size_t i = 0; i < in.items.size(); ++i) {
            if (i > 0) out_ += ", ";
            comparable(*in.items[i], kind, 0);
        }
        out_ += ")";
    }
    close(own < level);
}

void Writer::in(const InQuery& in) {
    const Expression& output = *in.query->parts.front().outputs.front().value;
    const Kind kind = meeting(*in.value, output);
    comparable(*in.value, kind, kOperandLevel);
    if (kind == Kind::Text) {
        if (const char* collation = equalityCollation({in.value.get(), &output})) collate(collation);
    }
    out_ += in.negated ? " NOT IN (" : " IN (";
    const Kind own = kindOf(output);
    const bool converts =
        !plain_ && kind != Kind::Text && own != kind && (own == Kind::Text || own == Kind::Date);
    if (converts) {
        out_ += "SELECT ";
        out_ += own == Kind::Date    ? "tarmel_serial("
                : kind == Kind::Date ? "tarmel_as_date("
                                     : "tarmel_as_number(";
        out_ += "\"~c\") FROM (";
        write(*in.query, {QStringLiteral("~c")});
        out_ += ")";
    } else {
        write(*in.query);
    }
    out_ += ")";
}

// ---- Arithmetic and joining

void Writer::binary(const Expression& expression, const Binary& binary, int level) {
    const OperatorFacts& facts = factsOf(binary.op);
    switch (binary.op) {
        case Operator::Join:
            return join(expression);
        case Operator::Add:
        case Operator::Subtract:
            return sum(binary, level);
        case Operator::Multiply:
            open(facts.writtenLevel < level);
            number(*binary.left, facts.writtenLevel);
            out_ += facts.written;
            number(*binary.right, facts.writtenLevel + 1);
            close(facts.writtenLevel < level);
            return;
        case Operator::Divide:
            if (!plain_) return ownCall("tarmel_divide", {binary.left.get(), binary.right.get()});
            out_ += "(CAST(";
            number(*binary.left);
            out_ += " AS REAL) / ";
            number(*binary.right, kOperandLevel);
            out_ += ")";
            return;
        case Operator::DivideWhole:
            return ownCall("tarmel_divide_whole", {binary.left.get(), binary.right.get()});
        case Operator::Modulo:
            return ownCall("tarmel_modulo", {binary.left.get(), binary.right.get()});
        default:
            return ownCall("tarmel_power", {binary.left.get(), binary.right.get()});
    }
}

void Writer::ownCall(const char* name, std::initializer_list<const Expression*> numbers) {
    if (plain_) throw notForViews(QString::fromLatin1(name + sizeof("tarmel_") - 1));
    out_ += name;
    const char* before = "(";
    for (const Expression* each : numbers) {
        out_ += before;
        number(*each);
        before = ", ";
    }
    out_ += ")";
}

/// + and -: numbers, texts (which + joins), dates.
void Writer::sum(const Binary& sum, int level) {
    const OperatorFacts& facts = factsOf(sum.op);
    const Kind left = kindOf(*sum.left), right = kindOf(*sum.right);
    const bool add = sum.op == Operator::Add;
    if (add && joinsTexts(left, right)) {
        out_ += "(";
        value(*sum.left, kOperandLevel);
        out_ += " || ";
        value(*sum.right, kOperandLevel);
        out_ += ")";
        return;
    }
    if (!add && left == Kind::Date && right == Kind::Date) {
        // Days to the second: the difference of two day counts alone would carry their rounding.
        out_ += "(round((julianday(";
        value(*sum.left);
        out_ += ") - julianday(";
        value(*sum.right);
        out_ += ")) * 86400) / 86400.0)";
        return;
    }
    const bool dated = left == Kind::Date || right == Kind::Date;
    if (dated && plain_) throw notForViews(u"fecha + número");
    if (dated) out_ += "tarmel_date(";
    const bool brackets = !dated && facts.writtenLevel < level;
    open(brackets);
    number(*sum.left, facts.writtenLevel);
    out_ += facts.written;
    number(*sum.right, facts.writtenLevel + 1);
    close(brackets);
    close(dated);
}

/// &: where one operand is given in the statement the result is never Null, and SQLite's own joining serves.
void Writer::join(const Expression& expression) {
    std::vector<const Expression*> operands;
    collectJoined(expression, operands);
    const bool neverNull = std::any_of(operands.begin(), operands.end(),
                                       [](const Expression* each) { return each->as<Literal>(); });
    if (!neverNull && !plain_) {
        constexpr std::size_t kMostArguments = 100;  // of a function in SQLite, with some to spare
        if (operands.size() > kMostArguments) throw tooComplex();
        out_ += "tarmel_join(";
        for (std::size_t i = 0; i < operands.size(); ++i) {
            if (i > 0) out_ += ", ";
            joinable(*operands[i]);
        }
        out_ += ")";
        return;
    }
    out_ += "(";
    if (!neverNull) {
        out_ += "CASE WHEN ";
        for (std::size_t i = 0; i < operands.size(); ++i) {
            if (i > 0) out_ += " AND ";
            value(*operands[i], kOperandLevel);
            out_ += " IS NULL";
        }
        out_ += " THEN NULL ELSE ";
    }
    for (std::size_t i = 0; i < operands.size(); ++i) {
        if (i > 0) out_ += " || ";
        const bool given = operands[i]->as<Literal>();
        if (!given) out_ += "coalesce(";
        text(*operands[i]);
        if (!given) out_ += ", '')";
    }
    if (!neverNull) out_ += " END";
    out_ += ")";
    checkSize();
}

}  // namespace tarmel::access_sql
