#include "platform/access_sql/Functions.h"

#include <sqlite3.h>

#include <array>
#include <cmath>
#include <string_view>

#include "platform/access_sql/Collation.h"
#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Translator.h"
#include "platform/basic/Text.h"

/// What the writer calls. Dates come and go in the file's form; Null gives Null unless it is told otherwise.
namespace tarmel::access_sql {

using basic::Date;
using basic::Null;
using basic::Variant;

namespace {

// ---- Values

std::string_view utf8Of(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

QString textOf(sqlite3_value* value) {
    const std::string_view utf8 = utf8Of(value);
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

Date dateOf(const QString& text) {
    constexpr qsizetype kFileForm = 19;
    if (text.size() == kFileForm && text[4] == u'-') return Date::fromIso(text);
    return basic::CDate(text);
}

/// The value as SQLite holds it; `type` tells dates and yes/no apart from texts and numbers.
Variant variantOf(sqlite3_value* value, Type type = Type::Unknown) {
    switch (sqlite3_value_type(value)) {
        case SQLITE_NULL:
            return Null{};
        case SQLITE_INTEGER:
            if (type == Type::Boolean) return sqlite3_value_int64(value) != 0;
            return static_cast<qint64>(sqlite3_value_int64(value));
        case SQLITE_FLOAT:
            return sqlite3_value_double(value);
        default:
            break;
    }
    if (type == Type::Date) return dateOf(textOf(value));
    return textOf(value);
}

void give(sqlite3_context* context, const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(context, utf8.constData(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
}

void give(sqlite3_context* context, const Variant& value) {
    if (value.isNull() || value.isEmpty()) return sqlite3_result_null(context);
    if (value.isBool()) return sqlite3_result_int(context, value.toBool() ? -1 : 0);
    if (value.isWhole()) return sqlite3_result_int64(context, std::get<qint64>(value.raw()));
    if (value.isDouble()) {
        const double number = value.toDouble();
        // A whole result is stored and shown like any other whole number.
        constexpr double kExact = 9e15;
        if (std::fabs(number) < kExact && number == std::floor(number)) {
            return sqlite3_result_int64(context, static_cast<sqlite3_int64>(number));
        }
        return sqlite3_result_double(context, number);
    }
    if (value.isDate()) return give(context, value.toDate().iso());
    give(context, value.toText());
}

using Arguments = sqlite3_value**;

int wholeOf(sqlite3_value* value) {
    return variantOf(value).toLong();
}

// ---- Texts and numbers

/// Digits alone are most of what there is, and need none of the runtime's reading.
bool plainDigits(std::string_view text, sqlite3_int64& number) {
    constexpr std::size_t kSafeDigits = 15;
    if (text.empty() || text.size() > kSafeDigits) return false;
    number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return false;
        number = number * 10 + (c - '0');
    }
    return true;
}

Variant asNumber(Arguments in) {
    return convertForComparing(variantOf(in[0]), Type::Double);
}

Variant asDate(Arguments in) {
    return convertForComparing(variantOf(in[0]), Type::Date);
}

Variant toNumber(Arguments in) {
    return variantOf(in[0]).toDouble();
}

Variant text(Arguments in) {
    return variantOf(in[0]).toText();
}

Variant dateText(Arguments in) {
    return basic::CStr(variantOf(in[0], Type::Date).toDate());
}

Variant booleanText(Arguments in) {
    return basic::CStr(variantOf(in[0]).toDouble() != 0);
}

Variant serial(Arguments in) {
    return variantOf(in[0], Type::Date).toDate().serial();
}

Variant date(Arguments in) {
    constexpr double kFirstDay = -657434, kLastDay = 2958466;  // the years 100 to 9999
    const double days = variantOf(in[0]).toDouble();
    if (!(days >= kFirstDay && days < kLastDay)) throw basic::RuntimeError(basic::error::Overflow);
    return Date(days);
}

Variant cDate(Arguments in) {
    const Variant value = variantOf(in[0]);
    return value.isText() ? Variant(dateOf(value.toText())) : date(in);
}

Variant cInt(Arguments in) {
    return static_cast<int>(variantOf(in[0]).toInteger());
}

Variant cLng(Arguments in) {
    return static_cast<int>(variantOf(in[0]).toLong());
}

Variant val(Arguments in) {
    return basic::Val(textOf(in[0]));
}

Variant wholePart(Arguments in) {
    return std::floor(variantOf(in[0]).toDouble());
}

Variant upper(Arguments in) {
    return basic::UCase(textOf(in[0]));
}

Variant lower(Arguments in) {
    return basic::LCase(textOf(in[0]));
}

Variant left(Arguments in) {
    return basic::Left(textOf(in[0]), wholeOf(in[1]));
}

Variant right(Arguments in) {
    return basic::Right(textOf(in[0]), wholeOf(in[1]));
}

Variant mid(Arguments in) {
    return basic::Mid(textOf(in[0]), wholeOf(in[1]));
}

Variant midOfLength(Arguments in) {
    return basic::Mid(textOf(in[0]), wholeOf(in[1]), wholeOf(in[2]));
}

Variant inStrFrom(Arguments in) {
    return basic::InStr(wholeOf(in[0]), textOf(in[1]), textOf(in[2]));
}

Variant like(Arguments in) {
    return matchesLike(utf8Of(in[1]), utf8Of(in[0])) ? 1 : 0;
}

// ---- Arithmetic

basic::RuntimeError divisionByZero() {
    return statementError(QStringLiteral("División por cero."));
}

qint64 rounded(sqlite3_value* value) {
    constexpr double kGreatest = 9.2e18;
    const double number = basic::roundHalfEven(variantOf(value).toDouble());
    if (!(std::fabs(number) < kGreatest)) throw basic::RuntimeError(basic::error::Overflow);
    return static_cast<qint64>(number);
}

Variant finite(double number) {
    if (!std::isfinite(number)) throw basic::RuntimeError(basic::error::Overflow);
    return number;
}

Variant divide(Arguments in) {
    const double divisor = variantOf(in[1]).toDouble();
    if (divisor == 0) throw divisionByZero();
    return finite(variantOf(in[0]).toDouble() / divisor);
}

Variant divideWhole(Arguments in) {
    const qint64 divisor = rounded(in[1]);
    if (divisor == 0) throw divisionByZero();
    return rounded(in[0]) / divisor;
}

Variant modulo(Arguments in) {
    const qint64 divisor = rounded(in[1]);
    if (divisor == 0) throw divisionByZero();
    return rounded(in[0]) % divisor;
}

Variant power(Arguments in) {
    return finite(std::pow(variantOf(in[0]).toDouble(), variantOf(in[1]).toDouble()));
}

// ---- Format

/// "0" and "#" for digits, "." for the decimal sign, "," for groups: everything else stands for itself.
QString formatNumber(double number, const QString& pattern) {
    const auto isPlace = [](QChar c) { return c == u'0' || c == u'#'; };
    const qsizetype first = pattern.indexOf(u'0') < 0 ? pattern.indexOf(u'#')
                            : pattern.indexOf(u'#') < 0
                                ? pattern.indexOf(u'0')
                                : std::min(pattern.indexOf(u'0'), pattern.indexOf(u'#'));
    if (first < 0) return pattern.isEmpty() ? basic::CStr(number) : pattern;
    qsizetype end = first;
    int least = 0, decimals = 0, leastDecimals = 0;
    bool groups = false, behindPoint = false;
    for (; end < pattern.size() && (isPlace(pattern[end]) || pattern[end] == u'.' || pattern[end] == u',');
         ++end) {
        if (pattern[end] == u'.') behindPoint = true;
        if (pattern[end] == u',') groups = true;
        if (!isPlace(pattern[end])) continue;
        if (!behindPoint) {
            least += pattern[end] == u'0';
        } else {
            ++decimals;
            if (pattern[end] == u'0') leastDecimals = decimals;
        }
    }
    QString digits = QString::number(std::fabs(number), 'f', std::min(decimals, 15));
    QString fraction = decimals > 0 ? digits.section(u'.', 1) : QString();
    while (fraction.size() > leastDecimals && fraction.endsWith(u'0'))
        fraction.chop(1);
    QString whole = digits.section(u'.', 0, 0).rightJustified(least, u'0');
    if (least == 0 && whole == u"0") whole.clear();
    for (qsizetype place = whole.size() - 3; groups && place > 0; place -= 3)
        whole.insert(place, u'.');
    if (behindPoint) whole += u',' + fraction;
    const bool zero = digits.count(u'0') + digits.count(u'.') == digits.size();
    return pattern.left(first) + (number < 0 && !zero ? QStringLiteral("-") : QString()) + whole +
           pattern.mid(end);
}

Variant format(Arguments in) {
    const Variant value = variantOf(in[0]);
    const QString pattern = textOf(in[1]);
    if (!value.isText()) return formatNumber(value.toDouble(), pattern);
    const QString text = value.toText();
    if (pattern.isEmpty()) return text;
    if (basic::IsDate(text)) return basic::Format(basic::CDate(text), pattern);
    if (basic::IsNumeric(text)) return formatNumber(basic::CDbl(text), pattern);
    return text;
}

// ---- Functions that see Null

void run(sqlite3_context* context, const auto& work) {
    try {
        work();
    } catch (const basic::RuntimeError& error) {
        const QByteArray message = error.description().toUtf8();
        sqlite3_result_error(context, message.constData(), static_cast<int>(message.size()));
    }
}

/// &: Null counts as the empty text, unless all are Null.
void join(sqlite3_context* context, int count, Arguments in) {
    run(context, [&] {
        bool any = false;
        QByteArray joined;
        for (int i = 0; i < count; ++i) {
            if (sqlite3_value_type(in[i]) == SQLITE_NULL) continue;
            any = true;
            if (sqlite3_value_type(in[i]) == SQLITE_FLOAT) {
                joined += basic::CStr(sqlite3_value_double(in[i])).toUtf8();
            } else {
                const std::string_view text = utf8Of(in[i]);
                joined.append(text.data(), static_cast<qsizetype>(text.size()));
            }
        }
        if (!any) return sqlite3_result_null(context);
        sqlite3_result_text(context, joined.constData(), static_cast<int>(joined.size()), SQLITE_TRANSIENT);
    });
}

/// tarmel_store(value, its type, the column's type, width, scale, column)
void store(sqlite3_context* context, int, Arguments in) {
    run(context, [&] {
        const Variant value = variantOf(in[0], static_cast<Type>(sqlite3_value_int(in[1])));
        const auto type = static_cast<Type>(sqlite3_value_int(in[2]));
        give(context, convertForStoring(value, type, sqlite3_value_int(in[3]), sqlite3_value_int(in[4]),
                                        textOf(in[5])));
    });
}

// ---- Registration

using Work = Variant (*)(Arguments);

struct OwnFunction {
    const char* name;
    int arguments;
    Work work;
};

constexpr std::array kFunctions = {
    OwnFunction{"tarmel_as_number", 1, asNumber},
    OwnFunction{"tarmel_as_date", 1, asDate},
    OwnFunction{"tarmel_to_number", 1, toNumber},
    OwnFunction{"tarmel_text", 1, text},
    OwnFunction{"tarmel_date_text", 1, dateText},
    OwnFunction{"tarmel_boolean_text", 1, booleanText},
    OwnFunction{"tarmel_serial", 1, serial},
    OwnFunction{"tarmel_date", 1, date},
    OwnFunction{"tarmel_cdate", 1, cDate},
    OwnFunction{"tarmel_cint", 1, cInt},
    OwnFunction{"tarmel_clng", 1, cLng},
    OwnFunction{"tarmel_val", 1, val},
    OwnFunction{"tarmel_int", 1, wholePart},
    OwnFunction{"tarmel_ucase", 1, upper},
    OwnFunction{"tarmel_lcase", 1, lower},
    OwnFunction{"tarmel_left", 2, left},
    OwnFunction{"tarmel_right", 2, right},
    OwnFunction{"tarmel_mid", 2, mid},
    OwnFunction{"tarmel_mid", 3, midOfLength},
    OwnFunction{"tarmel_instr", 3, inStrFrom},
    OwnFunction{"tarmel_like", 2, like},
    OwnFunction{"tarmel_divide", 2, divide},
    OwnFunction{"tarmel_divide_whole", 2, divideWhole},
    OwnFunction{"tarmel_modulo", 2, modulo},
    OwnFunction{"tarmel_power", 2, power},
    OwnFunction{"tarmel_format", 2, format},
};

/// Null in, Null out; digits alone are read at once where a number is asked for.
void dispatch(sqlite3_context* context, int count, Arguments in) {
    for (int i = 0; i < count; ++i) {
        if (sqlite3_value_type(in[i]) == SQLITE_NULL) return sqlite3_result_null(context);
    }
    const auto& function = *static_cast<const OwnFunction*>(sqlite3_user_data(context));
    const bool readsNumber = function.work == asNumber || function.work == toNumber || function.work == val;
    sqlite3_int64 number = 0;
    if (readsNumber && sqlite3_value_type(in[0]) == SQLITE_TEXT && plainDigits(utf8Of(in[0]), number)) {
        return sqlite3_result_int64(context, number);
    }
    run(context, [&] { give(context, function.work(in)); });
}

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
    return compareSpanish({static_cast<const char*>(left), static_cast<std::size_t>(leftSize)},
                          {static_cast<const char*>(right), static_cast<std::size_t>(rightSize)});
}

}  // namespace

void registerFunctions(sqlite3* db) {
    constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
    for (const OwnFunction& function : kFunctions) {
        sqlite3_create_function(db, function.name, function.arguments, kFlags,
                                const_cast<OwnFunction*>(&function), dispatch, nullptr, nullptr);
    }
    sqlite3_create_function(db, "tarmel_join", -1, kFlags, nullptr, join, nullptr, nullptr);
    sqlite3_create_function(db, "tarmel_store", 6, kFlags, nullptr, store, nullptr, nullptr);
    sqlite3_create_collation(db, kSpanishCollation, SQLITE_UTF8, nullptr, collate);
}

}  // namespace tarmel::access_sql
