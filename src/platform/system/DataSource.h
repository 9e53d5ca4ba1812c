#pragma once

#include <QString>
#include <optional>

/// Data sources by name. The desktop platform kept them in the registry for all programs; this program makes
/// its own anew at every start and is the only one to read it, so its memory is the place: nothing outside
/// the application folder is written, and copies in several folders do not take the name from each other.
namespace tarmel::sys {

/// Adds or replaces the source. False when its name, driver or path is empty.
bool configure(const QString& name, const QString& driver, const QString& path);

/// The file that the source stands for; its name is found without regard to case.
[[nodiscard]] std::optional<QString> dataSourcePath(const QString& name);

}  // namespace tarmel::sys
