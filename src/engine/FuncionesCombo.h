#pragma once

#include <QString>
#include <vector>

#include "platform/ado/Connection.h"
#include "platform/forms/Controls.h"

namespace tarmel {

/// Adds an item for each row: the code field alone when there is no name field, else code " .-. " name, both
/// trimmed. Unless `añadir`, the combo is cleared first. `campoItemData` names the field that becomes the
/// item's number.
void LlenarCombo(forms::ComboBox& combo, ado::Connection& conexion, const QString& sql,
                 const QString& campoCodigo, const QString& campoNombre, bool añadir = false,
                 const QString& campoItemData = QString());
/// The first item that begins with the text, without regard to case; none leaves no selection.
void SeleccionarEnCombo(forms::ComboBox& combo, const QString& texto);
/// Gives the combo the focus and chooses the item that begins with the text.
void SeleccionarEnDataCombo(forms::DataCombo& combo, const QString& texto);
/// Adds all items of `origen` to `destino`; both end without a selection.
void CopiarCombo(forms::ComboBox& origen, forms::ComboBox& destino);
/// The part of a combo's text in front of the separator (trimmed), or behind it. The separator is ".-."; in
/// front of it a text without it raises 5.
[[nodiscard]] QString ExtraerParteCombo(const QString& separador, const QString& texto, bool parteDerecha);
/// Binds a data combo to the rows of a statement: text field and bound field.
void EnlazarDataCombo(forms::DataCombo& combo, ado::Connection& conexion, const QString& sql,
                      const QString& campoLista, const QString& campoEnlazado);

inline const QString kSeparadorCombo = QStringLiteral(".-.");

}  // namespace tarmel
