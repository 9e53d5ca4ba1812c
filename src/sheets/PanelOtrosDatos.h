#pragma once

#include <array>

#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

namespace tarmel {

/// The panel "Otros Datos" of a screen: remarks and six free data, over the other layers. What is typed stays
/// in the controls and goes to the database with the screen's record.
class PanelOtrosDatos {
 public:
    explicit PanelOtrosDatos(forms::Form& formulario);
    /// The screen's button that opens the panel; the focus comes back to it.
    void Conectar(forms::CommandButton& cmdOtrosDatos);

    void Mostrar();
    void Ocultar();
    /// Empties the remarks and the free data.
    void Vaciar();

    forms::Frame PicOtrosDatos;
    forms::Frame frmOtrosDatos;
    forms::TextBox TxtObservaciones;
    forms::TextBox txtDato1, txtDato2, txtDato3, txtDato4, txtDato5, txtDato6;
    forms::CommandButton cmdGrabarOtrosDatos, cmdCancelarOtrosDatos;

 private:
    [[nodiscard]] std::array<forms::TextBox*, 7> textos();
};

}  // namespace tarmel
