#include <algorithm>

#include "core/DefinicionesGlobales.h"
#include "engine/FuncionesCombo.h"
#include "engine/clsClassMantenimientos.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"

/// The side of clsClassMantenimientos that talks to the controls of its screen.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

using forms::Kind;
using Campo = clsClassMantenimientos::Campo;

template <typename Clase>
Clase& como(forms::Control& control) {
    return static_cast<Clase&>(control);
}

bool tieneFormatoPropio(const forms::DatePicker& selector) {
    return selector.Format() == forms::DatePicker::Style::Custom;
}

QString textoDeCombo(const forms::ComboBox& combo, const Campo& campo) {
    const QString texto = combo.Text();
    if (texto.isEmpty()) return QString();  // nothing is selected: the optional combos may stay so
    if (!campo.CampoRelacionado.isEmpty()) return ExtraerParteCombo(kSeparadorCombo, texto, true);
    if (campo.ComboSimple) return basic::Trim(texto);
    return ExtraerParteCombo(kSeparadorCombo, texto, false);
}

QString textoDeSelector(const forms::DatePicker& selector) {
    return tieneFormatoPropio(selector) ? basic::Format(selector.Value(), selector.CustomFormat())
                                        : basic::CStr(selector.Value());
}

/// A time picker shows midnight then, since today has no time of day.
void ponerHoy(forms::DatePicker& selector) {
    const basic::Date hoy = basic::Date::today();
    if (tieneFormatoPropio(selector)) {
        selector.SetValue(basic::Format(hoy, selector.CustomFormat()));
    } else {
        selector.SetValue(hoy);
    }
}

void mostrarFecha(forms::DatePicker& selector, const QString& valor) {
    if (valor.isEmpty()) {
        ponerHoy(selector);  // a picker cannot be blank; a row without the date must still open
    } else if (tieneFormatoPropio(selector)) {
        selector.SetValue(basic::Format(basic::CDate(valor), selector.CustomFormat()));
    } else {
        selector.SetValue(valor);
    }
}

}  // namespace

void clsClassMantenimientos::ObtenerDatosControles() {
    for (int i = 0; i < UBound(); ++i) {
        Campo& destino = campo(i);
        if (destino.ControlRelacionado == nullptr) continue;
        forms::Control& control = *destino.ControlRelacionado;
        switch (control.kind()) {
            case Kind::TextBox:
                destino.ValorCampo = como<forms::TextBox>(control).Text();
                break;
            case Kind::ComboBox:
            case Kind::DataCombo:
                destino.ValorCampo = textoDeCombo(como<forms::ComboBox>(control), destino);
                break;
            case Kind::DatePicker:
                destino.ValorCampo = textoDeSelector(como<forms::DatePicker>(control));
                break;
            case Kind::Label:
                destino.ValorCampo = como<forms::Label>(control).Caption();
                break;
            default:
                break;
        }
    }
}

void clsClassMantenimientos::MostrarDatosControles() {
    for (int i = 0; i < UBound(); ++i) {
        // By value: the controls' events may change the descriptors.
        const Campo origen = campo(i);
        if (origen.ControlRelacionado == nullptr) continue;
        forms::Control& control = *origen.ControlRelacionado;
        const auto valor = [&] {
            return origen.CampoRelacionado.isEmpty() ? origen.ValorCampo : ObtenerPrimerCampo(i, origen);
        };
        switch (control.kind()) {
            case Kind::TextBox:
                como<forms::TextBox>(control).SetText(origen.ValorCampo);
                break;
            case Kind::ComboBox:
                SeleccionarEnCombo(como<forms::ComboBox>(control), valor());
                break;
            case Kind::DataCombo:
                SeleccionarEnDataCombo(como<forms::DataCombo>(control), valor());
                break;
            case Kind::DatePicker:
                mostrarFecha(como<forms::DatePicker>(control), origen.ValorCampo);
                break;
            case Kind::Label:
                if (!origen.ValorCampo.isEmpty() || !mostradoAntes(i)) {
                    como<forms::Label>(control).SetCaption(origen.ValorCampo);
                }
                break;
            default:
                break;
        }
    }
}

