#pragma once

#include <QString>

#include "platform/forms/Form.h"

namespace tarmel {

/// The program's entry: refuses a second copy, shows the splash (whose load starts everything up), then the
/// identification. Returns when the first screen stands; the program goes on in the screens' events.
void Main();

/// The executable's folder, without a separator at its end.
QString ObtenerRutaAplicacion();
/// A file or folder of the program's own folder.
QString RutaEnAplicacion(const QString& nombre);
/// Today as YYMMDD.
QString FechaActualAAMMDD();
/// The form in the middle of the screen; the view does it.
void CentrarFormulario(forms::Form& formulario);
/// Opens gConexion on the data source "AccessDSN". A failure is a RuntimeError.
void AbrirConexion();
/// Closes the connection and ends the program at once.
void CerrarAplicacion();

/// What is going on, in the status bar of the main window; the empty text clears it. Without a main window,
/// as in a test of one screen, nothing happens.
void MostrarMensajeEstado(const QString& mensaje);

/// Enter moves on as Tab does: the key is swallowed and the Tab key sent. True when it was Enter. (A button
/// or a list keeps Enter for itself: the form does not see it.)
bool EnterComoTab(forms::Form& formulario, int& caracter);

/// The hourglass for as long as it lives.
class RelojDeArena {
 public:
    RelojDeArena();
    ~RelojDeArena();
    RelojDeArena(const RelojDeArena&) = delete;
    RelojDeArena& operator=(const RelojDeArena&) = delete;
};

}  // namespace tarmel
