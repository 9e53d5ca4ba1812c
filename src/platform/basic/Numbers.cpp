#include <QVarLengthArray>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

#include "platform/basic/Digits.h"
#include "platform/basic/Text.h"

/// Text and numbers. The C library's own conversions follow the machine's locale, so none of them is used.
namespace tarmel::basic {

namespace {

constexpr int significantDigits = 15;

/// A number as plain characters: digits, at most one ".", an exponent.
using Characters = QVarLengthArray<char, 64>;

struct Reading {
    double value;
    bool overflow;
};

/// Of a number beyond what a double holds: whether it is too great, not too small.
bool isGreat(std::string_view characters) {
    const size_t mantissaEnd = std::min(characters.find('e'), characters.size());
    const size_t point = std::min(characters.find('.'), mantissaEnd);
    const size_t firstDigit = characters.find_first_of("123456789");
    if (mantissaEnd == characters.size()) return firstDigit < point;
    long exponent = 0;
    const char* const exponentText = characters.data() + mantissaEnd + 1;
    const auto [end, failure] =
        std::from_chars(exponentText, characters.data() + characters.size(), exponent);
    if (failure != std::errc()) return *exponentText != '-';
    return exponent + static_cast<long>(point) - static_cast<long>(firstDigit) > 0;
}

Reading convert(const Characters& characters) {
    double value = 0;
    const char* const end = characters.data() + characters.size();
    if (std::from_chars(characters.data(), end, value).ec == std::errc()) return {value, false};
    return {0, isGreat({characters.data(), static_cast<size_t>(characters.size())})};
}

bool isExponentSign(QChar c) {
    return c == u'E' || c == u'e';
}
bool isSign(QChar c) {
    return c == u'+' || c == u'-';
}

/// Takes an exponent at `place` over if it is whole ("E5", "E+05"); where it is not, nothing is taken.
qsizetype takeExponent(QStringView text, qsizetype place, Characters& out) {
    if (place >= text.size() || !isExponentSign(text[place])) return place;
    qsizetype digit = place + 1;
    const bool negative = digit < text.size() && text[digit] == u'-';
    if (digit < text.size() && isSign(text[digit])) ++digit;
    if (digit >= text.size() || !isDigit(text[digit])) return place;
    out.append('e');
    if (negative) out.append('-');
    for (; digit < text.size() && isDigit(text[digit]); ++digit)
        out.append(text[digit].toLatin1());
    return digit;
}

QStringView withoutBlanksAround(QStringView text) {
    while (!text.isEmpty() && text.front() == u' ')
        text = text.sliced(1);
    while (!text.isEmpty() && text.back() == u' ')
        text.chop(1);
    return text;
}

/// The number that the whole text stands for under Spanish settings.
std::optional<Reading> readNumber(const QString& s) {
    const QStringView text = withoutBlanksAround(s);
    Characters characters;
    qsizetype place = 0;
    if (!text.isEmpty() && isSign(text[0])) {
        if (text[0] == u'-') characters.append('-');
        place = 1;
    }
    bool digits = false;
    bool decimals = false;
    for (; place < text.size(); ++place) {
        const QChar c = text[place];
        if (isDigit(c)) {
            characters.append(c.toLatin1());
            digits = true;
        } else if (c == u',' && !decimals) {
            if (!digits) characters.append('0');
            characters.append('.');
            decimals = true;
        } else if (c != u'.') {
            break;
        }
    }
    if (!digits) return std::nullopt;
    if (takeExponent(text, place, characters) != text.size()) return std::nullopt;
    return convert(characters);
}

template <typename Whole>
Whole narrow(double d) {
    const double rounded = roundHalfEven(d);
    const bool inRange =
        rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max();
    if (!inRange) throw RuntimeError(error::Overflow);
    return static_cast<Whole>(rounded);
}

QString notFiniteText(double d) {
    if (std::isnan(d)) return QStringLiteral("-1,#IND");
    return d > 0 ? QStringLiteral("1,#INF") : QStringLiteral("-1,#INF");
}

}  // namespace

double Val(const QString& s) {
    QString text = s;
    text.removeIf([](QChar c) { return c == u' ' || c == u'\t' || c == u'\n'; });
    Characters characters;
    qsizetype place = 0;
    const bool negative = !text.isEmpty() && text[0] == u'-';
    if (!text.isEmpty() && isSign(text[0])) ++place;
    bool digits = false;
    bool decimals = false;
    for (; place < text.size(); ++place) {
        const QChar c = text[place];
        if (c == u'.' && !decimals) {
            if (!digits) characters.append('0');
            decimals = true;
        } else if (isDigit(c)) {
            digits = true;
        } else {
            break;
        }
        characters.append(c.toLatin1());
    }
    if (!digits) return 0;
    takeExponent(text, place, characters);
    const Reading reading = convert(characters);
    const double magnitude = reading.overflow ? std::numeric_limits<double>::max() : reading.value;
    return negative && magnitude != 0 ? -magnitude : magnitude;
}

bool IsNumeric(const QString& s) {
    const std::optional<Reading> reading = readNumber(s);
    return reading && !reading->overflow;
}

bool IsNumeric(const Variant& v) {
    if (v.isText()) return IsNumeric(v.toText());
    return !v.isNull() && !v.isDate();
}

double CDbl(const QString& s) {
    const std::optional<Reading> reading = readNumber(s);
    if (!reading) throw RuntimeError(error::TypeMismatch);
    if (reading->overflow) throw RuntimeError(error::Overflow);
    return reading->value;
}

qint16 CInt(const QString& s) {
    return narrow<qint16>(CDbl(s));
}
qint32 CLng(const QString& s) {
    return narrow<qint32>(CDbl(s));
}
qint16 CInt(double d) {
    return narrow<qint16>(d);
}
qint32 CLng(double d) {
    return narrow<qint32>(d);
}

QString CStr(double d) {
    if (!std::isfinite(d)) return notFiniteText(d);
    // Most numbers are whole; this is several times as fast, and minus zero loses its sign.
    if (std::fabs(d) < 1e15 && d == std::trunc(d)) return CStr(static_cast<qint64>(d));
    char buffer[32];
    char* const end =
        std::to_chars(buffer, buffer + sizeof buffer, d, std::chars_format::general, significantDigits).ptr;
    for (char* c = buffer; c != end; ++c) {
        if (*c == '.') *c = ',';
        if (*c == 'e') *c = 'E';
    }
    return QString::fromLatin1(buffer, end - buffer);
}

QString CStr(qint64 n) {
    return QString::number(n);
}

QString CStr(bool b) {
    return b ? QStringLiteral("Verdadero") : QStringLiteral("Falso");
}

double roundHalfEven(double d) {
    const double below = std::floor(d);
    const double rest = d - below;
    if (rest < 0.5) return below;
    if (rest > 0.5) return below + 1;
    return std::fmod(below, 2) == 0 ? below : below + 1;
}

}  // namespace tarmel::basic
