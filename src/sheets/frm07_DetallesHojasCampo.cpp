#include "sheets/frm07_DetallesHojasCampo.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Pantallas.h"
#include "sheets/HojasComun.h"
#include "sheets/frm06_HojasCampo.h"

// The capture screen: its life, the states of its fields, its keys.
namespace tarmel {

using namespace Qt::StringLiterals;
using forms::Tint;
namespace key = forms::key;

namespace {

using Capturas = frm07_DetallesHojasCampo;
constexpr Orden<Capturas> kOrdenes[] = {
    {&Capturas::cmdNuevo, &Capturas::cmdNuevo_Click, key::F1},
    {&Capturas::cmdGrabar, &Capturas::cmdGrabar_Click, key::F3},
    {&Capturas::cmdSalir, &Capturas::cmdSalir_Click, key::F7},
    {&Capturas::B_Buscar, &Capturas::B_Buscar_Click, key::F8},
    {&Capturas::cmdEliminar, &Capturas::cmdEliminar_Click, key::F11},
    {&Capturas::cmdModificar, &Capturas::cmdModificar_Click, key::F12},
    {&Capturas::cmdVerListaCapturas,
     &Capturas::cmdVerListaCapturas_Click},  // F5 is the visible one of the two
    {&Capturas::cmdVerCaptura, &Capturas::cmdVerCaptura_Click},
};

}  // namespace

frm07_DetallesHojasCampo::frm07_DetallesHojasCampo() : Form(kName, u"Detalle Hoja de Campo"_s) {
    fraCabeceras.Holds({&cboTipoRegistro,  &cboCentro,     &txtNumAnilla,  &lblTxtAnilla,   &cboInfoAnilla,
                        &AnillaSustituida, &dbcboEspecie,  &lblIdEspecie,  &lblCodEspecie,  &cboEdad,
                        &cboTamañoNidada,  &cboSexo,       &txtAla,        &txtF8,          &txtPeso,
                        &txtTarso,         &cboMuda,       &cboPlaca,      &cboGrasa,       &cboMusculo,
                        &dtpHoraInicio,    &cboPrecision,  &cboModo,       &cboEstado,      &cboReclamo,
                        &cboManipulacion,  &cboTransporte, &lblCondicion,  &cboCondicion,   &lblCircunstancia,
                        &cboCircunstancia, &txtIniciales,  &txtParentesco, &ckMantenerDato, &optIbericas,
                        &optTodas});
    cboTipoRegistro.AddItem(u"A .-. Anillamiento"_s);
    cboTipoRegistro.AddItem(u"R .-. Recuperación"_s);
    ckMantenerDato.SetVisible(false);
    describirControles();
    conectar();
    ponerListaDelante(false);
}

void frm07_DetallesHojasCampo::describirControles() {
    DescribirControles({
        {&txtNumRegistro, u"Número de registro"_s},
        {&B_Buscar, u"Buscar la captura"_s, u"Pulse este botón para buscar por el código. (F8)"_s},
        {&cboTipoRegistro, u"Tipo de registro"_s},
        {&cboCentro, u"Centro"_s},
        {&txtNumAnilla, u"Número de anilla"_s},
        {&cboInfoAnilla, u"Información de la anilla"_s},
        {&AnillaSustituida, u"Anilla sustituida"_s},
        {&dbcboEspecie, u"Especie"_s},
        {&cboEdad, u"Edad"_s},
        {&cboTamañoNidada, u"Tamaño de la nidada"_s},
        {&cboSexo, u"Sexo"_s},
        {&txtAla, u"Ala"_s},
        {&txtF8, u"F8"_s},
        {&txtPeso, u"Peso"_s},
        {&txtTarso, u"Tarso"_s},
        {&cboMuda, u"Muda"_s},
        {&cboPlaca, u"Placa"_s},
        {&cboGrasa, u"Grasa"_s},
        {&cboMusculo, u"Músculo"_s},
        {&dtpHoraInicio, u"Hora"_s},
        {&cboPrecision, u"Precisión de la fecha"_s},
        {&cboModo, u"Modo"_s},
        {&cboEstado, u"Estado"_s},
        {&cboReclamo, u"Reclamo"_s},
        {&cboManipulacion, u"Manipulación"_s},
        {&cboTransporte, u"Transporte"_s},
        {&cboCondicion, u"Condición"_s},
        {&cboCircunstancia, u"Circunstancia"_s},
        {&txtIniciales, u"Iniciales del anillador"_s},
        {&txtParentesco, u"Parentesco"_s},
        {&lstDetallesCabecerasHoja, u"Lista de capturas"_s},
    });
}

void frm07_DetallesHojasCampo::conectar() {
    ConectarOrdenes(*this, kOrdenes);
    otrosDatos.Conectar(cmdOtrosDatos);
    const auto alPulsar = [this](forms::Control& control, void (Capturas::*orden)()) {
        control.Click = [this, orden] { (this->*orden)(); };
    };
    alPulsar(cboTipoRegistro, &Capturas::cboTipoRegistro_Click);
    alPulsar(cboEdad, &Capturas::cboEdad_Click);
    alPulsar(cboInfoAnilla, &Capturas::cboInfoAnilla_Click);
    alPulsar(optIbericas, &Capturas::optIbericas_Click);
    alPulsar(optTodas, &Capturas::optTodas_Click);
    alPulsar(lstDetallesCabecerasHoja, &Capturas::lstDetallesCabecerasHoja_Click);

    dbcboEspecie.Change = [this] { dbcboEspecie_Change(); };
    txtNumAnilla.KeyPress = SoloTeclasDeAnilla;
    txtNumAnilla.LostFocus = [this] { txtNumAnilla_LostFocus(); };
    AnillaSustituida.KeyPress = SoloTeclasDeAnilla;

    const auto esMedida = [this](forms::TextBox& medida, int decimales) {
        medida.KeyPress = [&medida](int& tecla) { SoloTeclasDeMedida(medida, tecla); };
        medida.LostFocus = [this, &medida, decimales] { medida_LostFocus(medida, decimales); };
    };
    esMedida(txtAla, 1);
    esMedida(txtF8, 1);
    esMedida(txtPeso, 1);
    esMedida(txtTarso, 2);
    for (forms::ComboBox* combo : {&cboPlaca, &cboGrasa, &cboMusculo})
        combo->LostFocus = [this, combo] { reserva_LostFocus(*combo); };

    txtParentesco.KeyPress = RechazarSeparadores;
    txtIniciales.KeyPress = RechazarSeparadores;
    txtIniciales.LostFocus = [this] { txtIniciales.SetText(basic::UCase(txtIniciales.Text())); };

    lstDetallesCabecerasHoja.DblClick = [this] { lstDetallesCabecerasHoja_DblClick(); };
    lstDetallesCabecerasHoja.KeyDown = [this](int& tecla) { lstDetallesCabecerasHoja_KeyDown(tecla); };
    lstDetallesCabecerasHoja.GotFocus = [this] {
        constexpr int columnaFecha = 3;
        lstDetallesCabecerasHoja.SetSortKey(columnaFecha);
    };
    lstDetallesCabecerasHoja.ColumnClick = [this](int columna) {
        OrdenarPorColumna(lstDetallesCabecerasHoja, columna);
    };
}

std::vector<clsClassMantenimientos::Campo> frm07_DetallesHojasCampo::camposCaptura() {
    using Campo = clsClassMantenimientos::Campo;
    const auto clave = [](const QString& columna, forms::Control& control) {
        return Campo{.NombreCampo = columna,
                     .CampoClave = true,
                     .TipoDatos = u"Numerico"_s,
                     .Tamaño = 7,
                     .Obligatorio = true,
                     .ControlRelacionado = &control};
    };
    const auto obligatorio = [](const QString& columna, forms::Control& control, int tamaño = 0) {
        return Campo{
            .NombreCampo = columna, .Tamaño = tamaño, .Obligatorio = true, .ControlRelacionado = &control};
    };
    const auto libre = [](const QString& columna, forms::Control& control, int tamaño = 0) {
        return Campo{.NombreCampo = columna, .Tamaño = tamaño, .ControlRelacionado = &control};
    };
    const auto medida = [](const QString& columna, forms::Control& control, int tamaño) {
        return Campo{.NombreCampo = columna,
                     .TipoDatos = u"Decimal"_s,
                     .Tamaño = tamaño,
                     .ControlRelacionado = &control};
    };
    const Campo especie{.NombreCampo = u"IdEspecie"_s,
                        .Obligatorio = true,
                        .ControlRelacionado = &lblIdEspecie,
                        .CampoRelacionado = u"NombreEspecie"_s,
                        .NombreTablaCampo = u"ANIBRD"_s};
    return {
        clave(u"IdCabecera"_s, lblIdCabecera),
        clave(u"NumRegistro"_s, txtNumRegistro),
        obligatorio(u"TipoRegistro"_s, cboTipoRegistro),
        obligatorio(u"CodigoCentro"_s, cboCentro),
        obligatorio(u"NumeroAnilla"_s, txtNumAnilla, 8),
        obligatorio(u"InfoAnilla"_s, cboInfoAnilla),
        libre(u"AnillaSustituida"_s, AnillaSustituida, 8),
        especie,
        obligatorio(u"CodigoEdad"_s, cboEdad),
        libre(u"TamañoNidada"_s, cboTamañoNidada),
        obligatorio(u"CodigoSexo"_s, cboSexo),
        libre(u"CodigoManipulacion"_s, cboManipulacion),
        libre(u"CodigoTransporte"_s, cboTransporte),
        libre(u"CodigoCircunstancia"_s, cboCircunstancia, 2),
        libre(u"CodigoCondicion"_s, cboCondicion, 1),
        medida(u"Ala"_s, txtAla, 5),
        medida(u"F8"_s, txtF8, 5),
        medida(u"Peso"_s, txtPeso, 7),
        medida(u"Tarso"_s, txtTarso, 5),
        libre(u"CodigoPlaca"_s, cboPlaca, 1),
        libre(u"CodigoGrasa"_s, cboGrasa, 1),
        libre(u"CodigoMusculo"_s, cboMusculo),
        obligatorio(u"HoraCaptura"_s, dtpHoraInicio),
        libre(u"PrecisionFecha"_s, cboPrecision),
        libre(u"CodigoEstado"_s, cboEstado, 1),
        obligatorio(u"CodigoEstatus"_s, cboModo),
        libre(u"CodigoMuda"_s, cboMuda),
        libre(u"CodigoReclamo"_s, cboReclamo, 1),
        libre(u"IniAnillador"_s, txtIniciales, 25),
        libre(u"Parentesco"_s, txtParentesco, 3),
        libre(u"Observaciones"_s, otrosDatos.TxtObservaciones, 250),
        libre(u"Dato1"_s, otrosDatos.txtDato1, 5),
        libre(u"Dato2"_s, otrosDatos.txtDato2, 5),
        libre(u"Dato3"_s, otrosDatos.txtDato3, 5),
        obligatorio(u"Anilla"_s, lblTxtAnilla, 10),
        libre(u"Dato4"_s, otrosDatos.txtDato4, 5),
        libre(u"Dato5"_s, otrosDatos.txtDato5, 5),
        libre(u"Dato6"_s, otrosDatos.txtDato6, 5),
        libre(u"CodigoEspecie"_s, lblCodEspecie, 5),
    };
}

void frm07_DetallesHojasCampo::Load() {
    mantenimiento_.NombreTabla(u"ANIAHO"_s);
    mantenimiento_.Formulario(*this);
    mantenimiento_.Describir(camposCaptura());
    mantenimiento_.SoloNumeros();
    mantenimiento_.EstablecerLongitudControles();
    mantenimiento_.BorrarDatosControles();
    llenarCombos();
    optIbericas.SetValue(true);
    MostrarSesion(*this);
    gModificando = false;
    otrosDatos.Ocultar();
    colorearObligatorios();
    CentrarFormulario(*this);
    if (modo() == Modo::Hoja) {
        mantenimiento_.ControlesEnabledDisable(true);
        if (const auto* hojas = forms::pantallas().Loaded<frm06_HojasCampo>())
            TomarHoja(hojas->lblIdCabecera.Caption(), hojas->txtNumHoja.Text());
    } else {
        cmdNuevo.SetEnabled(false);
        cmdEliminar.SetEnabled(true);
        ponerListaDelante(true);
    }
}

void frm07_DetallesHojasCampo::llenarCombos() {
    struct Lista {
        forms::ComboBox* combo;
        QString sql;
        QString codigo;
        QString nombre;
    };
    const Lista listas[] = {
        {&cboCentro, u"SELECT * FROM ICAFRO "_s, u"CodigoCentro"_s, u"NombreCentro"_s},
        {&cboCircunstancia, u"SELECT * FROM ICACIR"_s, u"CodigoCircunstancia"_s, u"NombreCircunstancia"_s},
        {&cboCondicion, u"SELECT * FROM ICACON"_s, u"CodigoCondicion"_s, u"NombreCondicion"_s},
        {&cboEdad, u"SELECT * FROM ICAAGE"_s, u"CodigoEdad"_s, u"NombreEdad"_s},
        {&cboSexo, u"SELECT * FROM ICASEX"_s, u"CodigoSexo"_s, u"NombreSexo"_s},
        {&cboReclamo, u"SELECT * FROM ANIRECLAMO"_s, u"CodigoReclamo"_s, u"NombreReclamo"_s},
        {&cboModo, u"SELECT * FROM ICASTA ORDER BY CODIGOESTATUS"_s, u"CodigoEstatus"_s, u"NombreEstatus"_s},
        {&cboMuda, u"SELECT * FROM ICAMUDA"_s, u"CodigoMuda"_s, u"NombreMuda"_s},
        {&cboMusculo, u"SELECT * FROM ANIMUS"_s, u"CodigoMusculo"_s, u"NombreMusculo"_s},
        {&cboGrasa, u"SELECT * FROM ANIGRA"_s, u"CodigoGrasa"_s, u"NombreGrasa"_s},
        {&cboPlaca, u"SELECT * FROM ANIPLACA"_s, u"CodigoPlaca"_s, u"NombrePlaca"_s},
        {&cboEstado, u"SELECT * FROM ANIESTADO"_s, u"CodigoEstado"_s, u"NombreEstado"_s},
        {&cboInfoAnilla, u"SELECT * FROM ICAINFORNG"_s, u"InfoAnilla"_s, u"NombreInfoAnilla"_s},
        {&cboPrecision, u"SELECT * FROM ICAPRECISION"_s, u"CodigoPrecision"_s, u"NombrePrecision"_s},
        {&cboManipulacion, u"SELECT * FROM ICAMANIP"_s, u"CodigoManipulacion"_s, u"NombreManipulacion"_s},
        {&cboTransporte, u"SELECT * FROM ICATRANS"_s, u"CodigoTransporte"_s, u"NombreTransporte"_s},
        {&cboTamañoNidada, u"SELECT * FROM ICATAM"_s, u"CodigoTamañoNidada"_s, u"NombreTamañoNidada"_s},
    };
    for (const Lista& lista : listas)
        LlenarCombo(*lista.combo, gConexion, lista.sql, lista.codigo, lista.nombre);
}

frm07_DetallesHojasCampo::Modo frm07_DetallesHojasCampo::modo() {
    if (!gFiltroAnillas.isEmpty()) return Modo::Seleccion;
    if (gListaDuplicados) return Modo::Duplicados;
    if (gListaAnillas) return Modo::ListaAnillas;
    return Modo::Hoja;
}

void frm07_DetallesHojasCampo::TomarHoja(const QString& idCabecera, const QString& numHoja) {
    lblIdCabecera.SetCaption(idCabecera);
    lblTxtNumHoja.SetCaption(numHoja);
    if (idCabecera.isEmpty()) return;
    // From the database: the sheet screen may show a row of its list whose fields it has not read.
    ado::Recordset hoja;
    hoja.Open(
        u"SELECT ANILOC.Municipio, ANILOC.NombreLocalidad, ANILOC.CodigoLocalidad, ANICHO.FechaCaptura "
        u"FROM ANICHO LEFT JOIN ANILOC ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad "
        u"WHERE ANICHO.IdCabecera = "_s +
            idCabecera,
        gConexion);
    if (hoja.Eof()) return;
    const bool conLugar = !hoja.Text(u"CodigoLocalidad"_s).isEmpty();
    lbltxtLocalidad.SetCaption(conLugar ? TextoDeLocalidad(hoja) : QString());
    lblTxtFecha.SetCaption(hoja.Text(u"FechaCaptura"_s));
}

void frm07_DetallesHojasCampo::UnloadEvent() {
    cargandoLista_ = false;
    const bool deUnaHoja = !gListaAnillas && !gListaDuplicados && !lblTxtNumHoja.Caption().isEmpty() &&
                           !lblIdCabecera.Caption().isEmpty();
    auto* const hojas = forms::pantallas().Loaded<frm06_HojasCampo>();
    if (deUnaHoja && hojas && !hojas->EscribiendoHojaNueva()) {
        hojas->txtNumHoja.SetText(lblTxtNumHoja.Caption());
        hojas->lblIdCabecera.SetCaption(lblIdCabecera.Caption());
        hojas->B_Buscar_Click();
        if (hojas->lstCabecerasHoja.Visible()) hojas->cmdNuevo.SetEnabled(true);
    }
    gListaAnillas = false;
    gListaDuplicados = false;
}

// --- States of the fields

/// Clears everything but the sheet: its identifier and number are labels of the record too, and a capture
/// never loses its sheet.
void frm07_DetallesHojasCampo::borrarCampos() {
    const QString idCabecera = lblIdCabecera.Caption();
    const QString numHoja = lblTxtNumHoja.Caption();
    mantenimiento_.BorrarDatosControles();
    mantenimiento_.BorrarDatos();
    dbcboEspecie.SetText({});
    lblIdCabecera.SetCaption(idCabecera);
    lblTxtNumHoja.SetCaption(numHoja);
}

void frm07_DetallesHojasCampo::estadoVacio() {
    borrarCampos();
    mantenimiento_.HabilitarBotones();
    mantenimiento_.ControlesEnabledDisable(false);
    cmdEliminar.SetEnabled(false);
    cmdGrabar.SetEnabled(false);
    lblTxtAnilla.SetCaption({});
    txtNumAnilla.SetText({});
    txtNumRegistro.SetEnabled(true);
    B_Buscar.SetEnabled(true);
    txtNumRegistro.SetFocus();
}

void frm07_DetallesHojasCampo::estadoNuevo() {
    borrarCampos();
    mantenimiento_.HabilitarBotones();
    mantenimiento_.ControlesEnabledDisable(true);
    colorearObligatorios();
    for (forms::Control* control : std::initializer_list<forms::Control*>{
             &cmdNuevo, &cmdEliminar, &cmdModificar, &B_Buscar, &txtNumRegistro})
        control->SetEnabled(false);
    cmdVerListaCapturas.SetVisible(true);
    cmdVerCaptura.SetVisible(false);
    ponerListaDelante(false);
    cboCentro.SetFocus();
}

void frm07_DetallesHojasCampo::estadoMostrado() {
    mantenimiento_.HabilitarBotones();
    mantenimiento_.ControlesEnabledDisable(true);
    for (forms::Control* control :
         std::initializer_list<forms::Control*>{&cmdNuevo, &B_Buscar, &txtNumRegistro})
        control->SetEnabled(false);
}

void frm07_DetallesHojasCampo::colorearObligatorios() {
    for (forms::Control* control : std::initializer_list<forms::Control*>{
             &txtNumRegistro, &cboTipoRegistro, &cboCentro, &txtNumAnilla, &dbcboEspecie, &cboEdad, &cboSexo,
             &cboModo, &cboManipulacion, &cboTransporte})
        control->SetTint(Tint::Mandatory);
}

// --- Keys

void frm07_DetallesHojasCampo::FormKeyDown(int& tecla) {
    if (tecla != key::F5) return AtenderTecla(*this, kOrdenes, tecla);
    tecla = 0;
    const bool aLaLista = cmdVerListaCapturas.Visible();
    if (!(aLaLista ? cmdVerListaCapturas : cmdVerCaptura).Enabled()) return;
    aLaLista ? cmdVerListaCapturas_Click() : cmdVerCaptura_Click();
}

void frm07_DetallesHojasCampo::FormKeyPress(int& caracter) {
    EnterComoTab(*this, caracter);
}

}  // namespace tarmel
