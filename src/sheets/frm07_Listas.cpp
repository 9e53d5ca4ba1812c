#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/CargarListaGenerica.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "sheets/ColumnasCapturas.h"
#include "sheets/HojasComun.h"
#include "sheets/LugaresCaptura.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"

// The list of captures: what it holds in each mode, and the ways between it and the fields.
namespace tarmel {

using namespace Qt::StringLiterals;
using forms::Tint;
namespace box = forms::box;
namespace key = forms::key;

namespace {

const QString kListado = u"Listado de anillas"_s;
const QString kListadoDuplicadas = u"Listado de anillas duplicadas"_s;

QString tituloDeHoja(const QString& numHoja) {
    return u"Detalle Hoja de Campo nº "_s + numHoja;
}

/// The captures joined with their sheets and species. `todo` is the text of the star, which the modes write
/// differently.
QString cabeceraDeLista(const QString& todo) {
    return u"SELECT BRD.NombreEspecie, ANICHO.FechaCaptura, "_s + todo +
           u" ANICHO.FechaCaptura-#1/1/1900# AS DifFecha "
           u"FROM ANICHO INNER JOIN (ANIAHO INNER JOIN ANIBRD AS BRD ON ANIAHO.IdEspecie = BRD.IdEspecie) "
           u"ON ANICHO.IdCabecera = ANIAHO.IdCabecera"_s;
}

}  // namespace

// --- Filling

QString frm07_DetallesHojasCampo::sqlDeLaLista() const {
    const QString codigo = gCodAnillador.joined();
    const QString lista = cabeceraDeLista(u"*, "_s);
    switch (modo()) {
        case Modo::Seleccion: {
            // No brackets round the filter: the second half of the condition admits the ringer's other rings
            // too.
            const QString suyas =
                u" AND ANICHO.CodAnillador="_s + codigo + u" OR ANICHO.Anillador="_s + codigo;
            return lista + u" WHERE "_s + gFiltroAnillas + (gEsCoordinador ? QString() : suyas);
        }
        case Modo::Duplicados:
            return u"SELECT * FROM Datos_Duplicados "_s;
        case Modo::ListaAnillas: {
            const QString suyas =
                u" WHERE ANICHO.CodAnillador="_s + codigo + u" OR ANICHO.Anillador="_s + codigo;
            return lista + (gEsCoordinador ? QString() : suyas);
        }
        case Modo::Hoja:
            break;
    }
    return cabeceraDeLista(u"* , "_s) + u" Where (((ANIAHO.IdCabecera) = "_s + lblIdCabecera.Caption() +
           u")) ORDER BY ANIAHO.NumRegistro"_s;
}

void frm07_DetallesHojasCampo::Activate() {
    cmdVerCaptura.SetVisible(false);
    cmdModificar.SetEnabled(false);
    gCapturaGrabada = false;
    MostrarMensajeEstado(u"Cargando Vista..."_s);
    const Modo abierta = modo();
    if (abierta == Modo::Duplicados) SetCaption(kListadoDuplicadas);
    if (abierta == Modo::Hoja) SetCaption(tituloDeHoja(lblTxtNumHoja.Caption()));

    gSQL = sqlDeLaLista();
    const int activacion = ++activaciones_;
    CargarListaGenerica(*this, lstDetallesCabecerasHoja, gConexion, gSQL,
                        ColumnasDeLista(captura::Columnas()), {.anchoRelleno = kAnchoRelleno},
                        cargandoLista_);
    MostrarMensajeEstado({});
    // Events have run meanwhile: the screen may be gone, or filling its list anew.
    if (!IsLoaded() || activacion != activaciones_) return;
    gMostrarLista = false;
    if (abierta == Modo::Seleccion) {
        // A selection serves once, also one whose condition has failed.
        gFiltroAnillas.clear();
        gSQL.clear();
    }
    if (!cargandoLista_) {
        Unload();
        return;
    }
    prepararLista(abierta);
}

void frm07_DetallesHojasCampo::prepararLista(Modo abierta) {
    if (abierta == Modo::Hoja) {
        if (gNuevaHoja) return;
        cmdVerListaCapturas.Visible() ? cmdVerListaCapturas_Click() : cmdVerCaptura_Click();
        return;
    }
    cubrirConLaLista();
    if (lstDetallesCabecerasHoja.Count() > 0) {
        lstDetallesCabecerasHoja.SetFocus();
        return;
    }
    if (abierta == Modo::Duplicados) {
        cmdVerCaptura.SetEnabled(false);
        cmdEliminar.SetEnabled(false);
        cmdModificar.SetEnabled(true);
    }
    prepararListaVacia();
}

void frm07_DetallesHojasCampo::prepararListaVacia() {
    lblTxtAnilla.SetCaption({});
    txtNumAnilla.SetText({});
    txtNumRegistro.SetEnabled(false);
    const auto hojas = mantenimiento_.EjecutarSQL(u"SELECT * FROM ANICHO"_s);
    if (!hojas || !hojas->Eof()) return;
    cmdNuevo.SetEnabled(false);
    cmdVerCaptura.SetEnabled(false);
}

// --- Between list and fields

/// Which layer is in front. The other one is hidden, so that Tab does not wander behind it, and the panel
/// does not stay over either.
void frm07_DetallesHojasCampo::ponerListaDelante(bool delante) {
    otrosDatos.Ocultar();
    lstDetallesCabecerasHoja.SetVisible(delante);
    fraCabeceras.SetVisible(!delante);
}

void frm07_DetallesHojasCampo::cubrirConLaLista() {
    ponerListaDelante(true);
    cmdVerListaCapturas.SetVisible(false);
    cmdVerCaptura.SetVisible(true);
    cmdModificar.SetVisible(true);
    cmdGrabar.SetEnabled(false);
}

void frm07_DetallesHojasCampo::cmdVerListaCapturas_Click() {
    gModificando = false;
    cmdNuevo.SetEnabled(true);
    cubrirConLaLista();
    const bool hayFilas = lstDetallesCabecerasHoja.Count() > 0;
    cmdVerCaptura.SetVisible(hayFilas);
    cmdEliminar.SetEnabled(hayFilas);
    cmdModificar.SetEnabled(hayFilas);
    const int fila = filaDe(txtNumRegistro.Text());
    if (fila >= 0) lstDetallesCabecerasHoja.Select(fila);
    lstDetallesCabecerasHoja.SetFocus();
}

/// Reads the capture of the selected row, not to be changed. A step that fails does not hold up the ones
/// behind it.
void frm07_DetallesHojasCampo::cmdVerCaptura_Click() {
    if (lstDetallesCabecerasHoja.Selected() < 0) return;
    txtNumRegistro.SetText(basic::Trim(lstDetallesCabecerasHoja.SelectedText()));
    basic::resumeNext([this] { tomarHojaDeLaFila(); });
    ponerListaDelante(false);
    basic::resumeNext([this] { B_Buscar_Click(); });
    cmdNuevo.SetEnabled(true);
    cmdVerCaptura.SetVisible(false);
    cmdVerListaCapturas.SetVisible(true);
    cmdModificar.SetEnabled(true);
    cmdGrabar.SetEnabled(false);
    mantenimiento_.ControlesEnabledDisable(false);
    mostrarSegunTipo();
    if (cboEdad.ListIndex() != captura::kPollo) cboTamañoNidada.SetEnabled(false);
    cmdVerListaCapturas.SetFocus();
}

bool frm07_DetallesHojasCampo::enListado() const {
    return Caption() == kListado || Caption() == kListadoDuplicadas;
}

/// The sheet of the selected row, where the list holds captures of many sheets.
void frm07_DetallesHojasCampo::tomarHojaDeLaFila() {
    const forms::ListView& lista = lstDetallesCabecerasHoja;
    if (Caption().isEmpty()) {
        // Places from a shorter list of former times, kept as they are.
        constexpr int numHoja = 32;
        constexpr int idCabecera = 33;
        lblTxtNumHoja.SetCaption(lista.SelectedText(numHoja));
        lblIdCabecera.SetCaption(lista.SelectedText(idCabecera));
        return;
    }
    if (!enListado()) return;
    lblTxtNumHoja.SetCaption(lista.SelectedText(captura::kNumHoja));
    lblIdCabecera.SetCaption(lista.SelectedText(captura::kIdCabecera));
    // An imported sheet may have no number to look it up by.
    const bool conNumero = !lblTxtNumHoja.Caption().isEmpty();
    ado::Recordset hoja;
    if (conNumero)
        hoja.Open(
            u"SELECT ANILOC.NombreLocalidad, ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.CodLocalidad "
            u"FROM (ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera) INNER JOIN ANILOC "
            u"ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad WHERE (((ANICHO.NumHoja)="_s +
                lblTxtNumHoja.Caption() + u"))"_s,
            gConexion);
    // A sheet without a known place has its date in the row; nothing of the sheet before may stay.
    const bool hallada = conNumero && !hoja.Eof();
    lbltxtLocalidad.SetCaption(hallada ? captura::LugarDeLaHoja(hoja) : QString());
    lblTxtFecha.SetCaption(hallada ? hoja.Text(u"FechaCaptura"_s) : lista.SelectedText(captura::kFecha));
}

/// Condition and circumstance of a stored capture: closed and greyed for a ringing.
void frm07_DetallesHojasCampo::mostrarSegunTipo() {
    if (cboTipoRegistro.ListIndex() == captura::kAnillamiento) {
        usarCondicion(false);
        return;
    }
    lblCondicion.SetTint(Tint::Normal);
    lblCircunstancia.SetTint(Tint::Normal);
}

void frm07_DetallesHojasCampo::B_Buscar_Click() {
    if (txtNumRegistro.Text().isEmpty()) {
        txtNumRegistro.SetFocus();
        return;
    }
    mantenimiento_.BorrarDatos();  // a blank column of this capture must not show the last one's value
    const bool encontrada = mantenimiento_.BuscarRegistro(
        {{lblIdCabecera.Caption(), u"IdCabecera"_s}, {txtNumRegistro.Text(), u"NumRegistro"_s}});
    if (!encontrada) {
        forms::MsgBox(u" No se ha encontrado el Nº de detalle"_s, box::OK | box::Information,
                      u"Buscar detalle"_s);
        return;
    }
    estadoMostrado();
    ado::Recordset filas;
    filas.Open(
        u"SELECT rtrim(NombreEspecie) & ' .-. ' & ANIAHO.CodigoEspecie as Especie, "
        u"ANIBRD.CodigoEspecie as ID "
        u"FROM ANIBRD INNER JOIN ANIAHO ON ANIBRD.IdEspecie = ANIAHO.IdEspecie "
        u"WHERE IdCabecera = "_s +
            lblIdCabecera.Caption() + u" AND NumRegistro = "_s + txtNumRegistro.Text(),
        gConexion);
    const QString especie = filas.Eof() ? QString() : filas.Text(u"Especie"_s);
    const QString codigo = filas.Eof() ? QString() : filas.Text(u"ID"_s);
    filas.Close();
    lblIdEspecie.SetCaption(codigo);
    lblCodEspecie.SetCaption(codigo);
    mantenimiento_.MostrarDatosControles();
    mantenimiento_.BorrarDatos();
    dbcboEspecie.SetText(especie);
    forms::host().DoEvents();
    cboCentro.SetFocus();
}

void frm07_DetallesHojasCampo::cmdEliminar_Click() {
    if (lstDetallesCabecerasHoja.Visible()) {
        if (lstDetallesCabecerasHoja.Selected() < 0) return;
        cmdVerCaptura_Click();
    }
    mantenimiento_.ObtenerDatosControles();
    const int respuesta =
        forms::MsgBox(u"Número de captura:  "_s + txtNumRegistro.Text() +
                          u"\rEliminará la captura seleccionada.\r¿Desea continuar?"_s,
                      box::YesNo | box::Critical | box::DefaultButton2, u"¡ELIMINAR REGISTRO!"_s);
    if (respuesta == box::AnswerYes) {
        constexpr bool sinRenumerar = false;
        const QString numRegistro = txtNumRegistro.Text();
        if (mantenimiento_.EliminarRegistro(sinRenumerar)) {
            quitarFila(numRegistro);
            estadoVacio();
        }
        if (gListaAnillas) {
            forms::pantallas().Unload(frm06_HojasCampo::kName);
            if (forms::Form* principal = forms::pantallas().Loaded(u"frm03_Principal"_s))
                principal->Refresh();
        }
    }
    cubrirConLaLista();
    cmdEliminar.SetEnabled(true);
    lstDetallesCabecerasHoja.SetFocus();
}

void frm07_DetallesHojasCampo::cmdSalir_Click() {
    const bool deUnListado = gListaDuplicados || gListaAnillas;
    if (lstDetallesCabecerasHoja.Visible() || !deUnListado) {
        Unload();
        return;
    }
    cubrirConLaLista();
    SetCaption(gListaDuplicados ? kListadoDuplicadas : kListado);
    lstDetallesCabecerasHoja.SetFocus();
}

// --- Events of the list

void frm07_DetallesHojasCampo::lstDetallesCabecerasHoja_Click() {
    if (lstDetallesCabecerasHoja.Count() == 0) return;
    cmdEliminar.SetEnabled(true);
    cmdModificar.SetEnabled(true);
    cmdGrabar.SetEnabled(false);
}

void frm07_DetallesHojasCampo::lstDetallesCabecerasHoja_DblClick() {
    if (lstDetallesCabecerasHoja.Selected() < 0) return;
    // A change of another row that was left with F7 is given up: its ring must not pass to this capture.
    if (lstDetallesCabecerasHoja.SelectedText(captura::kAnilla) != gOriginalAnilla ||
        lstDetallesCabecerasHoja.SelectedText(captura::kCentro) != gOriginalCentro)
        gModificando = false;
    const bool deUnListado = enListado();
    tomarHojaDeLaFila();
    if (deUnListado) SetCaption(tituloDeHoja(lblTxtNumHoja.Caption()));
    txtNumRegistro.SetText(basic::Trim(lstDetallesCabecerasHoja.SelectedText()));
    ponerListaDelante(false);
    B_Buscar_Click();
    cmdVerListaCapturas.SetVisible(true);
    cmdVerCaptura.SetVisible(false);
    cmdNuevo.SetEnabled(true);
    cmdGrabar.SetEnabled(true);
    mantenimiento_.ControlesEnabledDisable(true);
}

void frm07_DetallesHojasCampo::lstDetallesCabecerasHoja_KeyDown(int& tecla) {
    if (tecla != key::Enter && tecla != key::Esc) return;
    if (tecla == key::Enter) lstDetallesCabecerasHoja_DblClick();
    ponerListaDelante(false);
    tecla = 0;
}

// --- Rows

/// A row for the capture that the fields hold.
void frm07_DetallesHojasCampo::agregarFila() {
    std::vector<QString> fila = FilaDeControles(*this, captura::Columnas());
    fila[captura::kNumRegistro] = Rellenar(fila[captura::kNumRegistro]);
    const QString fecha = lblTxtFecha.Caption();
    if (basic::IsDate(fecha)) fila[captura::kDifFecha] = DiasDesde1900(basic::CDate(fecha));
    const int nueva = lstDetallesCabecerasHoja.Add(fila);
    if (lstDetallesCabecerasHoja.Selected() < 0) lstDetallesCabecerasHoja.Select(nueva);
}

/// The row of a capture of the sheet on the screen; -1 when the list does not hold it. A list of rings holds
/// the same number once for each sheet.
int frm07_DetallesHojasCampo::filaDe(const QString& numRegistro) const {
    const forms::ListView& lista = lstDetallesCabecerasHoja;
    const QString texto = Rellenar(numRegistro);
    for (int fila = lista.FindItem(texto); fila >= 0 && fila < lista.Count(); ++fila) {
        const bool esLaCaptura = lista.Cell(fila, captura::kNumRegistro) == texto &&
                                 lista.Cell(fila, captura::kIdCabecera) == lblIdCabecera.Caption();
        if (esLaCaptura) return fila;
    }
    return -1;
}

void frm07_DetallesHojasCampo::quitarFila(const QString& numRegistro) {
    const int fila = filaDe(numRegistro);
    if (fila < 0) return;
    lstDetallesCabecerasHoja.Select(fila);
    lstDetallesCabecerasHoja.Remove(fila);
}

}  // namespace tarmel
