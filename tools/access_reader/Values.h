#pragma once

#include <optional>
#include <string>

#include "Rows.h"

namespace access_reader {

/// A whole number of two or four bytes; nothing when the field holds none.
[[nodiscard]] std::optional<long> wholeNumber(const Field& field);
/// Text of a short text column; nothing when it is damaged.
[[nodiscard]] std::optional<std::string> shortText(const Field& field);

/// Of an exact decimal column.
[[nodiscard]] int digits(const MdbColumn& column);
[[nodiscard]] int decimalPlaces(const MdbColumn& column);

/// The name of a column's type on the stream; null for one that cannot be read.
[[nodiscard]] const char* typeName(const MdbColumn& column);
/// Adds a field of a row as the stream tells it: the sign of its kind and the value, exact.
void appendValue(std::string& line, MdbHandle* file, const Field& field);

}  // namespace access_reader
