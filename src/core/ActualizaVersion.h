#pragma once

#include <QString>

#include "platform/basic/RuntimeError.h"

namespace tarmel {

/// The one key of Tarmel.INI: any value but -1 and 0 asks for the upgrade of the database.
inline const QString kSeccionIni = QStringLiteral("Tarmel");
inline const QString kClaveActualizacion = QStringLiteral("Actualización");

/// An integer of Tarmel.INI; -1 when file, section or key is missing, 0 for a text that is no number.
double LeerIniEntero(const QString& seccion, const QString& clave);
/// The file comes to be when it is not there; a failure is ignored.
void EscribirIni(const QString& seccion, const QString& clave, const QString& valor);

/// Removes the *.TMP files of the program's folder; errors are ignored.
void BorrarTemporales();

/// Does the INI file ask for the upgrade?
[[nodiscard]] bool ActualizacionPedida();
/// Brings the open database from the former version to the present one, when the INI file asks for it, and
/// takes the request back. There is one run of statements, without a transaction: what has run stays, and a
/// run that failed is not made good by a second one. A failure says so and ends the program; so the result
/// is always true.
bool ActualizarVersion();
/// Is it a database of the former version, with its codes of the sexes? Raises 3021 when it has none.
[[nodiscard]] bool NecesitaActualizar();
/// Gives every sheet the code of the ringer or of the group that its owner's code is.
void RellenarAnilladorGrupo();
/// Says the error and ends the program at once; returns only when the error's number is 0.
void MostrarErrorActualizacion(const basic::RuntimeError& error);

}  // namespace tarmel
