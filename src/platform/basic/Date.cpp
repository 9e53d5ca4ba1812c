#include "platform/basic/Date.h"

#include <QDateTime>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "platform/basic/Digits.h"
#include "platform/basic/RuntimeError.h"

namespace tarmel::basic {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr int secondsPerDay = 86400;
constexpr sys_days dayZero = std::chrono::December / 30 / 1899;
constexpr int firstDay = (sys_days(std::chrono::January / 1 / 100) - dayZero).count();
constexpr int lastDay = (sys_days(std::chrono::December / 31 / 9999) - dayZero).count();

struct DayAndSecond {
    int day;     // since day zero
    int second;  // since midnight
};

/// A serial outside the calendar, which arithmetic can give, counts as its nearest end.
DayAndSecond split(double serial) {
    if (std::isnan(serial)) return {0, 0};
    const double whole = std::trunc(serial);
    if (whole < firstDay) return {firstDay, 0};
    if (whole > lastDay) return {lastDay, secondsPerDay - 1};
    const int day = static_cast<int>(whole);
    const int second = static_cast<int>(std::lround(std::fabs(serial - whole) * secondsPerDay));
    if (second < secondsPerDay) return {day, second};
    return day == lastDay ? DayAndSecond{lastDay, secondsPerDay - 1} : DayAndSecond{day + 1, 0};
}

double join(int day, int second) {
    const double fraction = static_cast<double>(second) / secondsPerDay;
    return day < 0 ? day - fraction : day + fraction;
}

year_month_day calendar(int day) {
    return year_month_day(dayZero + std::chrono::days(day));
}

/// Nothing when the parts name no day of the calendar or no time of it.
bool makeSerial(const Date::Parts& p, double& serial) {
    const year_month_day date(std::chrono::year(p.year), std::chrono::month(static_cast<unsigned>(p.month)),
                              std::chrono::day(static_cast<unsigned>(p.day)));
    const bool inRange = p.year >= 100 && p.year <= 9999 && p.month >= 1 && p.month <= 12 && p.day >= 1 &&
                         p.day <= 31 && p.hour >= 0 && p.hour < 24 && p.minute >= 0 && p.minute < 60 &&
                         p.second >= 0 && p.second < 60;
    if (!inRange || !date.ok()) return false;
    const int day = (sys_days(date) - dayZero).count();
    serial = join(day, (p.hour * 60 + p.minute) * 60 + p.second);
    return true;
}

/// The number in `Width` digits at `place`, -1 when they are no digits.
template <int Width>
int digitsAt(QStringView text, int place) {
    int value = 0;
    for (int i = place; i < place + Width; ++i) {
        if (!isDigit(text[i])) return -1;
        value = value * 10 + (text[i].unicode() - u'0');
    }
    return value;
}

}  // namespace

Date Date::of(int year, int month, int day, int hour, int minute, int second) {
    double serial = 0;
    if (!makeSerial({year, month, day, hour, minute, second}, serial)) throw RuntimeError(error::InvalidCall);
    return Date(serial);
}

Date Date::today() {
    return now().dayPart();
}

Date Date::now() {
    const QDateTime moment = QDateTime::currentDateTime();
    const QDate d = moment.date();
    const QTime t = moment.time();
    return of(d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second());
}

Date::Parts Date::parts() const {
    const auto [day, second] = split(serial_);
    const year_month_day date = calendar(day);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            second / 3600,
            second / 60 % 60,
            second % 60};
}

int Date::year() const {
    return parts().year;
}
int Date::month() const {
    return parts().month;
}
int Date::day() const {
    return parts().day;
}
int Date::hour() const {
    return split(serial_).second / 3600;
}
int Date::minute() const {
    return split(serial_).second / 60 % 60;
}
int Date::second() const {
    return split(serial_).second % 60;
}

Date Date::dayPart() const {
    return Date(split(serial_).day);
}
Date Date::timePart() const {
    return Date(join(0, split(serial_).second));
}

QString Date::iso() const {
    const Parts p = parts();
    QString text(19, Qt::Uninitialized);
    QChar* out = writeDigits<4>(text.data(), p.year);
    *out++ = u'-';
    out = writeDigits<2>(out, p.month);
    *out++ = u'-';
    out = writeDigits<2>(out, p.day);
    *out++ = u' ';
    out = writeDigits<2>(out, p.hour);
    *out++ = u':';
    out = writeDigits<2>(out, p.minute);
    *out++ = u':';
    writeDigits<2>(out, p.second);
    return text;
}

Date Date::fromIso(QStringView text) {
    double serial = 0;
    const bool read = text.size() == 19 && text[4] == u'-' && text[7] == u'-' && text[10] == u' ' &&
                      text[13] == u':' && text[16] == u':' &&
                      makeSerial({digitsAt<4>(text, 0), digitsAt<2>(text, 5), digitsAt<2>(text, 8),
                                  digitsAt<2>(text, 11), digitsAt<2>(text, 14), digitsAt<2>(text, 17)},
                                 serial);
    if (!read) throw RuntimeError(error::TypeMismatch);
    return Date(serial);
}

qint64 Date::seconds() const {
    const auto [day, second] = split(serial_);
    return static_cast<qint64>(day) * secondsPerDay + second;
}

}  // namespace tarmel::basic
