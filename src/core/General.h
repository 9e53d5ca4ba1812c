#pragma once

#include <QString>

#include "platform/forms/Form.h"

namespace tarmel {

/// The program's entry: refuses a second copy, shows the splash (whose load starts everything up), then the
/// identification. Returns when the first screen stands; the program goes on in the screens' events.
void Main();

/// The executable's folder, without a separator at its end.
QString ObtenerRutaAplicacion();
/// An integer of Tarmel.INI; -1 when file, section or key is missing.
double LeerIniEntero(const QString& seccion, const QString& clave);
void EscribirIni(const QString& seccion, const QString& clave, const QString& valor);
/// Today as YYMMDD.
QString FechaActualAAMMDD();
/// The form in the middle of the screen; the view does it.
void CentrarFormulario(forms::Form& formulario);
/// Makes the data source "AccessDSN"; on failure says so and ends the program.
void CrearDSN(const QString& ruta);
void AbrirConexion();
/// Removes the *.TMP files of the program's folder; errors are ignored.
void BorrarTemporales();

}  // namespace tarmel
