#include "platform/basic/Text.h"

#include <algorithm>
#include <array>

namespace tarmel::basic {

namespace {

void requireNotNegative(int n) {
    if (n < 0) throw RuntimeError(error::InvalidCall);
}

constexpr QChar blank = u' ';

/// What the code page has at 0x80 to 0x9F; its five free places stand for the control characters of Latin 1.
constexpr std::array<char16_t, 32> ansiFrom80{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                              0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ansiOf(char16_t unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
    const auto found = std::ranges::find(ansiFrom80, unit);
    return found == ansiFrom80.end() ? '?' : static_cast<char>(0x80 + (found - ansiFrom80.begin()));
}

}  // namespace

QString Left(const QString& s, int n) {
    requireNotNegative(n);
    return s.left(n);
}

QString Right(const QString& s, int n) {
    requireNotNegative(n);
    return s.right(n);
}

QString Mid(const QString& s, int position) {
    if (position < 1) throw RuntimeError(error::InvalidCall);
    return s.mid(position - 1);
}

QString Mid(const QString& s, int position, int length) {
    if (position < 1) throw RuntimeError(error::InvalidCall);
    requireNotNegative(length);
    return s.mid(position - 1, length);
}

int InStr(const QString& s, const QString& part) {
    return InStr(1, s, part);
}

int InStr(int start, const QString& s, const QString& part) {
    if (start < 1) throw RuntimeError(error::InvalidCall);
    if (start > s.size()) return 0;
    return static_cast<int>(s.indexOf(part, start - 1)) + 1;
}

int InStrRev(const QString& s, const QString& part) {
    if (part.isEmpty()) return static_cast<int>(s.size());
    return static_cast<int>(s.lastIndexOf(part)) + 1;
}

QString Trim(const QString& s) {
    return LTrim(RTrim(s));
}

QString LTrim(const QString& s) {
    qsizetype first = 0;
    while (first < s.size() && s[first] == blank)
        ++first;
    return first == 0 ? s : s.mid(first);
}

QString RTrim(const QString& s) {
    qsizetype size = s.size();
    while (size > 0 && s[size - 1] == blank)
        --size;
    return size == s.size() ? s : s.left(size);
}

QString Space(int n) {
    requireNotNegative(n);
    return QString(n, blank);
}

QString UCase(const QString& s) {
    QString result = s;
    for (QChar& c : result)
        c = c.toUpper();
    return result;
}

QString LCase(const QString& s) {
    QString result = s;
    for (QChar& c : result)
        c = c.toLower();
    return result;
}

QByteArray toAnsi(const QString& s) {
    QByteArray bytes(s.size(), Qt::Uninitialized);
    std::ranges::transform(s, bytes.begin(), [](QChar c) { return ansiOf(c.unicode()); });
    return bytes;
}

QString fromAnsi(const QByteArray& bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    std::ranges::transform(bytes, text.begin(), [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return QChar(code >= 0x80 && code < 0xA0 ? ansiFrom80[code - 0x80] : char16_t{code});
    });
    return text;
}

}  // namespace tarmel::basic
