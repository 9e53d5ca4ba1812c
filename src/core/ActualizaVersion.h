#pragma once

#include <QString>

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
/// Brings a database of the former version up to date when the INI file asks for it. False ends the program.
bool ActualizarVersion();

}  // namespace tarmel
