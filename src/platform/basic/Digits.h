#pragma once

#include <QChar>

namespace tarmel::basic {

/// Writes `value` with exactly `Width` digits and gives the place behind them. Dates are written per database
/// cell.
template <int Width>
QChar* writeDigits(QChar* out, int value) {
    for (int i = Width - 1; i >= 0; --i) {
        out[i] = QChar(u'0' + value % 10);
        value /= 10;
    }
    return out + Width;
}

[[nodiscard]] constexpr bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

}  // namespace tarmel::basic
