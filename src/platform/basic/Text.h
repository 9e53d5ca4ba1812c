#pragma once

#include <QByteArray>
#include <QString>

#include "platform/basic/Date.h"
#include "platform/basic/Variant.h"

/// The runtime's text functions and conversions, always with Spanish settings: decimal comma, "." between
/// groups, day before month. The machine's locale never plays a part. Positions count characters from 1.
namespace tarmel::basic {

/// n < 0 raises 5; n past the end gives all.
[[nodiscard]] QString Left(const QString& s, int n);
[[nodiscard]] QString Right(const QString& s, int n);
/// position < 1 or length < 0 raises 5; past the end gives "".
[[nodiscard]] QString Mid(const QString& s, int position);
[[nodiscard]] QString Mid(const QString& s, int position, int length);
/// Binary comparison; 0 when absent.
[[nodiscard]] int InStr(const QString& s, const QString& part);
[[nodiscard]] int InStr(int start, const QString& s, const QString& part);
/// Position of the last occurrence, 0 when absent.
[[nodiscard]] int InStrRev(const QString& s, const QString& part);
/// Cut blanks (32) only.
[[nodiscard]] QString Trim(const QString& s);
[[nodiscard]] QString LTrim(const QString& s);
[[nodiscard]] QString RTrim(const QString& s);
[[nodiscard]] QString Space(int n);
/// Capitals and small letters, letter by letter: the length stays.
[[nodiscard]] QString UCase(const QString& s);
[[nodiscard]] QString LCase(const QString& s);

/// The longest leading number, "." alone as decimal sign, blanks skipped; 0 when there is none. Never fails.
[[nodiscard]] double Val(const QString& s);
/// What toDouble() of the text would accept.
[[nodiscard]] bool IsNumeric(const QString& s);
[[nodiscard]] bool IsNumeric(const Variant& v);

/// Text to numbers: see Variant::toLong and its like. "" or anything that is no number raises 13.
[[nodiscard]] qint16 CInt(const QString& s);
[[nodiscard]] qint32 CLng(const QString& s);
[[nodiscard]] double CDbl(const QString& s);
[[nodiscard]] qint16 CInt(double d);
[[nodiscard]] qint32 CLng(double d);
/// Shortest form with at most 15 significant digits, decimal comma, no groups.
[[nodiscard]] QString CStr(double d);
[[nodiscard]] QString CStr(qint64 n);
[[nodiscard]] inline QString CStr(int n) {
    return CStr(static_cast<qint64>(n));
}
/// "dd/mm/yyyy", with a time part " h:mm:ss" behind it; a time alone "h:mm:ss".
[[nodiscard]] QString CStr(Date d);
/// "Verdadero", "Falso".
[[nodiscard]] QString CStr(bool b);
/// Day first, month first where that is impossible, "yyyy-mm-dd", optional time, a time alone; anything else
/// raises 13.
[[nodiscard]] Date CDate(const QString& s);
[[nodiscard]] bool IsDate(const QString& s);
/// dd, mm/MM, yyyy, yy, HH/hh, minutes as mm behind an hour, ss; everything else stands for itself.
[[nodiscard]] QString Format(Date d, const QString& pattern);
/// Rounds a half to the even neighbour.
[[nodiscard]] double roundHalfEven(double d);

/// The ANSI code page of Western Europe (1252). Characters that it lacks become "?".
[[nodiscard]] QByteArray toAnsi(const QString& s);
[[nodiscard]] QString fromAnsi(const QByteArray& bytes);

}  // namespace tarmel::basic
