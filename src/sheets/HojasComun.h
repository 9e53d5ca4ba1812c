#pragma once

#include <QString>

#include "platform/basic/Date.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

/// What the field-sheet screen and the capture screen share: key filters, list rows and their sort, the
/// status text.
namespace tarmel {

/// Width of the first column of both lists, filled up with blanks so that numbers sort as text.
inline constexpr int kAnchoRelleno = 7;
[[nodiscard]] QString Rellenar(const QString& texto);

/// The days from the first of January 1900: the hidden column by which a list sorts its dates.
[[nodiscard]] QString DiasDesde1900(basic::Date fecha);

/// The code in a combo's text; empty when nothing is chosen.
[[nodiscard]] QString CodigoDeCombo(const forms::ComboBox& combo);
/// A control's value as a list row shows it: text, code, caption, date or time.
[[nodiscard]] QString ValorParaLista(const forms::Control& control);

/// A click on a head: sorts by that column, by the hidden one beside it where the head speaks of a "Fecha".
/// Each click in the program turns the direction round, whatever list and column it meets.
void OrdenarPorColumna(forms::ListView& lista, int columnaDesde1);

/// Enter moves on like Tab; lists and buttons keep their own meaning of it.
void EnterComoTab(forms::Form& formulario, int& caracter);
/// Before a command key acts: the field in which it was pressed ends its entry, as it would before a click.
void TerminarCampoActivo(const forms::Form& formulario);

/// Refuses ";" and "|", which separate the fields of the exchange files, and says so.
void RechazarSeparadores(int& tecla);
/// Lets through what stands on a ring: digits, letters and Backspace.
void SoloTeclasDeAnilla(int& tecla);
/// Lets through a number with one decimal comma; "." becomes ",".
void TeclaDeMedida(const forms::TextBox& medida, int& tecla);
/// Gives a measure without decimals its ",0".
void CompletarMedida(forms::TextBox& medida, int decimales);

/// Writes to the "Messages" panel of the main window, if it is there.
void MostrarEstado(const QString& texto);

}  // namespace tarmel
