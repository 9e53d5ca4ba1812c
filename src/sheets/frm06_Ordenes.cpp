#include "core/DefinicionesGlobales.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "sheets/Anillas.h"
#include "sheets/ColumnasHojas.h"
#include "sheets/HojasComun.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"

// The sheet screen: looking up, the commands, and the list's events and rows.
namespace tarmel {

using namespace Qt::StringLiterals;
namespace box = forms::box;
namespace key = forms::key;

namespace {

/// The identifier of a sheet that is still to be inserted.
const QString kSinIdentificador = u"-1"_s;
/// The state that a row shows which was added since the list was filled.
const QString kEstadoPendiente = u"P"_s;

/// A first row's field, trimmed; empty when there is no row.
QString campoDe(const ado::Recordset& filas, const QString& campo) {
    return filas.Eof() ? QString() : basic::Trim(filas.Text(campo));
}

}  // namespace

// --- Looking up

void frm06_HojasCampo::B_Buscar_Click() {
    const bool porNumero = !txtNumHoja.Text().isEmpty() && lblIdCabecera.Caption().isEmpty();
    if (porNumero) {
        gSQL = u"SELECT IdCabecera FROM ANICHO WHERE NumHoja = "_s + txtNumHoja.Text();
        ado::Recordset hoja;
        hoja.Open(gSQL, gConexion);
        lblIdCabecera.SetCaption(hoja.Eof() ? u"0"_s : hoja.Text(u"IdCabecera"_s));
    }
    gPermitido = true;
    if (lblIdCabecera.Caption().isEmpty()) {
        txtNumHoja.SetFocus();
        return;
    }
    mantenimiento_.BorrarDatos();  // a blank column of this sheet must not show the last sheet's value
    if (!mantenimiento_.BuscarRegistro({{lblIdCabecera.Caption(), u"IdCabecera"_s}})) {
        forms::MsgBox(u" No se ha encontrado el Nº de hoja"_s, box::OK | box::Information, u"Buscar hoja"_s);
        LimpiarHoja();
        return;
    }
    PrepararHojaExistente();

    gSQL =
        u"SELECT ANICHO.CodAnillador, ANIMAT.CodigoAnillador, ANIMAT.NombreAnillador,"
        u" ANIMAT.CodigoGrupo, ANIMAT.NombreGrupo, ANIMAT.CodigoEntidad, ANIMAT.NombreEntidad, "
        u" ANICHO.CodLocalidad, ANILOC.CodigoLocalidad, ANICHO.Anillador "
        u"FROM ANIMAT INNER JOIN "
        u" (ANILOC INNER JOIN "
        u" ANICHO ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad) ON (ANIMAT.CodigoGrupo = "
        u"ANICHO.CodAnillador OR "
        u"ANIMAT.CodigoAnillador=ANICHO.CodAnillador) "
        u"WHERE ANICHO.IdCabecera = "_s +
        lblIdCabecera.Caption();
    ado::Recordset dueño;
    dueño.Open(gSQL, gConexion);

    if (esAjena()) {
        gPermitido = false;
        forms::MsgBox(u"No tiene permisos para consultar Hojas que no sean suyas"_s, box::OK | box::Critical,
                      u"Buscar Hoja"_s);
        LimpiarHoja();
        return;
    }
    lblCodigoAnillador.SetCaption(campoDe(dueño, u"CodigoAnillador"_s));
    lblNombreAnillador.SetCaption(campoDe(dueño, u"NombreAnillador"_s));
    lblCodigoGrupo.SetCaption(campoDe(dueño, u"CodigoGrupo"_s));
    lblNombreGrupo.SetCaption(campoDe(dueño, u"NombreGrupo"_s));
    lblCodigoEntidad.SetCaption(campoDe(dueño, u"CodigoEntidad"_s));
    lblNombreEntidad.SetCaption(campoDe(dueño, u"NombreEntidad"_s));
    lblCodLocalidad.SetCaption(campoDe(dueño, u"CodigoLocalidad"_s));
    mantenimiento_.MostrarDatosControles();
    mostrarLocalidad();
    mantenimiento_.BorrarDatos();
    // The commands that follow go by the selected row: it has to be the row of the sheet that is shown.
    if (porNumero) lstCabecerasHoja.Select(filaDe(lblIdCabecera.Caption()));
    if (porNumero && lstCabecerasHoja.Visible()) {
        ponerListaDelante(false);
        cmdVerListaHojas.SetVisible(true);
        cmdVerHoja.SetVisible(false);
    }
    forms::host().DoEvents();
}

/// Does the sheet just found belong to somebody else? The comparisons are the language's own: the text in the
/// second one never equals a code that is a number.
bool frm06_HojasCampo::esAjena() const {
    if (gEsCoordinador) return false;
    const auto valor = [this](const QString& columna) {
        for (int i = 0; i < mantenimiento_.UBound(); ++i) {
            const auto& campo = mantenimiento_.campo(i);
            if (campo.NombreCampo == columna) return basic::Trim(campo.ValorCampo);
        }
        return QString();
    };
    return basic::testsDifferent(basic::Val(valor(u"CodAnillador"_s)), gCodAnillador) &&
           basic::testsDifferent(valor(u"Anillador"_s), gCodAnillador);
}

void frm06_HojasCampo::mostrarLocalidad() {
    const QString codigoDeLaHoja = lblCodLocalidad.Caption();
    ado::Recordset filas;
    filas.Open(
        u"Select CodigoLocalidad, NombreLocalidad, NombreProvincia, Municipio FROM ANILOC, ICAPRO WHERE "
        u"ANILOC.CodigoLocalidad = '"_s +
            codigoDeLaHoja + u"' AND ANILOC.CodigoProvincia = ICAPRO.CodigoProvincia"_s,
        gConexion);
    if (filas.Eof()) {
        dbcboLocalidad.SetText({});
        lblCodLocalidad.SetCaption(codigoDeLaHoja);
        return;
    }
    const QString codigo = filas.Text(u"CodigoLocalidad"_s);
    dbcboLocalidad.SetText(TextoDeLocalidad(filas));
    lblCodLocalidad.SetCaption(codigo);
    lblProvincia.SetCaption(filas.Text(u"NombreProvincia"_s));
}

// --- Commands

bool frm06_HojasCampo::EscribiendoHojaNueva() const {
    return lblIdCabecera.Caption() == kSinIdentificador;
}

void frm06_HojasCampo::cmdNuevo_Click() {
    PrepararHojaNueva();
    MostrarSesion(*this);
    txtNumHoja.SetText(SiguienteNumHoja(gCodAnillador, gAnillador[0]).joined());
    lblIdCabecera.SetCaption(kSinIdentificador);
    dbcboLocalidad.SetText({});
    dbcboLocalidad.SetFocus();
    txtNumRedes.SetEnabled(false);
    txtSuperficieRed.SetEnabled(false);
    Refresh();
}

bool frm06_HojasCampo::faltanDatos() {
    const auto avisar = [](const QString& texto, forms::Control& control, int icono) {
        forms::MsgBox(texto, box::OK | icono, u"Faltan datos"_s);
        control.SetFocus();
        return true;
    };
    if (usaRedes() && txtNumRedes.Text().isEmpty())
        return avisar(u"El campo Número de Redes es obligatorio para ese método de captura"_s, txtNumRedes,
                      box::Exclamation);
    if (usaRedes() && txtSuperficieRed.Text().isEmpty())
        return avisar(u"El campo Longitud Redes es obligatorio para ese método de captura"_s,
                      txtSuperficieRed, box::Exclamation);
    if (dtpCaptura.Text().isEmpty())
        return avisar(u"Debe rellenar el campo Fecha de Captura"_s, dtpCaptura, box::OK);
    return false;
}

void frm06_HojasCampo::cmdGrabar_Click() {
    if (lstCabecerasHoja.Visible()) cmdVerHoja_Click();
    if (faltanDatos()) return;

    mantenimiento_.ObtenerDatosControles();
    if (mantenimiento_.ComprobarDatos()) {
        const bool existe = mantenimiento_.BuscarRegistro({{lblIdCabecera.Caption(), u"IdCabecera"_s}});
        // What could not be written has been said; the typed sheet stays to be corrected.
        if (!(existe ? grabarCambio() : grabarNueva())) return;
        cmdNuevo.SetEnabled(true);
    }
    if (gModoModificar) {
        gModoModificar = false;
        ponerListaDelante(true);
        lstCabecerasHoja.SetFocus();
    }
    Refresh();
}

bool frm06_HojasCampo::grabarCambio() {
    mantenimiento_.ObtenerDatosControles();
    if (!mantenimiento_.ModificarRegistro()) return false;
    QuitarFilaLista();
    AgregarFilaLista();
    mantenimiento_.BorrarDatosControles();
    forms::host().DoEvents();
    LimpiarHoja();
    return true;
}

bool frm06_HojasCampo::grabarNueva() {
    mantenimiento_.ObtenerDatosControles();
    if (!mantenimiento_.InsertarRegistro()) return false;
    {
        ado::Recordset hoja;
        hoja.Open(u"SELECT IdCab FROM ANICHO WHERE IdCabecera = -1"_s, gConexion);
        lblIdCabecera.SetCaption(hoja.Text(u"IdCab"_s));
    }
    gConexion.Execute(u"UPDATE ANICHO SET IdCabecera = IdCab WHERE IdCabecera = -1 "_s);
    AgregarFilaLista();
    otrosDatos.Ocultar();
    // The way on: F6 opens the captures of this sheet, with the first one ready to be typed.
    cmdMostrarDetalle.SetEnabled(true);
    cmdMostrarDetalle.SetVisible(true);
    cmdModificar.SetEnabled(true);
    gNuevaHoja = true;
    // A list of rings that is open would take the new capture's sheet from its own row.
    if (gListaAnillas) forms::pantallas().Unload(frm07_DetallesHojasCampo::kName);
    auto& capturas = forms::pantallas().Get<frm07_DetallesHojasCampo>();
    capturas.cmdNuevo_Click();
    if (capturas.lblTxtNumHoja.Caption() == capturas.lblTxtNumHoja.Name())
        capturas.lblTxtNumHoja.SetCaption(txtNumHoja.Text());
    return true;
}

void frm06_HojasCampo::cmdVerHoja_Click() {
    if (lstCabecerasHoja.Selected() < 0) return;
    lblIdCabecera.SetCaption(lstCabecerasHoja.SelectedText());
    B_Buscar_Click();
    if (!gPermitido) return;
    lblIdCabecera.SetCaption(basic::Trim(lblIdCabecera.Caption()));
    ponerListaDelante(false);
    cmdNuevo.SetEnabled(true);
    cmdVerHoja.SetVisible(false);
    cmdVerListaHojas.SetVisible(true);
    cmdGrabar.SetEnabled(false);
    mantenimiento_.ControlesEnabledDisable(false);
    Refresh();
}

void frm06_HojasCampo::cmdModificar_Click() {
    if (lstCabecerasHoja.Selected() < 0) return;
    basic::resumeNext([this] {
        lblIdCabecera.SetCaption(lstCabecerasHoja.SelectedText());
        B_Buscar_Click();
    });
    const bool encontrada = gPermitido && !lblIdCabecera.Caption().isEmpty();
    if (!encontrada) return;
    lblIdCabecera.SetCaption(basic::Trim(lblIdCabecera.Caption()));
    ponerListaDelante(false);
    cmdVerHoja.SetVisible(false);
    cmdVerListaHojas.SetVisible(true);
    cmdGrabar.SetEnabled(true);
    cmdNuevo.SetEnabled(false);
    gModoModificar = true;
    dbcboLocalidad.SetFocus();
    Refresh();
}

void frm06_HojasCampo::cmdVerListaHojas_Click() {
    cmdNuevo.SetEnabled(true);
    ponerListaDelante(true);
    for (forms::CommandButton* boton : {&cmdVerListaHojas, &cmdVerHoja, &cmdModificar, &cmdMostrarDetalle})
        boton->SetVisible(false);
    cmdModificar.SetEnabled(true);
    cmdGrabar.SetEnabled(false);
    cmdEliminar.SetEnabled(false);
    const int fila = lstCabecerasHoja.FindItem(lblIdCabecera.Caption());
    if (fila >= 0) {
        lstCabecerasHoja.Select(fila);
        lstCabecerasHoja.SetFocus();
    }
    Refresh();
}

void frm06_HojasCampo::cmdEliminar_Click() {
    if (lstCabecerasHoja.Visible()) cmdVerHoja_Click();
    if (!gPermitido) {
        forms::MsgBox(u"No tiene permisos para eliminar Hojas que no sean suyas"_s, box::OK | box::Critical,
                      u"Buscar Hoja"_s);
        return;
    }
    if (lblIdCabecera.Caption().isEmpty()) return;
    mantenimiento_.ObtenerDatosControles();
    const int respuesta =
        forms::MsgBox(u"Número de hoja: "_s + txtNumHoja.Text() +
                          u"\rEliminará la hoja seleccionada y todas sus capturas."
                          u"\r¿Desea continuar?"_s,
                      box::YesNo | box::Critical | box::DefaultButton2, u"¡ELIMINAR REGISTRO!"_s);
    if (respuesta == box::AnswerYes) {
        constexpr bool sinRenumerar = true;
        gConexion.Execute(u"DELETE FROM ANIAHO WHERE IdCabecera="_s + lblIdCabecera.Caption());
        mantenimiento_.EliminarRegistro(sinRenumerar);
        QuitarFilaLista();
        LimpiarHoja();
        ponerListaDelante(true);
        lstCabecerasHoja.SetFocus();
        cmdEliminar.SetEnabled(true);
    }
    Refresh();
}

void frm06_HojasCampo::cmdMostrarDetalle_Click() {
    gListaAnillas = false;
    gListaDuplicados = false;
    gMostrarLista = true;
    if (lstCabecerasHoja.Selected() >= 0) {
        if (lstCabecerasHoja.Visible())
            lblIdCabecera.SetCaption(basic::Trim(lstCabecerasHoja.SelectedText()));
        txtNumHoja.SetText(basic::Trim(lstCabecerasHoja.SelectedText(hoja::kNumHoja)));
    }
    if (lblIdCabecera.Caption().isEmpty()) return;
    auto& capturas = forms::pantallas().Get<frm07_DetallesHojasCampo>();
    capturas.TomarHoja(lblIdCabecera.Caption(), txtNumHoja.Text());
    capturas.SetCaption(u"Detalle Hoja de Campo nº "_s + txtNumHoja.Text());
    capturas.Show();
    if (gNuevaHoja) {
        gNuevaHoja = false;
        capturas.cmdNuevo_Click();
    } else {
        capturas.cmdVerListaCapturas_Click();
    }
}

void frm06_HojasCampo::cmdSalir_Click() {
    gCargandoLista = false;
    forms::host().SetPointer(forms::Pointer::Default);
    forms::pantallas().Unload(frm07_DetallesHojasCampo::kName);
    Unload();
}

// --- The list

void frm06_HojasCampo::lstCabecerasHoja_Click() {
    if (lstCabecerasHoja.Selected() < 0) return;
    for (forms::CommandButton* boton : {&cmdVerHoja, &cmdMostrarDetalle, &cmdModificar}) {
        boton->SetVisible(true);
        boton->SetEnabled(true);
    }
    cmdVerListaHojas.SetEnabled(true);
    cmdEliminar.SetEnabled(true);
    cmdGrabar.SetEnabled(false);
    lblIdCabecera.SetCaption(basic::Trim(lstCabecerasHoja.SelectedText()));
    txtNumHoja.SetText(basic::Trim(lstCabecerasHoja.SelectedText(hoja::kNumHoja)));
}

void frm06_HojasCampo::lstCabecerasHoja_DblClick() {
    if (lstCabecerasHoja.Selected() < 0) return;
    lblIdCabecera.SetCaption(lstCabecerasHoja.SelectedText());
    B_Buscar_Click();
    if (!gPermitido) return;
    Refresh();
    cmdVerHoja_Click();
}

void frm06_HojasCampo::lstCabecerasHoja_KeyPress(int& tecla) {
    if (tecla == key::Enter) {
        lstCabecerasHoja_DblClick();
        ponerListaDelante(false);
    } else if (tecla == key::Esc) {
        ponerListaDelante(false);
        lstCabecerasHoja.SetTag({});
    }
}

/// The row of a sheet; -1 when the list does not hold it. Rows of the filled list bear blanks, added ones do
/// not.
int frm06_HojasCampo::filaDe(const QString& idCabecera) const {
    const int cargada = lstCabecerasHoja.FindItem(Rellenar(idCabecera));
    return cargada >= 0 ? cargada : lstCabecerasHoja.FindItem(idCabecera);
}

void frm06_HojasCampo::AgregarFilaLista() {
    std::vector<QString> fila = FilaDeControles(*this, hoja::Columnas());
    // Places are parted by three blanks in the combo, by five elsewhere: only the latter are taken apart
    // here.
    const QString separador(5, u' ');
    const QString lugar = CodigoDeCombo(dbcboLocalidad);
    const qsizetype corte = lugar.indexOf(separador);
    fila[hoja::kMunicipio] = corte < 0 ? lugar : lugar.left(corte);
    fila[hoja::kParaje] = corte < 0 ? QString() : basic::Trim(lugar.mid(corte));
    fila[hoja::kDifFecha] = DiasDesde1900(dtpCaptura.Value());
    fila[hoja::kEstado] = kEstadoPendiente;
    lstCabecerasHoja.SetSorted(true);
    lstCabecerasHoja.Select(lstCabecerasHoja.Add(fila));
}

void frm06_HojasCampo::QuitarFilaLista() {
    const int fila = lstCabecerasHoja.FindItem(lblIdCabecera.Caption());
    if (fila >= 0) lstCabecerasHoja.Select(fila);
    // Rows of the filled list bear blanks and are not found by the bare number; the selected one is the
    // sheet's.
    if (lstCabecerasHoja.Selected() >= 0) lstCabecerasHoja.Remove(lstCabecerasHoja.Selected());
}

}  // namespace tarmel
