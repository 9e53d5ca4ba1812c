#pragma once

#include <QString>

/// INI files in the ANSI code page of Western Europe. Sections and keys are found without regard to case.
namespace tarmel::sys {

/// The number in front of the key's value, 0 where there is none; `missing` without the file, the section or
/// the key.
[[nodiscard]] int readInt(const QString& path, const QString& section, const QString& key, int missing);

/// Sets the key and makes file and section where they lack. All other lines stay byte for byte; the file is
/// replaced as a whole. False when it could not be written, or when a name or the value would break the line.
bool writeText(const QString& path, const QString& section, const QString& key, const QString& value);

}  // namespace tarmel::sys
