#pragma once

#include <QString>

#include "platform/forms/Form.h"

/// What the main window and the store offer and is not built yet. A later piece of work takes its names out
/// of the list, and the command works.
namespace tarmel {

/// True for the name of a screen or a command of the list, after saying so in a box.
bool avisarSiPendiente(const QString& nombre);

/// Shows a screen by its name; one that is pending shows the box instead. True when the screen was shown.
bool mostrarPantalla(const QString& nombre, forms::Modality modo = forms::Modality::Modeless);

}  // namespace tarmel
