#pragma once

#include <QString>

#include "platform/basic/Variant.h"

/// What is read off a metal ring, in the forms that the database stores and compares. The knowledge of the
/// ring models lies in the order of the checks; there is no table of models.
namespace tarmel {

/// The eight-character form that identifies a ring everywhere, padded with ".": "AB1234" gives "AB..1234".
/// Empty when the ring is refused. `anilla` is overwritten with the padded text.
QString NormalizarAnilla(QString& anilla);

/// Splits the normalised form into model, inscription and number. On failure shows its message and sets
/// `error`; the caller starts with empty texts, 0 and false.
void DescomponerAnilla(const QString& anilla, QString& modelo, QString& inscripcion, qint32& numero,
                       bool& error);

/// The ring number that follows a typed one, in its shape: "AB0999" gives "AB1000".
QString SiguienteAnilla(QString& anilla);

/// The next free sheet number of a ringer: the prefix and six digits. After 999999 comes 000000.
basic::Variant SiguienteNumHoja(const basic::Variant& codAnillador, const basic::Variant& prefijo);

}  // namespace tarmel
