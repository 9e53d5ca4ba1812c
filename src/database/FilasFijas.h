#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// Rows that the program itself writes when it brings a former database up to date. They are the files from
/// which the prepared database is made, carried in the executable.
namespace tarmel {

/// The rows of ANIDVI, ICASEX, MOVIMIENTOS or TIPOANILLAS in their order, with all their columns as text.
[[nodiscard]] std::vector<std::vector<QString>> filasFijas(const QString& tabla);

/// Codes of the species that the capture screen no longer offers.
[[nodiscard]] QStringList especiesApagadas();

}  // namespace tarmel
