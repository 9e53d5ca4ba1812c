#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// Composes the condition (gFiltroAnillas) for the list of rings: ringer or group, place, year.
class frm18_SeleccionAnillas : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm18_SeleccionAnillas");
    frm18_SeleccionAnillas();

    forms::Frame grpExportar{*this, QStringLiteral("grpExportar"), QStringLiteral("Selección de anillas")};
    forms::CheckBox optAnillador{*this, QStringLiteral("optAnillador"), QStringLiteral("Anillador")};
    forms::ComboBox cboAnillador{*this, QStringLiteral("cboAnillador")};
    forms::CheckBox optLocalidad{*this, QStringLiteral("optLocalidad"), QStringLiteral("Localidad")};
    forms::ComboBox cboLocalidad{*this, QStringLiteral("cboLocalidad")};
    forms::CheckBox optAño{*this, QStringLiteral("optAño"), QStringLiteral("Año")};
    forms::ComboBox cboAño{*this, QStringLiteral("cboAño")};
    forms::CommandButton cmdMostrar{*this, QStringLiteral("cmdMostrar"), QStringLiteral("&Mostrar")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir")};

    void cmdMostrar_Click();
    void cmdSalir_Click();

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;

 private:
    [[nodiscard]] QString componerFiltro() const;
};

}  // namespace tarmel
