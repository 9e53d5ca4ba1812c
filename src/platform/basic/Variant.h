#pragma once

#include <QString>
#include <variant>

#include "platform/basic/Date.h"
#include "platform/basic/RuntimeError.h"

namespace tarmel::basic {

struct Empty {
    friend bool operator==(Empty, Empty) = default;
};
struct Null {
    friend bool operator==(Null, Null) = default;
};

/// A value of any type, as the language's runtime passes it: nothing yet, Null, yes/no, whole number, number,
/// date, text.
class Variant {
 public:
    Variant() = default;
    Variant(Null) : value_(Null{}) {}
    Variant(bool v) : value_(v) {}
    Variant(int v) : value_(static_cast<qint64>(v)) {}
    Variant(qint64 v) : value_(v) {}
    Variant(double v) : value_(v) {}
    Variant(Date v) : value_(v) {}
    Variant(QString v) : value_(std::move(v)) {}
    Variant(const char16_t* v) : value_(QString::fromUtf16(v)) {}
    template <typename T>
    Variant(const T*) = delete;  // a pointer is no yes/no

    [[nodiscard]] bool isEmpty() const { return std::holds_alternative<Empty>(value_); }
    [[nodiscard]] bool isNull() const { return std::holds_alternative<Null>(value_); }
    [[nodiscard]] bool isText() const { return std::holds_alternative<QString>(value_); }
    [[nodiscard]] bool isBool() const { return std::holds_alternative<bool>(value_); }
    [[nodiscard]] bool isWhole() const { return std::holds_alternative<qint64>(value_); }
    [[nodiscard]] bool isDouble() const { return std::holds_alternative<double>(value_); }
    [[nodiscard]] bool isDate() const { return std::holds_alternative<Date>(value_); }
    /// A whole number, number, date or yes/no.
    [[nodiscard]] bool isNumber() const { return isBool() || isWhole() || isDouble() || isDate(); }

    /// Text by the runtime's rules for Spanish settings; Null raises 94, Empty is "".
    [[nodiscard]] QString toText() const;
    /// The text that joining with & gives: Null is "".
    [[nodiscard]] QString joined() const { return isNull() ? QString() : toText(); }
    /// 16-bit, 32-bit and floating numbers: halves round to even, out of range raises 6, no number 13, Null
    /// 94, Empty is 0.
    [[nodiscard]] qint16 toInteger() const;
    [[nodiscard]] qint32 toLong() const;
    [[nodiscard]] double toDouble() const;
    [[nodiscard]] bool toBool() const;
    [[nodiscard]] Date toDate() const;

    [[nodiscard]] const auto& raw() const { return value_; }

    /// Exactly the same type and value; not the language's "=", which is tests().
    friend bool operator==(const Variant&, const Variant&) = default;

 private:
    std::variant<Empty, Null, bool, qint64, double, Date, QString> value_;
};

/// The language's comparison of two Variants: Null with anything is no true answer (all three are false); a
/// number is always less than a text and never equal to it; texts are compared by character.
[[nodiscard]] bool testsEqual(const Variant& a, const Variant& b);
[[nodiscard]] bool testsLess(const Variant& a, const Variant& b);
/// "differs": false when either is Null.
[[nodiscard]] bool testsDifferent(const Variant& a, const Variant& b);
/// A Variant against a typed Boolean: a text is converted ("Verdadero", "True", "-1", "1" are True, no such
/// text raises 13); a number is True as -1 only.
[[nodiscard]] bool testsTrue(const Variant& v);

}  // namespace tarmel::basic
