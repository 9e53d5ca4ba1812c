#include <QLatin1StringView>
#include <cmath>
#include <limits>

#include "platform/access_sql/Errors.h"
#include "platform/access_sql/Translator.h"
#include "platform/access_sql/Types.h"
#include "platform/basic/Text.h"

/// Values that meet a column: stored in it, or compared with it.
namespace tarmel::access_sql {

using basic::Date;
using basic::Null;
using basic::Variant;

namespace {

constexpr double kGreatestSingle = 3.4028235e38;
constexpr double kGreatestCurrency = 922337203685477.5807;

basic::RuntimeError cannotConvert(const Variant& value, const QString& column) {
    const QString shown = value.toText().left(50);
    return statementError(
        QStringLiteral("No se puede convertir el valor «%1» al tipo de datos del campo '%2'.")
            .arg(shown, column));
}

basic::RuntimeError outOfRange(const Variant& value, const QString& column) {
    return statementError(QStringLiteral("El valor «%1» está fuera del intervalo del campo '%2'.")
                              .arg(value.toText().left(50), column));
}

basic::RuntimeError tooLong(const QString& column) {
    return statementError(
        QStringLiteral("El campo '%1' es demasiado pequeño para aceptar la cantidad de datos que intentó "
                       "agregar.")
            .arg(column));
}

double within(double number, double least, double greatest) {
    if (!(number >= least && number <= greatest)) throw basic::RuntimeError(basic::error::Overflow);
    return number;
}

Variant whole(const Variant& value, double least, double greatest) {
    if (value.isWhole() && least <= static_cast<double>(value.toDouble()) && value.toDouble() <= greatest)
        return value;
    return static_cast<qint64>(within(basic::roundHalfEven(value.toDouble()), least, greatest));
}

Variant decimal(const Variant& value, int digits, int scale) {
    if (scale == 0) {
        const double greatest = std::pow(10.0, digits) - 1;
        return whole(value, -greatest, greatest);
    }
    const double unit = std::pow(10.0, scale);
    const double rounded = basic::roundHalfEven(value.toDouble() * unit) / unit;
    const double limit = std::pow(10.0, digits - scale);
    if (std::fabs(rounded) >= limit) throw basic::RuntimeError(basic::error::Overflow);
    return rounded;
}

Variant yesNo(const Variant& value) {
    return value.toBool();
}

/// The conversion alone: errors are the runtime's own.
Variant converted(const Variant& value, Type type, int width, int scale) {
    switch (type) {
        case Type::Boolean:
            return yesNo(value);
        case Type::Byte:
            return whole(value, 0, 255);
        case Type::Integer:
            return whole(value, std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max());
        case Type::Long:
        case Type::Counter:
            return whole(value, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max());
        case Type::Single: {
            const double number = within(value.toDouble(), -kGreatestSingle, kGreatestSingle);
            return static_cast<double>(static_cast<float>(number));
        }
        case Type::Double:
            return value.toDouble();
        case Type::Currency: {
            const double number = within(value.toDouble(), -kGreatestCurrency, kGreatestCurrency);
            return basic::roundHalfEven(number * 10000) / 10000;
        }
        case Type::Decimal:
            return decimal(value, width, scale);
        case Type::Date:
            return value.toDate();
        case Type::Text:
        case Type::Memo:
        case Type::Guid:
            return value.isText() ? value : Variant(value.toText());
        default:
            return value;
    }
}

bool isDate(const QString& text) {
    return basic::IsDate(text);
}

bool readsAsYesNo(const QString& text) {
    for (const char16_t* word : {u"verdadero", u"falso", u"true", u"false"}) {
        if (text.trimmed().compare(QStringView(word), Qt::CaseInsensitive) == 0) return true;
    }
    return basic::IsNumeric(text);
}

/// A text that stands for no number or date is greater than all of them and equal to none, as between
/// Variants. The sign in front keeps the database from reading a number into it after all, and sorts it
/// behind every date.
QString besidesNumbers(const QString& text) {
    return u'~' + text;
}

}  // namespace

Variant convertForStoring(const Variant& value, Type type, int width, int scale, const QString& column) {
    if (value.isNull() || value.isEmpty()) return Null{};
    const Kind kind = kindOf(type);
    const bool textColumn = kind == Kind::Text || kind == Kind::Unknown || kind == Kind::Binary;
    if (!textColumn && value.isText() && value.toText().isEmpty()) return Null{};
    Variant result;
    try {
        result = converted(value, type, width, scale);
    } catch (const basic::RuntimeError& error) {
        if (error.number() == basic::error::Overflow) throw outOfRange(value, column);
        throw cannotConvert(value, column);
    }
    if (type == Type::Text && result.toText().size() > width) throw tooLong(column);
    return result;
}

Variant convertForComparing(const Variant& value, Type type) {
    const Kind kind = kindOf(type);
    if (value.isNull() || value.isEmpty()) return value;
    if (kind == Kind::Date) {
        if (value.isDate()) return value;
        if (value.isNumber()) return Date(value.toDouble());
        const QString text = value.toText();
        return isDate(text) ? Variant(basic::CDate(text)) : Variant(besidesNumbers(text));
    }
    if (kind == Kind::Boolean && value.isText()) {
        const QString text = value.toText();
        if (!readsAsYesNo(text)) return besidesNumbers(text);
        return basic::IsNumeric(text) ? Variant(basic::CDbl(text)) : Variant(value.toBool());
    }
    if (kind == Kind::Number || kind == Kind::Boolean) {
        if (value.isDate()) return value.toDouble();
        if (!value.isText()) return value;
        const QString text = value.toText();
        return basic::IsNumeric(text) ? Variant(basic::CDbl(text)) : Variant(besidesNumbers(text));
    }
    return value;
}

}  // namespace tarmel::access_sql
