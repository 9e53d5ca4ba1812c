#include "core/DefinicionesGlobales.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "sheets/Anillas.h"
#include "sheets/ColumnasCapturas.h"
#include "sheets/HojasComun.h"
#include "sheets/LugaresCaptura.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"
#include "store/AlmacenAnillas.h"

// The one way of a capture to the database: its checks in their order, the write, and the opening of a stored
// capture for change.
namespace tarmel {

using namespace Qt::StringLiterals;
namespace box = forms::box;

namespace {

bool hayFilas(const QString& sql) {
    ado::Recordset filas;
    filas.Open(sql, gConexion);
    return !filas.Eof() && !filas.Bof();
}

/// A date as text in the order that the engine's dialect wants; empty for what is no date.
QString fechaParaSql(const QString& texto) {
    return basic::IsDate(texto) ? basic::Format(basic::CDate(texto), u"mm/dd/yyyy"_s) : QString();
}

QString sqlAnillamiento(const QString& centro, const QString& anilla) {
    return u"SELECT * FROM ANIAHO WHERE CodigoCentro='"_s + centro + u"' AND Anilla='"_s + anilla +
           u"'AND TipoRegistro='A'"_s;
}

}  // namespace

bool frm07_DetallesHojasCampo::esAnillamiento() const {
    return CodigoDeCombo(cboTipoRegistro) == u"A"_s;
}

bool frm07_DetallesHojasCampo::esRecuperacion() const {
    return CodigoDeCombo(cboTipoRegistro) == u"R"_s;
}

void frm07_DetallesHojasCampo::cmdGrabar_Click() {
    if (lstDetallesCabecerasHoja.Visible()) cmdVerCaptura_Click();
    const ado::Connection::Snapshot busquedas(gConexion);
    if (!lblTxtAnilla.Caption().isEmpty() && !anillaAdmitida()) return;
    if (faltanDatosDelTipo()) return;

    mantenimiento_.ObtenerDatosControles();
    if (mantenimiento_.ComprobarDatos()) {
        if (estaDuplicada()) return;
        // What could not be written has been said; the fields stay to be corrected.
        if (!almacenar()) return;
        cmdNuevo.SetEnabled(true);
    }
    if (gModificando) {
        gModificando = false;
        cubrirConLaLista();
        lstDetallesCabecerasHoja.SetFocus();
        SetCaption(u"Listado de anillas"_s);
        Refresh();
    }
    if (gListaAnillas) forms::pantallas().Unload(frm06_HojasCampo::kName);
}

// --- Checks

/// A ring that is put on must be in the ringer's store. One that is met again and still in the store is the
/// ringer's own.
bool frm07_DetallesHojasCampo::anillaAdmitida() {
    QString modelo;
    QString inscripcion;
    qint32 numero = 0;
    bool error = false;
    DescomponerAnilla(lblTxtAnilla.Caption(), modelo, inscripcion, numero, error);
    if (error) return false;
    const bool enAlmacen = AnillaEnAlmacen(modelo, inscripcion, numero);
    if (esAnillamiento() && !enAlmacen) {
        forms::MsgBox(
            u"Esta anilla no está en su almacén o ha sido devuelta/traspasada."
            u"\rVerifique el número o introduzca primero la anilla en el almacén"_s,
            box::OK | box::Exclamation, u"Almacén de anillas"_s);
        return false;
    }
    if (esRecuperacion() && enAlmacen) avisarAutocontrol();
    return true;
}

/// Warnings only: the capture is saved all the same.
void frm07_DetallesHojasCampo::avisarAutocontrol() {
    const auto avisar = [](const QString& texto) {
        forms::MsgBox(texto, box::OK | box::Information, u"Atención"_s);
    };
    const QString centro = CodigoDeCombo(cboCentro);
    const QString anilla = lblTxtAnilla.Caption();
    bool existe = false;
    ExisteAnillamientoAutocontrol(centro, anilla, existe);
    if (!existe) {
        avisar(u"El anillamiento correspondiente a este autocontrol no se encuentra en la base de datos"_s);
        return;
    }
    AnillamientoMismaEspecie(centro, anilla, basic::Right(dbcboEspecie.Text(), captura::kCifrasEspecie),
                             existe);
    if (!existe)
        avisar(
            u"La especie indicada en el anillamiento no coincide con la que se ha introducido en el autocontrol"_s);
}

bool frm07_DetallesHojasCampo::faltanDatosDelTipo() {
    const auto avisar = [](const QString& texto) {
        forms::MsgBox(texto, box::OK | box::Exclamation, u"Faltan datos"_s);
        return true;
    };
    const auto falta = [](const forms::ComboBox& combo) { return combo.ListIndex() == -1; };

    if (cboTipoRegistro.ListIndex() == captura::kRecuperacion) {
        cboCondicion.SetEnabled(true);
        if (falta(cboCondicion)) return avisar(u"El campo Condición es obligatorio"_s);
        if (falta(cboCircunstancia)) return avisar(u"El campo Circunstancia es obligatorio"_s);
        if (cboInfoAnilla.ListIndex() == captura::kPideSustituida && AnillaSustituida.Text().isEmpty())
            return avisar(u"El campo Anilla sustituida es obligatorio"_s);
    }
    if (falta(cboTransporte)) return avisar(u"El campo Transporte es obligatorio"_s);
    if (falta(cboManipulacion)) return avisar(u"El campo Manipulación es obligatorio"_s);
    if (falta(cboInfoAnilla)) return avisar(u"El campo Info. Anilla es obligatorio"_s);
    if (falta(cboModo)) return avisar(u"El campo ModoStatus es obligatorio"_s);
    if (cboEdad.ListIndex() == captura::kPollo && falta(cboTamañoNidada))
        return avisar(u"El campo Tamaño Nidada es obligatorio cuando se trata de un pollo"_s);
    return false;
}

/// Both questions are asked for either type; only the answer of the matching one counts.
bool frm07_DetallesHojasCampo::estaDuplicada() {
    const QString fecha = fechaParaSql(lblTxtFecha.Caption());
    const QString hora = basic::CStr(dtpHoraInicio.Value().timePart());
    const QString centro = CodigoDeCombo(cboCentro);
    const QString anilla = lblTxtAnilla.Caption();
    bool existe = false;
    ExisteAnillamiento(centro, anilla, existe);
    if (esAnillamiento() && existe) {
        rechazarDuplicada(u"El anillamiento con número de anilla: "_s);
        return true;
    }
    ExisteRecuperacion(centro, anilla, fecha, hora, existe);
    if (esRecuperacion() && existe) {
        rechazarDuplicada(u"La recuperación con número de anilla: "_s);
        return true;
    }
    return false;
}

void frm07_DetallesHojasCampo::rechazarDuplicada(const QString& comienzo) {
    forms::MsgBox(comienzo + lblTxtAnilla.Caption() + u"\rya ha sido introducido en la base de datos."_s,
                  box::OK | box::Exclamation, u"Datos duplicados"_s);
    lblTxtAnilla.SetCaption({});
    txtNumAnilla.SetText(gModificando ? gOriginalAnilla : QString());
    txtNumAnilla.SetFocus();
}

/// A capture never collides with itself: a change that leaves ring and centre alone is not asked about.
void frm07_DetallesHojasCampo::ExisteAnillamiento(const QString& centro, const QString& anilla,
                                                  bool& existe) const {
    const bool esElMismo = gModificando && centro == gOriginalCentro && anilla == gOriginalAnilla;
    existe = !esElMismo && hayFilas(sqlAnillamiento(centro, anilla));
}

void frm07_DetallesHojasCampo::ExisteRecuperacion(const QString& centro, const QString& anilla,
                                                  const QString& fecha, const QString& hora,
                                                  bool& existe) const {
    const bool esLaMisma = gModificando && centro == gOriginalCentro && anilla == gOriginalAnilla &&
                           fecha == gOriginalFecha && hora == gOriginalHora;
    // An imported sheet may have no date: then no other capture is of the same day.
    const bool comparable = !esLaMisma && !fecha.isEmpty();
    existe =
        comparable &&
        hayFilas(
            u"SELECT ANIAHO.* FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE "
            u"ANIAHO.CodigoCentro='"_s +
            centro + u"'AND ANIAHO.Anilla='"_s + anilla + u"' AND ANICHO.FechaCaptura=#"_s + fecha +
            u"#AND ANIAHO.HoraCaptura=#"_s + hora + u"# AND ANIAHO.TipoRegistro='R'"_s);
}

void frm07_DetallesHojasCampo::ExisteAnillamientoAutocontrol(const QString& centro, const QString& anilla,
                                                             bool& existe) const {
    existe = hayFilas(sqlAnillamiento(centro, anilla));
}

void frm07_DetallesHojasCampo::AnillamientoMismaEspecie(const QString& centro, const QString& anilla,
                                                        const QString& codigoEspecie, bool& existe) const {
    existe = hayFilas(sqlAnillamiento(centro, anilla) + u" AND CodigoEspecie='"_s + codigoEspecie + u'\'');
}

// --- The write

/// The number in the box decides: a number that the sheet holds is a change of that capture. False when the
/// statement failed, which has been shown.
bool frm07_DetallesHojasCampo::almacenar() {
    const bool existe = mantenimiento_.BuscarRegistro(
        {{lblIdCabecera.Caption(), u"IdCabecera"_s}, {txtNumRegistro.Text(), u"NumRegistro"_s}});
    return existe ? grabarCambio() : grabarNueva();
}

bool frm07_DetallesHojasCampo::grabarCambio() {
    mantenimiento_.ObtenerDatosControles();
    if (!mantenimiento_.ModificarRegistro()) return false;
    quitarFila(txtNumRegistro.Text());
    agregarFila();
    borrarCampos();
    forms::host().DoEvents();
    estadoVacio();
    return true;
}

bool frm07_DetallesHojasCampo::grabarNueva() {
    // The descriptors still hold what the checks read: a search that finds nothing leaves them alone.
    gCapturaGrabada = true;
    if (!mantenimiento_.InsertarRegistro()) return false;
    agregarFila();
    prepararSiguiente();
    fraCabeceras.BringToFront();
    return true;
}

// --- Opening for change

void frm07_DetallesHojasCampo::cmdModificar_Click() {
    const forms::ListView& lista = lstDetallesCabecerasHoja;
    if (lista.Selected() < 0) return;
    gModificando = true;
    gOriginalAnilla = lista.SelectedText(captura::kAnilla);
    gOriginalCentro = lista.SelectedText(captura::kCentro);
    gOriginalHora = lista.SelectedText(captura::kHora);
    txtNumRegistro.SetText(basic::Trim(lista.SelectedText()));
    // A step that fails does not hold up the ones behind it.
    basic::resumeNext([this] { tomarHojaDeLaFila(); });
    gOriginalFecha = fechaParaSql(lblTxtFecha.Caption());
    ponerListaDelante(false);
    basic::resumeNext([this] { B_Buscar_Click(); });
    cmdNuevo.SetEnabled(false);
    mostrarSegunTipo();
    cmdVerListaCapturas.SetVisible(true);
    cmdVerCaptura.SetVisible(false);
    cmdModificar.SetEnabled(false);
    cmdGrabar.SetEnabled(true);
    if (cboEdad.ListIndex() != captura::kPollo) cboTamañoNidada.SetEnabled(false);
    // The list says so by itself only when its choice differs from the capture shown before.
    if (cboInfoAnilla.ListIndex() != captura::kAdmiteSustituida) AnillaSustituida.SetEnabled(false);
}

}  // namespace tarmel
