#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// How many ringings and recoveries the database holds, in all and in one year. The year is counted when its
/// combo is left, and again on demand.
class frm14_ContadorRegistros : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm14_ContadorRegistros");
    frm14_ContadorRegistros();

    forms::Label lblEncabezado{*this, QStringLiteral("lblEncabezado"),
                               QStringLiteral("NÚMERO DE REGISTROS GUARDADOS EN LA BASE DE  DATOS")};

    forms::Frame Frame1{*this, QStringLiteral("Frame1"), QStringLiteral("TOTAL")};
    forms::Label lblAnillamientos{*this, QStringLiteral("lblAnillamientos")};
    forms::Label lblRecuperaciones{*this, QStringLiteral("lblRecuperaciones")};
    forms::Label lblTotal{*this, QStringLiteral("lblTotal")};

    forms::Frame Frame2{*this, QStringLiteral("Frame2"), QStringLiteral("AÑO")};
    forms::Label lblAño{*this, QStringLiteral("lblAño"), QStringLiteral("Año")};
    forms::ComboBox cboAño{*this, QStringLiteral("cboAño")};
    forms::CommandButton cmdAceptar{*this, QStringLiteral("cmdAceptar"), QStringLiteral("Calcular")};
    forms::Label lblAnillamientosAño{*this, QStringLiteral("lblAnillamientosAño")};
    forms::Label lblRecuperacionesAño{*this, QStringLiteral("lblRecuperacionesAño")};
    forms::Label lblTotalAño{*this, QStringLiteral("lblTotalAño")};

    forms::CommandButton cmdCancelar{*this, QStringLiteral("cmdCancelar"), QStringLiteral("Cancelar")};

    void cmdAceptar_Click();
    void cmdCancelar_Click();

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;

 private:
    void contarAño();
};

}  // namespace tarmel
