#include "core/DefinicionesGlobales.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Pantallas.h"
#include "sheets/Anillas.h"
#include "sheets/ColumnasCapturas.h"
#include "sheets/HojasComun.h"
#include "sheets/LugaresCaptura.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"

// The fields of a capture: what ties them to each other, and what goes on from one capture to the next.
namespace tarmel {

using namespace Qt::StringLiterals;
using forms::Tint;

namespace {

// Codes that the screen chooses by itself.
const QString kCentroPropio = u"ESI"_s;
const QString kMudaConMedidas = u"2"_s;
const QString kInfoAnillaNueva = u"2"_s;
const QString kInfoYaAnillada = u"4"_s;
const QString kSinTransporte = u"0"_s;
const QString kManipulacionNormal = u"N"_s;
const QString kCondicionHabitual = u"8"_s;
const QString kCircunstanciaHabitual = u"20"_s;
const QString kReservaDesconocida = u"9"_s;
const QString kMudaNinguna = u"0"_s;

/// A code that no list holds: chooses nothing.
const QString kNinguno = u"-1"_s;

}  // namespace

// --- Species

void frm07_DetallesHojasCampo::enlazarEspecies(const QString& condicion) {
    dbcboEspecie.SetText({});
    EnlazarDataCombo(
        dbcboEspecie, gConexion,
        u"SELECT rtrim(NombreEspecie)& ' .-. ' & CodigoEspecie as Especie ,IdEspecie FROM ANIBRD "_s +
            condicion + u"ORDER BY NombreEspecie"_s,
        u"Especie"_s, u"IdEspecie"_s);
}

void frm07_DetallesHojasCampo::optIbericas_Click() {
    enlazarEspecies(u"WHERE Iberica = 1 "_s);
}

void frm07_DetallesHojasCampo::optTodas_Click() {
    enlazarEspecies({});
}

void frm07_DetallesHojasCampo::dbcboEspecie_Change() {
    const QString especie = dbcboEspecie.Text();
    const QString idEspecie = dbcboEspecie.BoundText();
    // A stored capture may show a species that the list does not offer: its labels have come from the
    // capture. An emptied combo takes them along, so that no capture keeps the species of the one before
    // unseen.
    if (idEspecie.isEmpty() && !especie.isEmpty()) return;
    lblIdEspecie.SetCaption(idEspecie);
    lblCodEspecie.SetCaption(basic::Right(especie, captura::kCifrasEspecie));
}

// --- What ties the fields

void frm07_DetallesHojasCampo::cboTipoRegistro_Click() {
    if (cboTipoRegistro.ListIndex() == captura::kAnillamiento) tipoAnillamiento();
    if (cboTipoRegistro.ListIndex() == captura::kRecuperacion) tipoRecuperacion();
}

void frm07_DetallesHojasCampo::tipoAnillamiento() {
    if (gModificando) {
        SeleccionarEnCombo(cboInfoAnilla, kInfoAnillaNueva);
        return;
    }
    SeleccionarEnCombo(cboCentro, kCentroPropio);
    usarCondicion(false);
    SeleccionarEnCombo(cboInfoAnilla, kInfoAnillaNueva);
    txtNumAnilla.SetFocus();
    ckMantenerDato.SetVisible(false);
}

void frm07_DetallesHojasCampo::tipoRecuperacion() {
    if (gModificando) {
        SeleccionarEnCombo(cboInfoAnilla, kInfoYaAnillada);
        usarCondicion(true);
        return;
    }
    SeleccionarEnCombo(cboCentro, kCentroPropio);
    usarCondicion(true);
    txtNumAnilla.SetText({});
    lblTxtAnilla.SetCaption({});
    SeleccionarEnCombo(cboInfoAnilla, kInfoYaAnillada);
    SeleccionarEnCombo(cboTransporte, kSinTransporte);
    SeleccionarEnCombo(cboCondicion, kCondicionHabitual);
    SeleccionarEnCombo(cboCircunstancia, kCircunstanciaHabitual);
    dbcboEspecie.SetText({});
    SeleccionarEnCombo(cboEdad, kNinguno);
    SeleccionarEnCombo(cboSexo, kNinguno);
    ckMantenerDato.SetVisible(true);
}

/// Condition and circumstance tell how a ringed bird was met again: they belong to recoveries.
void frm07_DetallesHojasCampo::usarCondicion(bool usar) {
    for (forms::ComboBox* combo : {&cboCondicion, &cboCircunstancia}) {
        combo->SetEnabled(usar);
        combo->SetTint(usar ? Tint::Mandatory : Tint::Normal);
    }
    for (forms::Label* rotulo : {&lblCondicion, &lblCircunstancia})
        rotulo->SetTint(usar ? Tint::Normal : Tint::Greyed);
}

void frm07_DetallesHojasCampo::cboEdad_Click() {
    const bool pollo = cboEdad.ListIndex() == captura::kPollo;
    cboTamañoNidada.SetEnabled(pollo);
    if (!pollo) cboTamañoNidada.SetListIndex(-1);
}

void frm07_DetallesHojasCampo::cboInfoAnilla_Click() {
    const bool admite = cboInfoAnilla.ListIndex() == captura::kAdmiteSustituida;
    AnillaSustituida.SetEnabled(admite);
    if (!admite) AnillaSustituida.SetText({});
}

void frm07_DetallesHojasCampo::txtNumAnilla_LostFocus() {
    txtNumAnilla.SetText(basic::UCase(txtNumAnilla.Text()));
    QString anilla = txtNumAnilla.Text();
    lblTxtAnilla.SetCaption(NormalizarAnilla(anilla));
}

void frm07_DetallesHojasCampo::medida_LostFocus(forms::TextBox& medida, int decimales) {
    if (medida.Text().isEmpty()) return;
    CompletarMedida(medida, decimales);
    SeleccionarEnCombo(cboMuda, kMudaConMedidas);
}

/// Brood patch, fat and muscle: whoever looks at them looks at the moult too.
void frm07_DetallesHojasCampo::reserva_LostFocus(const forms::ComboBox& combo) {
    if (cboMuda.ListIndex() == captura::kMudaSinAnotar && combo.ListIndex() != captura::kReservaSinAnotar)
        SeleccionarEnCombo(cboMuda, kMudaConMedidas);
}

// --- A new capture

void frm07_DetallesHojasCampo::cmdNuevo_Click() {
    gModificando = false;
    if (gListaAnillas) {
        if (lstDetallesCabecerasHoja.Selected() < 0) return;
        lblIdCabecera.SetCaption(lstDetallesCabecerasHoja.SelectedText(captura::kIdCabecera));
        lblTxtNumHoja.SetCaption(lstDetallesCabecerasHoja.SelectedText(captura::kNumHoja));
    } else if (lstDetallesCabecerasHoja.Visible()) {
        cmdVerCaptura_Click();
    }
    ado::Recordset ultimo;
    ultimo.Open(
        u"SELECT Max(NumRegistro) AS NumeroMayor FROM ANIAHO WHERE IdCabecera="_s + lblIdCabecera.Caption(),
        gConexion);
    const basic::Variant mayor = ultimo.Value(u"NumeroMayor"_s);
    ultimo.Close();
    estadoNuevo();
    txtNumRegistro.SetText(mayor.isNull() ? u"1"_s : basic::CStr(qint64{mayor.toLong()} + 1));
    if (gListaAnillas) tomarHojaDeLaLista();

    ponerPredeterminados();
    lblTxtAnilla.SetCaption({});
    txtNumAnilla.SetText({});
    AnillaSustituida.SetEnabled(false);
    cboTamañoNidada.SetEnabled(false);
    const auto* const hojas = forms::pantallas().Loaded<frm06_HojasCampo>();
    const bool sinFecha = lblTxtFecha.Caption() == lblTxtFecha.Name();
    if (sinFecha && hojas) lblTxtFecha.SetCaption(hojas->dtpCaptura.Text());
    ponerListaDelante(false);
    cboCentro.BringToFront();
    cboCentro.SetFocus();
}

/// In the list of rings the new capture belongs to the sheet of the chosen row.
void frm07_DetallesHojasCampo::tomarHojaDeLaLista() {
    ado::Recordset hoja;
    hoja.Open(
        u"SELECT NombreLocalidad, Municipio, ANICHO.CodLocalidad FROM (ANICHO INNER JOIN ANILOC ON "
        u"ANICHO.CodLocalidad = ANILOC.CodigoLocalidad) INNER JOIN ANIAHO ON ANICHO.IdCabecera = "
        u"ANIAHO.IdCabecera WHERE (((ANIAHO.IdCabecera)="_s +
            lblIdCabecera.Caption() + u"))"_s,
        gConexion);
    if (!hoja.Eof()) lbltxtLocalidad.SetCaption(captura::LugarDeLaHoja(hoja));
    lblTxtFecha.SetCaption(lstDetallesCabecerasHoja.SelectedText(captura::kFecha));
}

void frm07_DetallesHojasCampo::ponerPredeterminados() {
    const std::pair<forms::ComboBox*, QString> predeterminados[] = {
        {&cboTipoRegistro, u"A"_s},
        {&cboCentro, kCentroPropio},
        {&cboInfoAnilla, kInfoAnillaNueva},
        {&cboManipulacion, kManipulacionNormal},
        {&cboTransporte, kSinTransporte},
        {&cboPlaca, kReservaDesconocida},
        {&cboGrasa, kReservaDesconocida},
        {&cboMusculo, kReservaDesconocida},
        {&cboPrecision, u"0"_s},
        {&cboEstado, u"B"_s},
        {&cboModo, u"U"_s},
        {&cboMuda, kMudaNinguna},
        {&cboReclamo, u"N"_s},
    };
    for (const auto& [combo, codigo] : predeterminados)
        SeleccionarEnCombo(*combo, codigo);
    if (cboTipoRegistro.ListIndex() == captura::kAnillamiento) usarCondicion(false);
}

// --- From one capture to the next

/// After a saved new capture: rings are put on in series, and a catch is often of one species.
void frm07_DetallesHojasCampo::prepararSiguiente() {
    txtNumRegistro.SetText(basic::CStr(qint64{basic::CLng(txtNumRegistro.Text())} + 1));
    for (forms::TextBox* texto : {&txtParentesco, &txtAla, &txtF8, &txtPeso, &txtTarso})
        texto->SetText({});
    otrosDatos.Vaciar();
    SeleccionarEnCombo(cboMuda, kMudaNinguna);
    for (forms::ComboBox* reserva : {&cboPlaca, &cboGrasa, &cboMusculo})
        SeleccionarEnCombo(*reserva, kReservaDesconocida);
    if (cboTipoRegistro.ListIndex() == captura::kRecuperacion) {
        prepararTrasRecuperacion();
    } else {
        prepararTrasAnillamiento();
    }
}

void frm07_DetallesHojasCampo::prepararTrasAnillamiento() {
    QString anilla = txtNumAnilla.Text();
    txtNumAnilla.SetText(SiguienteAnilla(anilla));
    txtNumAnilla_LostFocus();
    cboTipoRegistro.SetListIndex(captura::kAnillamiento);
    cboCircunstancia.SetListIndex(-1);
    cboCondicion.SetListIndex(-1);
    ponerListaDelante(false);
    dbcboEspecie.SetFocus();  // the ring is stepped; the species is the first thing that may differ
}

void frm07_DetallesHojasCampo::prepararTrasRecuperacion() {
    if (ckMantenerDato.Value() == 0) {
        cboTipoRegistro.SetListIndex(captura::kAnillamiento);
        cboCircunstancia.SetListIndex(-1);
        cboCondicion.SetListIndex(-1);
        ckMantenerDato.SetVisible(false);
    } else {
        cboTipoRegistro.SetListIndex(captura::kRecuperacion);
        usarCondicion(true);
        SeleccionarEnCombo(cboInfoAnilla, kInfoYaAnillada);
        SeleccionarEnCombo(cboCondicion, kCondicionHabitual);
        SeleccionarEnCombo(cboCircunstancia, kCircunstanciaHabitual);
    }
    dbcboEspecie.SetText({});
    SeleccionarEnCombo(cboCentro, kCentroPropio);
    txtNumAnilla.SetText({});
    lblTxtAnilla.SetCaption({});
    ponerListaDelante(false);
    cboCentro.SetFocus();
    SeleccionarEnCombo(cboManipulacion, kManipulacionNormal);
    SeleccionarEnCombo(cboTransporte, kSinTransporte);
    cboEdad.SetListIndex(-1);
    cboSexo.SetListIndex(-1);
}

}  // namespace tarmel
