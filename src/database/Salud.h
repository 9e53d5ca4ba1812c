#pragma once

#include <QString>
#include <functional>

namespace tarmel {

/// What goes on, for whoever waits; called often enough to paint by it.
using Avance = std::function<void(const QString& mensaje)>;

/// Whether a database may be opened, looked into before anything is written to it: a glance always, a whole
/// check when the program that had it open before did not close it. Empty when nothing is against it;
/// otherwise what its user has to know, with the newest copy that is good. A database that is only out of
/// reach (locked, read-only) is left to the opening.
[[nodiscard]] QString examinarBase(const QString& base, const Avance& avance);

}  // namespace tarmel
