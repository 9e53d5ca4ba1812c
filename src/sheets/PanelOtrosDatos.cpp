#include "sheets/PanelOtrosDatos.h"

#include "sheets/HojasComun.h"

namespace tarmel {

using namespace Qt::StringLiterals;

PanelOtrosDatos::PanelOtrosDatos(forms::Form& formulario)
    : PicOtrosDatos(formulario, u"PicOtrosDatos"_s),
      frmOtrosDatos(formulario, u"frmOtrosDatos"_s, u"Otros Datos"_s),
      TxtObservaciones(formulario, u"TxtObservaciones"_s),
      txtDato1(formulario, u"txtDato1"_s),
      txtDato2(formulario, u"txtDato2"_s),
      txtDato3(formulario, u"txtDato3"_s),
      txtDato4(formulario, u"txtDato4"_s),
      txtDato5(formulario, u"txtDato5"_s),
      txtDato6(formulario, u"txtDato6"_s),
      cmdGrabarOtrosDatos(formulario, u"cmdGrabarOtrosDatos"_s, u"Grabar"_s),
      cmdCancelarOtrosDatos(formulario, u"cmdCancelarOtrosDatos"_s, u"Cancelar"_s) {
    PicOtrosDatos.Holds({&frmOtrosDatos});
    frmOtrosDatos.Holds({&TxtObservaciones, &txtDato1, &txtDato2, &txtDato3, &txtDato4, &txtDato5, &txtDato6,
                         &cmdGrabarOtrosDatos, &cmdCancelarOtrosDatos});
    TxtObservaciones.SetAccessibleName(u"Observaciones"_s);
    int numero = 0;
    for (forms::TextBox* texto : textos()) {
        texto->KeyPress = RechazarSeparadores;
        if (texto != &TxtObservaciones) texto->SetAccessibleName(u"Dato %1"_s.arg(++numero));
    }
    Ocultar();
}

void PanelOtrosDatos::Conectar(forms::CommandButton& cmdOtrosDatos) {
    cmdOtrosDatos.Click = [this] { Mostrar(); };
    cmdGrabarOtrosDatos.Click = [this, &cmdOtrosDatos] {
        Ocultar();
        cmdOtrosDatos.SetFocus();
    };
    cmdCancelarOtrosDatos.Click = [this, &cmdOtrosDatos] {
        Ocultar();
        Vaciar();
        cmdOtrosDatos.SetFocus();
    };
}

void PanelOtrosDatos::Mostrar() {
    PicOtrosDatos.SetVisible(true);
    PicOtrosDatos.BringToFront();
    TxtObservaciones.SetFocus();
}

void PanelOtrosDatos::Ocultar() {
    PicOtrosDatos.SetVisible(false);
}

void PanelOtrosDatos::Vaciar() {
    for (forms::TextBox* texto : textos())
        texto->SetText({});
}

std::array<forms::TextBox*, 7> PanelOtrosDatos::textos() {
    return {&TxtObservaciones, &txtDato1, &txtDato2, &txtDato3, &txtDato4, &txtDato5, &txtDato6};
}

}  // namespace tarmel
