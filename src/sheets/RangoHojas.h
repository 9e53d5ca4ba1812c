#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// What the two screens share that do one job on a range of field sheets and close: deletion and printing.
class RangoHojas : public forms::Form {
 public:
    forms::Label lblIni{*this, QStringLiteral("lblIni"), QStringLiteral("Nº Hoja Inicial")};
    forms::ComboBox cboIni{*this, QStringLiteral("cboIni")};
    forms::Label lblFin{*this, QStringLiteral("lblFin"), QStringLiteral("Nº Hoja Final")};
    forms::ComboBox cboFin{*this, QStringLiteral("cboFin")};
    forms::Label lblDescripcion{*this, QStringLiteral("lblDescripcion")};
    forms::CommandButton cmdAceptar{*this, QStringLiteral("cmdAceptar"), QStringLiteral("&Aceptar")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir")};

    void cmdSalir_Click();

 protected:
    RangoHojas(const QString& nombre, const QString& titulo, const QString& descripcion);

    void FormKeyPress(int& character) override;

    /// Fills both lists with the statement's `NumHoja` and `Clave`.
    void llenarHojas(const QString& sql);
    /// Puts the range into gHojaInicial and gHojaFinal: as chosen, or the lowest and highest number that
    /// there is, of the ringer alone if `soloPropias`. Null when there is none. False, and said in a box,
    /// when the first lies behind the last.
    [[nodiscard]] bool leerRango(bool soloPropias);
    [[nodiscard]] static bool hayRango();
};

}  // namespace tarmel