/// A label may stand for two columns of which the later is filled in on newer rows only.
bool clsClassMantenimientos::mostradoAntes(int indice) const {
    const auto anteriores = std::span(campos_).first(static_cast<size_t>(indice));
    return std::ranges::any_of(anteriores, [this, indice](const Campo& anterior) {
        return anterior.ControlRelacionado == campo(indice).ControlRelacionado &&
               !anterior.ValorCampo.isEmpty();
    });
}

QString clsClassMantenimientos::ObtenerPrimerCampo(int /*indice*/, const Campo& campo) const {
    const bool esNumero = campo.TipoDatos == u"Numerico"_s;
    const QString condicion = campo.NombreCampo + (esNumero ? u"=%1"_s : u"='%1'"_s).arg(campo.ValorCampo);
    const QString expresion = campo.CampoRelacionado2.isEmpty()
                                  ? u"rtrim("_s + campo.CampoRelacionado + u')'
                                  : u"(rtrim("_s + campo.CampoRelacionado + u") & '     ' & rtrim("_s +
                                        campo.CampoRelacionado2 + u"))"_s;
    ado::Recordset fila;
    fila.Open(u"SELECT "_s + expresion + u" as devolver FROM "_s + campo.NombreTablaCampo + u" WHERE "_s +
                  condicion,
              gConexion);
    return fila.Value(u"devolver"_s).toText();
}

void clsClassMantenimientos::BorrarDatosControles() {
    for (int i = 0; i < UBound(); ++i) {
        forms::Control* const control = campo(i).ControlRelacionado;
        if (control == nullptr) continue;
        switch (control->kind()) {
            case Kind::TextBox:
                como<forms::TextBox>(*control).SetText(QString());
                break;
            case Kind::ComboBox:
                como<forms::ComboBox>(*control).SetListIndex(-1);
                break;
            case Kind::DataCombo:
                como<forms::DataCombo>(*control).SetText(QString());
                break;
            case Kind::DatePicker:
                ponerHoy(como<forms::DatePicker>(*control));
                break;
            case Kind::Label:
                como<forms::Label>(*control).SetCaption(QString());
                break;
            default:
                break;
        }
    }
}

void clsClassMantenimientos::EstablecerLongitudControles() {
    for (int i = 0; i < UBound(); ++i) {
        const Campo& descrito = campo(i);
        const bool esTexto =
            descrito.ControlRelacionado && descrito.ControlRelacionado->kind() == Kind::TextBox;
        if (esTexto) como<forms::TextBox>(*descrito.ControlRelacionado).SetMaxLength(descrito.Tamaño);
    }
}

bool clsClassMantenimientos::ComprobarDatos() {
    bool completo = true;
    for (int i = 0; i <= UBound(); ++i) {
        const Campo& descrito = campo(i);
        if (!descrito.Obligatorio || !descrito.ValorCampo.isEmpty()) continue;
        forms::MsgBox(u"El campo "_s + descrito.NombreCampo + u" es obligatorio."_s, forms::box::Exclamation,
                      u"Faltan datos"_s);
        completo = false;
    }
    return completo;
}

void clsClassMantenimientos::SoloNumeros() {
    for (int i = 0; i < UBound(); ++i) {
        const Campo& descrito = campo(i);
        const bool esTexto =
            descrito.ControlRelacionado && descrito.ControlRelacionado->kind() == Kind::TextBox;
        const bool esNumero = descrito.TipoDatos == u"Numerico"_s;
        if (esTexto && esNumero) como<forms::TextBox>(*descrito.ControlRelacionado).SetDigitsOnly(true);
    }
}

void clsClassMantenimientos::ControlesEnabledDisable(bool activar) {
    for (forms::Control* control : controlesDelFormulario()) {
        const Kind clase = control->kind();
        if (clase == Kind::ComboBox || clase == Kind::DataCombo || clase == Kind::TextBox ||
            clase == Kind::DatePicker) {
            control->SetEnabled(activar);
        }
    }
}

void clsClassMantenimientos::HabilitarBotones() {
    for (forms::Control* control : controlesDelFormulario()) {
        if (control->kind() == Kind::CommandButton) control->SetEnabled(true);
    }
}

const std::vector<forms::Control*>& clsClassMantenimientos::controlesDelFormulario() const {
    if (formulario_ == nullptr) throw basic::RuntimeError(basic::error::ObjectNotSet);
    return formulario_->Controls();
}

}  // namespace tarmel
