#pragma once

#include <QString>
#include <compare>

namespace tarmel::basic {

/// A moment as the platform counts it: days since 1899-12-30, the time of day as the fraction, to the second.
/// Before day zero the fraction still counts forwards from midnight, as in the database's files.
class Date {
 public:
    constexpr Date() = default;
    constexpr explicit Date(double serial) : serial_(serial) {}
    /// RuntimeError 5 when the parts name no day between the years 100 and 9999.
    static Date of(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
    static Date timeOfDay(int hour, int minute, int second = 0) {
        return of(1899, 12, 30, hour, minute, second);
    }
    static Date today();
    static Date now();

    struct Parts {
        int year, month, day, hour, minute, second;
    };

    [[nodiscard]] constexpr double serial() const { return serial_; }
    /// All parts at once, cheaper than one by one.
    [[nodiscard]] Parts parts() const;
    [[nodiscard]] int year() const;
    [[nodiscard]] int month() const;
    [[nodiscard]] int day() const;
    [[nodiscard]] int hour() const;
    [[nodiscard]] int minute() const;
    [[nodiscard]] int second() const;
    /// The same day at midnight; the same time on day zero.
    [[nodiscard]] Date dayPart() const;
    [[nodiscard]] Date timePart() const;

    /// "yyyy-mm-dd hh:mm:ss", the form in the database file.
    [[nodiscard]] QString iso() const;
    /// Reads the form of iso(), exactly; RuntimeError 13 otherwise.
    static Date fromIso(QStringView text);

    /// Compared to the second.
    friend bool operator==(Date a, Date b) { return a.seconds() == b.seconds(); }
    friend auto operator<=>(Date a, Date b) { return a.seconds() <=> b.seconds(); }

 private:
    [[nodiscard]] qint64 seconds() const;
    double serial_ = 0;
};

}  // namespace tarmel::basic
