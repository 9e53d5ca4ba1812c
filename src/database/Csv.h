#pragma once

#include <QString>
#include <vector>

namespace tarmel {

/// Reads a UTF-8 file of comma-separated values with RFC 4180 quoting: the rows of the file in order, each
/// with its fields as text. The first row is the heading. A byte order mark and the kind of line end play no
/// part; a last line end leaves no row.
///
/// Raises 53 when the file is not there, 75 when it cannot be read, and 5 with the place in the description
/// when the text is no table: bytes that are no UTF-8, a quote that is not closed or stands inside an
/// unquoted field, text behind a closing quote, a row with more or fewer fields than the heading.
[[nodiscard]] std::vector<std::vector<QString>> leerCsv(const QString& path);

/// The same for a text that is already in memory; `name` stands for the file in error descriptions.
[[nodiscard]] std::vector<std::vector<QString>> analizarCsv(const QString& text, const QString& name);

}  // namespace tarmel
