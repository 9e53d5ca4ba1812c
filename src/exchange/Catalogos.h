#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "exchange/Archivador.h"

/// The catalogues of places and species: an archive with one text file, in the code page and with the line
/// ends of the exchange files.
namespace tarmel {

/// Starts unpacking beside the archive the one text file that bears its name. Does not wait.
[[nodiscard]] Archivador DescomprimirCatalogo(const QString& Carpeta, const QString& Fichero);

/// The whole text of a file. Errors: 53, 75, 76; 321 for what is no text or beyond the bounds.
[[nodiscard]] QString LeerFichero(const QString& Ruta);
/// Its lines as fields. Empty lines are left out, but for the first, which is the header.
[[nodiscard]] std::vector<QStringList> LeerTablaTexto(const QString& Ruta, QChar Separador);

}  // namespace tarmel
