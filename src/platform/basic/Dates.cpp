#include <array>
#include <optional>

#include "platform/basic/Digits.h"
#include "platform/basic/Text.h"

/// Text and dates.
namespace tarmel::basic {

namespace {

/// A run of digits and how many they were.
struct Figure {
    int value = 0;
    int digits = 0;
};

/// Reads a text from its beginning, each step taking what it names.
class Reader {
 public:
    explicit Reader(QStringView text) : text_(text) {}

    [[nodiscard]] bool atEnd() const { return text_.isEmpty(); }
    [[nodiscard]] QChar next() const { return text_.isEmpty() ? QChar() : text_.front(); }

    bool take(QChar c) {
        if (next() != c) return false;
        text_ = text_.sliced(1);
        return true;
    }
    bool takeBlanks() {
        bool any = false;
        while (take(u' '))
            any = true;
        return any;
    }
    /// At most four digits; none of a longer run, which stands for no part of a date.
    Figure takeFigure() {
        Figure figure;
        while (figure.digits < text_.size() && isDigit(text_[figure.digits])) {
            if (figure.digits == 4) return {};
            figure.value = figure.value * 10 + (text_[figure.digits].unicode() - u'0');
            ++figure.digits;
        }
        text_ = text_.sliced(figure.digits);
        return figure;
    }

 private:
    QStringView text_;
};

int fullYear(Figure year) {
    if (year.digits > 2) return year.value;
    return year.value < 30 ? 2000 + year.value : 1900 + year.value;
}

std::optional<Date> dayOf(int year, int month, int day) {
    try {
        return Date::of(year, month, day);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

bool isShort(Figure figure) {
    return figure.digits == 1 || figure.digits == 2;
}

/// The rest of a date behind its first figure.
std::optional<Date> readDay(Figure first, Reader& reader) {
    const QChar separator = reader.next();
    if (!reader.take(u'/') && !reader.take(u'-')) return std::nullopt;
    const Figure second = reader.takeFigure();
    if (!reader.take(separator)) return std::nullopt;
    const Figure third = reader.takeFigure();
    if (!isShort(second) || third.digits == 0) return std::nullopt;
    if (first.digits == 4)
        return isShort(third) ? dayOf(first.value, second.value, third.value) : std::nullopt;
    if (!isShort(first)) return std::nullopt;
    const int year = fullYear(third);
    if (second.value > 12) return dayOf(year, first.value, second.value);
    return dayOf(year, second.value, first.value);
}

/// The rest of a time behind its hour.
std::optional<Date> readTime(Figure hour, Reader& reader) {
    if (!isShort(hour) || !reader.take(u':')) return std::nullopt;
    const Figure minute = reader.takeFigure();
    Figure second{0, 1};
    if (reader.take(u':')) second = reader.takeFigure();
    if (!isShort(minute) || !isShort(second)) return std::nullopt;
    if (hour.value > 23 || minute.value > 59 || second.value > 59) return std::nullopt;
    return Date::timeOfDay(hour.value, minute.value, second.value);
}

/// Before day zero the time is taken off, for its fraction counts forwards from midnight there too.
Date joined(Date day, Date time) {
    return Date(day.serial() < 0 ? day.serial() - time.serial() : day.serial() + time.serial());
}

std::optional<Date> readDate(const QString& s) {
    Reader reader(s);
    reader.takeBlanks();
    Figure figure = reader.takeFigure();
    std::optional<Date> day;
    if (reader.next() != u':') {
        day = readDay(figure, reader);
        if (!day) return std::nullopt;
        const bool apart = reader.takeBlanks();
        if (reader.atEnd()) return day;
        if (!apart) return std::nullopt;
        figure = reader.takeFigure();
    }
    const std::optional<Date> time = readTime(figure, reader);
    if (!time) return std::nullopt;
    reader.takeBlanks();
    if (!reader.atEnd()) return std::nullopt;
    return day ? joined(*day, *time) : time;
}

QString timeText(const Date::Parts& p) {
    std::array<QChar, 8> buffer;
    QChar* out = p.hour < 10 ? writeDigits<1>(buffer.data(), p.hour) : writeDigits<2>(buffer.data(), p.hour);
    *out++ = u':';
    out = writeDigits<2>(out, p.minute);
    *out++ = u':';
    out = writeDigits<2>(out, p.second);
    return QString(buffer.data(), out - buffer.data());
}

QString padded(int value, int width) {
    return QString::number(value).rightJustified(width, u'0');
}

}  // namespace

QString CStr(Date d) {
    const Date::Parts p = d.parts();
    const bool hasTime = p.hour != 0 || p.minute != 0 || p.second != 0;
    if (d.dayPart().serial() == 0) return timeText(p);
    QString text(10, Qt::Uninitialized);
    QChar* out = writeDigits<2>(text.data(), p.day);
    *out++ = u'/';
    out = writeDigits<2>(out, p.month);
    *out++ = u'/';
    writeDigits<4>(out, p.year);
    return hasTime ? text + u' ' + timeText(p) : text;
}

Date CDate(const QString& s) {
    const std::optional<Date> date = readDate(s);
    if (!date) throw RuntimeError(error::TypeMismatch);
    return *date;
}

bool IsDate(const QString& s) {
    return readDate(s).has_value();
}

QString Format(Date d, const QString& pattern) {
    const Date::Parts p = d.parts();
    const QString lower = LCase(pattern);
    QString result;
    bool behindHour = false;
    for (qsizetype i = 0; i < pattern.size();) {
        const QStringView rest = QStringView(lower).sliced(i);
        if (rest.startsWith(u"yyyy")) {
            result += padded(p.year, 4);
            i += 4;
            continue;
        }
        if (rest.startsWith(u"dd")) {
            result += padded(p.day, 2);
        } else if (rest.startsWith(u"mm")) {
            result += padded(behindHour ? p.minute : p.month, 2);
            behindHour = false;
        } else if (rest.startsWith(u"yy")) {
            result += padded(p.year % 100, 2);
        } else if (rest.startsWith(u"hh")) {
            result += padded(p.hour, 2);
            behindHour = true;
        } else if (rest.startsWith(u"ss")) {
            result += padded(p.second, 2);
        } else {
            result += pattern[i];
            i += 1;
            continue;
        }
        i += 2;
    }
    return result;
}

}  // namespace tarmel::basic
