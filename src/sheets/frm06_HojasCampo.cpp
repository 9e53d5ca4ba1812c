#include "sheets/frm06_HojasCampo.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "sheets/ColumnasHojas.h"
#include "sheets/HojasComun.h"

namespace tarmel {

using namespace Qt::StringLiterals;
using forms::Tint;
namespace key = forms::key;

namespace {

/// The place of the mist net in the list of methods: the one method that needs nets. By position, not by
/// code.
constexpr int kMetodoConRedes = 7;

using Hojas = frm06_HojasCampo;
constexpr Orden<Hojas> kOrdenes[] = {
    {&Hojas::cmdNuevo, &Hojas::cmdNuevo_Click, key::F1},
    {&Hojas::cmdGrabar, &Hojas::cmdGrabar_Click, key::F3},
    {&Hojas::cmdMostrarDetalle, &Hojas::cmdMostrarDetalle_Click, key::F6},
    {&Hojas::cmdSalir, &Hojas::cmdSalir_Click, key::F7},
    {&Hojas::B_Buscar, &Hojas::B_Buscar_Click, key::F8},
    {&Hojas::cmdEliminar, &Hojas::cmdEliminar_Click, key::F11},
    {&Hojas::cmdModificar, &Hojas::cmdModificar_Click, key::F12},
    {&Hojas::cmdVerHoja, &Hojas::cmdVerHoja_Click},  // F5 is the one of these two that is visible
    {&Hojas::cmdVerListaHojas, &Hojas::cmdVerListaHojas_Click},
};

/// Says that a key is no digit, and lets it pass: the box itself takes digits only.
void avisarSiNoEsCifra(int tecla, const QString& aviso) {
    constexpr int antesDelCero = u'/';
    if (tecla < antesDelCero || tecla > u'9') forms::MsgBox(aviso);
}

}  // namespace

// --- Life of the screen

frm06_HojasCampo::frm06_HojasCampo() : Form(kName, u"Hojas de campo"_s) {
    fraCabeceras.Holds({&dbcboLocalidad,
                        &lblCodLocalidad,
                        &lblProvincia,
                        &lblFechaCaptura,
                        &dtpCaptura,
                        &lblHoraInicio,
                        &dtpHoraInicio,
                        &lblHoraFin,
                        &dtpHoraFin,
                        &cboHabitat,
                        &cboMetodo,
                        &txtNumRedes,
                        &txtSuperficieRed,
                        &txtCampaña,
                        &txtCodigoEstacion,
                        &cboMañanaFuerzaViento,
                        &cboMañanaDireccionViento,
                        &cboMañanaNubosidad,
                        &cboMañanaPrecipitacion,
                        &cboTardeFuerzaViento,
                        &cboTardeDireccionViento,
                        &cboTardeNubosidad,
                        &cboTardePrecipitacion});
    describirControles();
    conectar();
    ponerListaDelante(true);
}

void frm06_HojasCampo::describirControles() {
    DescribirControles({
        {&txtNumHoja, u"Número de hoja"_s},
        {&B_Buscar, u"Buscar la hoja"_s, u"Pulse este botón para buscar por el código. (F8)"_s},
        {&dbcboLocalidad, u"Localidad"_s},
        {&dtpCaptura, u"Fecha de captura"_s},
        {&dtpHoraInicio, u"Hora de inicio"_s},
        {&dtpHoraFin, u"Hora de fin"_s},
        {&cboHabitat, u"Hábitat"_s},
        {&cboMetodo, u"Método de captura"_s},
        {&txtNumRedes, u"Número de redes"_s},
        {&txtSuperficieRed, u"Longitud de las redes"_s},
        {&txtCampaña, u"Campaña"_s},
        {&txtCodigoEstacion, u"Código de estación"_s},
        {&cboMañanaFuerzaViento, u"Fuerza del viento por la mañana"_s},
        {&cboMañanaDireccionViento, u"Dirección del viento por la mañana"_s},
        {&cboMañanaNubosidad, u"Nubosidad por la mañana"_s},
        {&cboMañanaPrecipitacion, u"Precipitación por la mañana"_s},
        {&cboTardeFuerzaViento, u"Fuerza del viento por la tarde"_s},
        {&cboTardeDireccionViento, u"Dirección del viento por la tarde"_s},
        {&cboTardeNubosidad, u"Nubosidad por la tarde"_s},
        {&cboTardePrecipitacion, u"Precipitación por la tarde"_s},
        {&lstCabecerasHoja, u"Lista de hojas de campo"_s},
    });
}

void frm06_HojasCampo::conectar() {
    ConectarOrdenes(*this, kOrdenes);
    otrosDatos.Conectar(cmdOtrosDatos);
    lstCabecerasHoja.Click = [this] { lstCabecerasHoja_Click(); };

    dbcboLocalidad.Change = [this] { dbcboLocalidad_Change(); };
    cboMetodo.LostFocus = [this] { cboMetodo_LostFocus(); };
    lstCabecerasHoja.DblClick = [this] { lstCabecerasHoja_DblClick(); };
    lstCabecerasHoja.KeyPress = [this](int& tecla) { lstCabecerasHoja_KeyPress(tecla); };
    lstCabecerasHoja.ColumnClick = [this](int columna) { OrdenarPorColumna(lstCabecerasHoja, columna); };

    txtCampaña.KeyPress = RechazarSeparadores;
    txtCodigoEstacion.KeyPress = RechazarSeparadores;
    txtNumRedes.KeyPress = [](int& tecla) {
        avisarSiNoEsCifra(tecla, u"El número de redes debe ser un número"_s);
    };
    txtSuperficieRed.KeyPress = [](int& tecla) {
        avisarSiNoEsCifra(tecla, u"La longitud de las redes debe ser un número"_s);
    };
}

std::vector<clsClassMantenimientos::Campo> frm06_HojasCampo::camposHoja() {
    using Campo = clsClassMantenimientos::Campo;
    const auto obligatorio = [](const QString& columna, forms::Control& control) {
        return Campo{.NombreCampo = columna, .Obligatorio = true, .ControlRelacionado = &control};
    };
    const auto libre = [](const QString& columna, forms::Control& control, int tamaño = 0) {
        return Campo{.NombreCampo = columna, .Tamaño = tamaño, .ControlRelacionado = &control};
    };
    const auto numero = [](const QString& columna, forms::Control& control, int tamaño) {
        return Campo{.NombreCampo = columna,
                     .TipoDatos = u"Numerico"_s,
                     .Tamaño = tamaño,
                     .ControlRelacionado = &control};
    };

    std::vector<Campo> campos{
        numero(u"IdCabecera"_s, lblIdCabecera, 0),
        numero(u"NumHoja"_s, txtNumHoja, 13),
        obligatorio(u"CodAnillador"_s, lblCodigoAnillador),
        obligatorio(u"CodLocalidad"_s, lblCodLocalidad),
        obligatorio(u"FechaCaptura"_s, dtpCaptura),
        obligatorio(u"CodigoHabitat"_s, cboHabitat),
        obligatorio(u"CodigoMetodo"_s, cboMetodo),
        numero(u"NumRedes"_s, txtNumRedes, 6),
        numero(u"LongitudRed"_s, txtSuperficieRed, 6),
        obligatorio(u"HoraDesde"_s, dtpHoraInicio),
        obligatorio(u"HoraHasta"_s, dtpHoraFin),
        libre(u"Campanna"_s, txtCampaña, 50),
        libre(u"CodigoEstacion"_s, txtCodigoEstacion, 50),
        libre(u"MannanaCodigoFuerza"_s, cboMañanaFuerzaViento),
        libre(u"MannanaCodigoDireccion"_s, cboMañanaDireccionViento),
        libre(u"MannanaCodigoNubosidad"_s, cboMañanaNubosidad),
        libre(u"MannanaCodigoLluvia"_s, cboMañanaPrecipitacion),
        libre(u"TardeCodigoFuerza"_s, cboTardeFuerzaViento),
        libre(u"TardeCodigoDireccion"_s, cboTardeDireccionViento),
        libre(u"TardeCodigoNubosidad"_s, cboTardeNubosidad),
        libre(u"TardeCodigoLluvia"_s, cboTardePrecipitacion),
        libre(u"Observaciones"_s, otrosDatos.TxtObservaciones, 250),
        libre(u"Dato1"_s, otrosDatos.txtDato1, 5),
        libre(u"Dato2"_s, otrosDatos.txtDato2, 5),
        libre(u"Dato3"_s, otrosDatos.txtDato3, 5),
        libre(u"Dato4"_s, otrosDatos.txtDato4, 5),
        libre(u"Dato5"_s, otrosDatos.txtDato5, 5),
        libre(u"Dato6"_s, otrosDatos.txtDato6, 5),
        libre(u"Anillador"_s, lblCodigoAnillador, 6),
        libre(u"Grupo"_s, lblCodigoGrupo, 6),
    };
    Campo& identificador = campos[0];
    identificador.CampoClave = true;
    identificador.Obligatorio = true;
    Campo& numHoja = campos[1];
    numHoja.Obligatorio = true;
    Campo& localidad = campos[3];
    localidad.CampoRelacionado = u"Municipio"_s;
    localidad.CampoRelacionado2 = u"NombreLocalidad"_s;
    localidad.NombreTablaCampo = u"ANILOC"_s;
    return campos;
}

void frm06_HojasCampo::Load() {
    gListaCargada = false;
    CentrarFormulario(*this);
    mantenimiento_.NombreTabla(u"ANICHO"_s);
    mantenimiento_.Formulario(*this);
    mantenimiento_.Describir(camposHoja());
    mantenimiento_.SoloNumeros();
    mantenimiento_.EstablecerLongitudControles();
    mantenimiento_.BorrarDatosControles();
    MostrarSesion(*this);
    llenarCombos();
    mantenimiento_.ControlesEnabledDisable(false);
    txtNumHoja.SetEnabled(true);  // a sheet can be looked up at once
    otrosDatos.Ocultar();
    cmdVerListaHojas.SetVisible(true);
    cmdVerHoja.SetVisible(false);
    cmdModificar.SetVisible(false);
    gModoModificar = false;
}

void frm06_HojasCampo::llenarCombos() {
    EnlazarDataCombo(
        dbcboLocalidad, gConexion,
        u"select  rtrim(Municipio) & '   ' & rtrim(NombreLocalidad) & ' .-. ' & CodigoLocalidad   as "
        u"Localidad, IdLocalidad  from aniloc order by Municipio, NombreLocalidad"_s,
        u"Localidad"_s, u"IdLocalidad"_s);
    const auto llenar = [](forms::ComboBox& combo, const QString& tabla, const QString& dato) {
        LlenarCombo(combo, gConexion, u"SELECT * FROM "_s + tabla, u"Codigo"_s + dato, u"Nombre"_s + dato);
    };
    llenar(cboHabitat, u"ICAHAB"_s, u"Habitat"_s);
    llenar(cboMetodo, u"ANIMCA"_s, u"Metodo"_s);
    llenar(cboMañanaFuerzaViento, u"ANIFVE"_s, u"Fuerza"_s);
    llenar(cboMañanaDireccionViento, u"ANIDVI"_s, u"Direccion"_s);
    llenar(cboMañanaNubosidad, u"ANINUB"_s, u"Nubosidad"_s);
    llenar(cboMañanaPrecipitacion, u"ANILLU"_s, u"Lluvia"_s);
    CopiarCombo(cboMañanaFuerzaViento, cboTardeFuerzaViento);
    CopiarCombo(cboMañanaDireccionViento, cboTardeDireccionViento);
    CopiarCombo(cboMañanaNubosidad, cboTardeNubosidad);
    CopiarCombo(cboMañanaPrecipitacion, cboTardePrecipitacion);
}

void frm06_HojasCampo::Activate() {
    MostrarMensajeEstado(u"Cargando Vista..."_s);
    gCargandoLista = true;
    if (!gCargaActiva && !gListaCargada) {
        gCargaActiva = true;
        if (!llenarLista()) {
            MostrarMensajeEstado({});
            Unload();
            return;
        }
    }
    if (B_Buscar.Enabled()) {
        txtNumHoja.SetEnabled(true);
        txtNumHoja.SetFocus();
    }
    gCargaActiva = false;
    gListaCargada = true;
    MostrarMensajeEstado({});
}

/// False when the filling failed or was stopped.
bool frm06_HojasCampo::llenarLista() {
    gSQL =
        u"SELECT *,FechaCaptura-#1/1/1900# AS DifFecha,LOC.NombreLocalidad, LOC.Municipio "
        u"FROM ANICHO INNER JOIN ANILOC as LOC ON ANICHO.CodLocalidad=LOC.CodigoLocalidad "_s;
    if (!gEsCoordinador) {
        const QString codigo = gCodAnillador.joined();
        gSQL += u" WHERE ANICHO.CodAnillador="_s + codigo + u" OR ANICHO.Anillador="_s + codigo;
    }
    gSQL += u" ORDER BY NumHoja"_s;
    const int filas =
        CargarListaGenerica(*this, lstCabecerasHoja, gConexion, gSQL, ColumnasDeLista(hoja::Columnas()),
                            {.anchoRelleno = kAnchoRelleno}, gCargandoLista);
    return filas != -1 && gCargandoLista;
}

void frm06_HojasCampo::FormKeyDown(int& tecla) {
    if (tecla != key::F5) return AtenderTecla(*this, kOrdenes, tecla);
    tecla = 0;
    cmdVerListaHojas.Visible() ? cmdVerListaHojas_Click() : cmdVerHoja_Click();
}

void frm06_HojasCampo::FormKeyPress(int& caracter) {
    EnterComoTab(*this, caracter);
}

// --- States of the fields

/// The list takes the place of the fields, or leaves it to them; the panel does not stay over either.
void frm06_HojasCampo::ponerListaDelante(bool delante) {
    otrosDatos.Ocultar();
    lstCabecerasHoja.SetVisible(delante);
    fraCabeceras.SetVisible(!delante);
}

bool frm06_HojasCampo::usaRedes() const {
    return cboMetodo.ListIndex() == kMetodoConRedes;
}

void frm06_HojasCampo::colorearObligatorios() {
    for (forms::Control* control :
         std::initializer_list<forms::Control*>{&txtNumHoja, &lblProvincia, &dbcboLocalidad, &cboHabitat,
                                                &cboMetodo, &lblFechaCaptura, &lblHoraInicio, &lblHoraFin})
        control->SetTint(Tint::Mandatory);
    if (!usaRedes()) return;
    txtNumRedes.SetTint(Tint::Mandatory);
    txtSuperficieRed.SetTint(Tint::Mandatory);
}

void frm06_HojasCampo::PrepararHojaNueva() {
    mantenimiento_.BorrarDatosControles();
    mantenimiento_.BorrarDatos();
    mantenimiento_.HabilitarBotones();
    mantenimiento_.ControlesEnabledDisable(true);
    for (forms::Control* control : std::initializer_list<forms::Control*>{
             &txtNumHoja, &cmdNuevo, &cmdMostrarDetalle, &cmdEliminar, &B_Buscar})
        control->SetEnabled(false);
    cmdModificar.SetEnabled(false);  // it would read another sheet over the one that is being typed
    lblProvincia.SetEnabled(true);
    cmdVerListaHojas.SetVisible(true);
    cmdVerHoja.SetVisible(false);
    colorearObligatorios();
    dtpCaptura.SetTint(Tint::Mandatory);
    ponerListaDelante(false);
}

void frm06_HojasCampo::PrepararHojaExistente() {
    mantenimiento_.HabilitarBotones();
    mantenimiento_.ControlesEnabledDisable(true);
    colorearObligatorios();
    for (forms::Control* control :
         std::initializer_list<forms::Control*>{&txtNumHoja, &cmdNuevo, &B_Buscar, &cmdGrabar})
        control->SetEnabled(false);
}

void frm06_HojasCampo::LimpiarHoja() {
    mantenimiento_.BorrarDatosControles();
    mantenimiento_.BorrarDatos();
    mantenimiento_.HabilitarBotones();
    mantenimiento_.ControlesEnabledDisable(false);
    txtNumRedes.SetTint(Tint::Normal);
    txtSuperficieRed.SetTint(Tint::Normal);
    for (forms::Control* control :
         std::initializer_list<forms::Control*>{&cmdEliminar, &cmdGrabar, &cmdMostrarDetalle, &lblProvincia})
        control->SetEnabled(false);
    lblProvincia.SetCaption({});
    dbcboLocalidad.SetText({});
    txtNumHoja.SetEnabled(true);
    B_Buscar.SetEnabled(true);
}

void frm06_HojasCampo::dbcboLocalidad_Change() {
    if (dbcboLocalidad.Text().isEmpty()) {
        // No sheet keeps a place that is not to be seen any more.
        lblCodLocalidad.SetCaption({});
        lblProvincia.SetCaption({});
        return;
    }
    if (dbcboLocalidad.BoundText().isEmpty()) return;  // a sheet's own text, which the list does not offer
    ado::Recordset filas;
    filas.Open(u"Select CodigoLocalidad, NombreProvincia FROM ANILOC, ICAPRO WHERE ANILOC.IdLocalidad = "_s +
                   dbcboLocalidad.BoundText() + u" AND ANILOC.CodigoProvincia = ICAPRO.CodigoProvincia"_s,
               gConexion, ado::Cursor::Static, ado::Lock::ReadOnly);
    if (filas.RecordCount() == 0) return;
    lblCodLocalidad.SetCaption(filas.Text(u"CodigoLocalidad"_s));
    lblProvincia.SetCaption(filas.Text(u"NombreProvincia"_s));
}

void frm06_HojasCampo::cboMetodo_LostFocus() {
    const bool redes = usaRedes();
    for (forms::TextBox* texto : {&txtNumRedes, &txtSuperficieRed}) {
        texto->SetEnabled(redes);
        texto->SetTint(redes ? Tint::Mandatory : Tint::Normal);
        if (!redes) texto->SetText({});
    }
    if (redes) txtNumRedes.SetFocus();
}

}  // namespace tarmel
