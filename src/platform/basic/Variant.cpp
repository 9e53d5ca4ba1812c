#include "platform/basic/Variant.h"

#include <compare>

#include "platform/basic/Text.h"

namespace tarmel::basic {

namespace {

template <typename... Case>
struct Cases : Case... {
    using Case::operator()...;
};

constexpr double firstSerial = -657434;       // 1 January 100
constexpr double behindLastSerial = 2958466;  // 1 January 10000

Date dateOf(double serial) {
    if (!(serial > firstSerial - 1 && serial < behindLastSerial)) throw RuntimeError(error::Overflow);
    return Date(serial);
}

double numberOf(bool b) {
    return b ? -1 : 0;
}

bool boolOf(const QString& s) {
    const auto is = [&s](QStringView word) { return word.compare(s, Qt::CaseInsensitive) == 0; };
    if (is(u"Verdadero") || is(u"True")) return true;
    if (is(u"Falso") || is(u"False")) return false;
    return CDbl(s) != 0;
}

/// Order of two values neither of which is Null; Empty stands for what the other side's type has as its
/// nothing.
std::partial_ordering order(const Variant& a, const Variant& b) {
    const bool textual = a.isText() || b.isText();
    const bool numeric = a.isNumber() || b.isNumber();
    if (textual && numeric) return a.isText() ? std::partial_ordering::greater : std::partial_ordering::less;
    if (textual) return a.toText().compare(b.toText()) <=> 0;
    if (a.isWhole() && b.isWhole()) return std::get<qint64>(a.raw()) <=> std::get<qint64>(b.raw());
    if (a.isDate() && b.isDate()) return std::get<Date>(a.raw()) <=> std::get<Date>(b.raw());
    return a.toDouble() <=> b.toDouble();
}

bool eitherNull(const Variant& a, const Variant& b) {
    return a.isNull() || b.isNull();
}

}  // namespace

QString Variant::toText() const {
    return std::visit(Cases{[](Empty) { return QString(); },
                            [](Null) -> QString { throw RuntimeError(error::InvalidNull); },
                            [](const QString& s) { return s; }, [](auto v) { return CStr(v); }},
                      value_);
}

double Variant::toDouble() const {
    return std::visit(
        Cases{[](Empty) { return 0.0; }, [](Null) -> double { throw RuntimeError(error::InvalidNull); },
              [](const QString& s) { return CDbl(s); }, [](Date d) { return d.serial(); },
              [](bool b) { return numberOf(b); }, [](auto n) { return static_cast<double>(n); }},
        value_);
}

qint16 Variant::toInteger() const {
    return CInt(toDouble());
}
qint32 Variant::toLong() const {
    return CLng(toDouble());
}

bool Variant::toBool() const {
    if (const auto* text = std::get_if<QString>(&value_)) return boolOf(*text);
    return toDouble() != 0;
}

Date Variant::toDate() const {
    if (const auto* date = std::get_if<Date>(&value_)) return *date;
    if (const auto* text = std::get_if<QString>(&value_)) return CDate(*text);
    return dateOf(toDouble());
}

bool testsEqual(const Variant& a, const Variant& b) {
    return !eitherNull(a, b) && order(a, b) == 0;
}
bool testsLess(const Variant& a, const Variant& b) {
    return !eitherNull(a, b) && order(a, b) < 0;
}
bool testsDifferent(const Variant& a, const Variant& b) {
    return !eitherNull(a, b) && order(a, b) != 0;
}

bool testsTrue(const Variant& v) {
    if (v.isNull()) return false;
    return v.isText() ? v.toBool() : v.toDouble() == numberOf(true);
}

}  // namespace tarmel::basic
