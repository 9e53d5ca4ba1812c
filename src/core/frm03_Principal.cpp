#include "core/frm03_Principal.h"

#include <QHash>
#include <array>

#include "core/ActualizaVersion.h"
#include "core/Ayuda.h"
#include "core/CopiasSeguridad.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "core/frm02_Matricula.h"
#include "database/Mantenimiento.h"
#include "engine/clsclassTratamientoErr.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QString kHojas = u"frm06_HojasCampo"_s;
const QString kCapturas = u"frm07_DetallesHojasCampo"_s;

using Orden = void (frm03_Principal::*)();

struct EntradaMenu {
    QString nombre;
    QString titulo;  ///< "-": a separator
    QString padre;   ///< empty: in the bar
    Orden orden = nullptr;
};

/// The whole menu, in order.
const std::vector<EntradaMenu>& entradasMenu() {
    using P = frm03_Principal;
    static const std::vector<EntradaMenu> entradas{
        {u"mnuActualizacion"_s, u"&Actualización de tablas"_s, {}},
        {u"mnuActualizacionLocalidades"_s, u"&Localidades"_s, u"mnuActualizacion"_s,
         &P::mnuActualizacionLocalidades_Click},
        {u"mnuL4"_s, u"-"_s, u"mnuActualizacion"_s},
        {u"mnuActualizacionEspecies"_s, u"&Especies"_s, u"mnuActualizacion"_s,
         &P::mnuActualizacionEspecies_Click},

        {u"mnuHojas"_s, u"&Hojas de campo"_s, {}},
        {u"mnuListadoHojas"_s, u"Listado de hojas de campo"_s, u"mnuHojas"_s, &P::mnuListadoHojas_Click},
        {u"mnuNuevaHoja"_s, u"Nueva hoja de campo"_s, u"mnuHojas"_s, &P::mnuNuevaHoja_Click},

        {u"mnuAnillas"_s, u"A&nillas"_s, {}},
        {u"mnuListadoAnillas"_s, u"Listado de anillas"_s, u"mnuAnillas"_s},
        {u"mnuListadoAnillasTodas"_s, u"Mostrar todas las anillas"_s, u"mnuListadoAnillas"_s,
         &P::mnuListadoAnillasTodas_Click},
        {u"mnuListadoAnillasSeleccion"_s, u"Seleccionar anillas"_s, u"mnuListadoAnillas"_s,
         &P::mnuListadoAnillasSeleccion_Click},
        {u"mnuL11"_s, u"-"_s, u"mnuAnillas"_s},
        {u"mnuAnillasDuplicadas"_s, u"&Registros duplicados"_s, u"mnuAnillas"_s,
         &P::mnuAnillasDuplicadas_Click},
        {u"mnuL10"_s, u"-"_s, u"mnuAnillas"_s},
        {u"mnuAlmacenAnillas"_s, u"Almacén de anillas"_s, u"mnuAnillas"_s, &P::mnuAlmacenAnillas_Click},
        {u"mnuAnillasGestionModelos"_s, u"Gestión de modelos de anillas"_s, u"mnuAnillas"_s,
         &P::mnuAnillasGestionModelos_Click},

        {u"mnuImprimir"_s, u"&Imprimir"_s, {}, &P::mnuImprimir_Click},

        {u"mnuDatos"_s, u"&Datos"_s, {}},
        {u"mnuImportarDatos"_s, u"&Importar Datos"_s, u"mnuDatos"_s, &P::mnuImportarDatos_Click},
        {u"mnuL9"_s, u"-"_s, u"mnuDatos"_s},
        {u"mnuExportarDatos"_s, u"&Exportar datos"_s, u"mnuDatos"_s, &P::mnuExportarDatos_Click},

        {u"mnuConsulta"_s, u"&Consultar Datos"_s, {}},
        {u"mnuConsultarInformes"_s, u"Informes y balances"_s, u"mnuConsulta"_s,
         &P::mnuConsultarInformes_Click},
        {u"mnuConsultarContador"_s, u"Contador de registros"_s, u"mnuConsulta"_s,
         &P::mnuConsultarContador_Click},

        {u"mnuUtilidades"_s, u"&Utilidades"_s, {}},
        {u"mnuUsuario"_s, u"Cambio &Usuario"_s, u"mnuUtilidades"_s, &P::mnuUsuario_Click},
        {u"mnuL8"_s, u"-"_s, u"mnuUtilidades"_s},
        {u"mnuCompactar"_s, u"&Compactar Base de Datos"_s, u"mnuUtilidades"_s, &P::mnuCompactar_Click},
        {u"mnuL2"_s, u"-"_s, u"mnuUtilidades"_s},
        {u"mnuBorrar"_s, u"&Borrar"_s, u"mnuUtilidades"_s},
        {u"mnuBorrarHojas"_s, u"Borrar &Hojas"_s, u"mnuBorrar"_s, &P::mnuBorrarHojas_Click},
        {u"mnuL3"_s, u"-"_s, u"mnuBorrar"_s},
        {u"mnuBorrarFicherosExportados"_s, u"Borrar &Ficheros Exportados"_s, u"mnuBorrar"_s,
         &P::mnuBorrarFicherosExportados_Click},
        {u"mnuL5"_s, u"-"_s, u"mnuUtilidades"_s},
        {u"mnuActualizarBD"_s, u"Actualizar BD"_s, u"mnuUtilidades"_s, &P::mnuActualizarBD_Click},
        {u"mnuL6"_s, u"-"_s, u"mnuUtilidades"_s},
        {u"mnuAyuda"_s, u"Ayuda"_s, u"mnuUtilidades"_s, &P::mnuAyuda_Click},

        {u"mnuSalir"_s, u"&Salir"_s, {}, &P::mnuSalir_Click},
    };
    return entradas;
}

struct BotonBarra {
    QString clave;
    QString ayuda;
    Orden orden;
};

const std::array<BotonBarra, 8>& botonesBarra() {
    using P = frm03_Principal;
    static const std::array<BotonBarra, 8> botones{{
        {u"Localidades"_s, u"Actualización Localidades"_s, &P::mnuActualizacionLocalidades_Click},
        {u"Especies"_s, u"Actualización Especies"_s, &P::mnuActualizacionEspecies_Click},
        {u"HojasCampo"_s, u"Hojas de Campo"_s, &P::mnuListadoHojas_Click},
        {u"Imprimir"_s, u"Imprimir Hojas Campo"_s, &P::mnuImprimir_Click},
        {u"ExportarDatos"_s, u"Exportar datos"_s, &P::mnuExportarDatos_Click},
        {u"Anillas"_s, u"Listado de Anillas"_s, &P::mnuListadoAnillasTodas_Click},
        {u"Almacen"_s, u"Almacén de anillas"_s, &P::mnuAlmacenAnillas_Click},
        {u"Contador"_s, u"Contador de registros"_s, &P::mnuConsultarContador_Click},
    }};
    return botones;
}

/// When a command's message is written: the commands that open a modal screen or the counter write it when
/// the show has returned.
enum class Mensaje { AntesDeMostrar, DespuesDeMostrar };

struct Apertura {
    QString pantalla;
    forms::Modality modo = forms::Modality::Modeless;
    bool reloj = true;
    QString mensaje = {};
    Mensaje momento = Mensaje::AntesDeMostrar;
    QString pulsar = {};  ///< a button of the screen that the command clicks once it is shown
};

void ponerPuntero(forms::Pointer puntero) {
    forms::host().SetPointer(puntero);
}

void mostrar(const QString& pantalla, forms::Modality modo = forms::Modality::Modeless) {
    forms::pantallas().Get(pantalla).Show(modo);
}

/// Clicks a button of a screen, as code may even when the button is hidden or disabled.
void pulsarBoton(const QString& pantalla, const QString& boton) {
    const forms::Control* const control = forms::pantallas().Get(pantalla).Find(boton);
    if (!control || !control->Click) throw basic::RuntimeError(basic::error::ObjectNotSet);
    control->Click();
}

/// Message, hourglass, show, pointer back, message cleared.
void abrir(const Apertura& apertura) {
    if (apertura.momento == Mensaje::AntesDeMostrar) MostrarMensajeEstado(apertura.mensaje);
    if (apertura.reloj) ponerPuntero(forms::Pointer::Hourglass);
    mostrar(apertura.pantalla, apertura.modo);
    if (!apertura.pulsar.isEmpty()) pulsarBoton(apertura.pantalla, apertura.pulsar);
    if (apertura.momento == Mensaje::DespuesDeMostrar) MostrarMensajeEstado(apertura.mensaje);
    ponerPuntero(forms::Pointer::Default);
    MostrarMensajeEstado({});
}

}  // namespace

frm03_Principal::frm03_Principal() : Form(kName, u"Captura de datos de campo"_s) {
    IsFrameWindow = true;
    hacerMenus();
    hacerBarras();
}

void frm03_Principal::hacerMenus() {
    QHash<QString, forms::MenuItem*> hechos;
    for (const EntradaMenu& entrada : entradasMenu()) {
        auto menu = std::make_unique<forms::MenuItem>(*this, entrada.nombre, entrada.titulo,
                                                      hechos.value(entrada.padre, nullptr));
        if (entrada.orden) menu->Click = [this, orden = entrada.orden] { (this->*orden)(); };
        hechos.insert(entrada.nombre, menu.get());
        menus_.push_back(std::move(menu));
    }
}

void frm03_Principal::hacerBarras() {
    for (const BotonBarra& boton : botonesBarra())
        tlbBarraHerramientas.AddButton(boton.clave, boton.ayuda);
    tlbBarraHerramientas.ButtonClick = [this](const QString& key) { tlbBarraHerramientas_ButtonClick(key); };

    using Clase = forms::StatusBar::PanelKind;
    const QString ayudaFecha = u"Haga click aquí para cambiar la fecha o la hora."_s;
    staStatusBar.AddPanel(u"Messages"_s, u"Muestra los mensajes de sucesos del programa."_s, Clase::Text);
    staStatusBar.AddPanel(u"Date"_s, ayudaFecha, Clase::Date);
    staStatusBar.AddPanel(u"Time"_s, ayudaFecha, Clase::Time);
    staStatusBar.PanelClick = [this](const QString& key) { staStatusBar_PanelClick(key); };
}

void frm03_Principal::Load() {
    // As the ringer sees them, with the blanks that the session had cut.
    const auto& matricula = forms::pantallas().Get<frm02_Matricula>();
    gAnillador[1] = matricula.txtAnillador.Text();
    gGrupo[1] = matricula.txtGrupo.Text();
    gEntidad[1] = matricula.txtEntidad.Text();
    pbVersion.SetCaption(gVersion.joined());
    empezarCopiasDiarias();
}

void frm03_Principal::UnloadEvent() {
    CerrarAplicacion();
}

void frm03_Principal::mnuActualizacionLocalidades_Click() {
    abrir({.pantalla = u"frm04_ActualizarLocalidades"_s,
           .mensaje = u"Cargando pantalla de localidades........"_s});
}

void frm03_Principal::mnuActualizacionEspecies_Click() {
    abrir({.pantalla = u"frm05_ActualizarEspecies"_s, .mensaje = u"Cargando pantalla de especies........"_s});
}

void frm03_Principal::mnuListadoHojas_Click() {
    abrir({.pantalla = kHojas,
           .mensaje = u"Cargando pantalla de hojas de campo........"_s,
           .pulsar = u"cmdVerListaHojas"_s});
}

void frm03_Principal::mnuNuevaHoja_Click() {
    mostrar(kHojas);
    pulsarBoton(kHojas, u"cmdNuevo"_s);
}

void frm03_Principal::mnuListadoAnillasTodas_Click() {
    abrirListaAnillas(u"Cargando pantalla de listado de anillas........"_s, false, u"Listado de anillas"_s);
}

void frm03_Principal::mnuListadoAnillasSeleccion_Click() {
    mostrar(u"frm18_SeleccionAnillas"_s, forms::Modality::Modal);
    if (gFiltroAnillas.isEmpty()) mnuListadoAnillasTodas_Click();
    abrirListaAnillas(u"Cargando pantalla de listado de anillas........"_s, false, u"Listado de anillas"_s);
}

void frm03_Principal::mnuAnillasDuplicadas_Click() {
    abrirListaAnillas(u"Cargando pantalla de listado de anillas duplicadas........"_s, true,
                      u"Listado de anillas duplicadas"_s);
    if (forms::Control* lista = forms::pantallas().Get(kCapturas).Find(u"lstDetallesCabecerasHoja"_s))
        lista->SetFocus();
}

void frm03_Principal::abrirListaAnillas(const QString& mensaje, bool duplicados, const QString& titulo) {
    forms::pantallas().Unload(kCapturas);  // so that it loads afresh, as a list
    MostrarMensajeEstado(mensaje);
    ponerPuntero(forms::Pointer::Hourglass);
    gListaDuplicados = duplicados;
    gListaAnillas = true;
    gMostrarLista = true;
    forms::pantallas().Get(kCapturas).Show();
    ponerPuntero(forms::Pointer::Default);
    MostrarMensajeEstado({});
    forms::Form& capturas = forms::pantallas().Get(kCapturas);
    capturas.SetCaption(titulo);
    if (forms::Control* otrosDatos = capturas.Find(u"PicOtrosDatos"_s)) otrosDatos->SetVisible(false);
}

void frm03_Principal::mnuAlmacenAnillas_Click() {
    mostrar(u"frm15_AlmacenAnillas"_s);
}

void frm03_Principal::mnuAnillasGestionModelos_Click() {
    mostrar(u"frm17_GestionAnillas"_s);
}

void frm03_Principal::mnuImprimir_Click() {
    abrir({.pantalla = u"frm08_ImprimirHojas"_s,
           .modo = forms::Modality::Modal,
           .reloj = false,
           .mensaje = u"Cargando el informe ........"_s,
           .momento = Mensaje::DespuesDeMostrar});
}

void frm03_Principal::mnuImportarDatos_Click() {
    abrir({.pantalla = u"frm09_ImportarDatos"_s, .modo = forms::Modality::Modal});
}

void frm03_Principal::mnuExportarDatos_Click() {
    gSQL = u"SELECT * FROM Datos_Duplicados "_s;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion, ado::Cursor::Keyset, ado::Lock::Optimistic);
    const bool hayDuplicados = gRS.RecordCount() != 0;
    gRS = ado::Recordset();
    if (hayDuplicados) {
        forms::MsgBox(
            u"El proceso de exportación de datos no puede realizarse porque existen registros duplicados "
            "en la base de datos. Por favor, revise la lista de registros duplicados."_s,
            forms::box::Critical, u"Exportación de datos"_s);
        return;
    }
    abrir({.pantalla = u"frm10_ExportarDatos"_s, .modo = forms::Modality::Modal});
}

void frm03_Principal::mnuConsultarInformes_Click() {
    abrir({.pantalla = u"frm11_Consultas"_s,
           .modo = forms::Modality::Modal,
           .mensaje = u"Cargando el informe ........"_s,
           .momento = Mensaje::DespuesDeMostrar});
}

void frm03_Principal::mnuConsultarContador_Click() {
    abrir({.pantalla = u"frm14_ContadorRegistros"_s,
           .mensaje = u"Consultando la base de datos ........"_s,
           .momento = Mensaje::DespuesDeMostrar});
}

void frm03_Principal::mnuUsuario_Click() {
    forms::pantallas().Get<frm02_Matricula>().Show();
}

void frm03_Principal::mnuCompactar_Click() {
    const QString titulo = u"Compactar BD"_s;
    const int respuesta = forms::MsgBox(
        u"Va a Compactar la base de datos.\r Esto modifica el tamaño de la base de datos, pero no su "
        "contenido.\r ¿Desea continuar?"_s,
        forms::box::YesNo + forms::box::Information, titulo);
    if (respuesta != forms::box::AnswerYes) return;
    try {
        ponerPuntero(forms::Pointer::Hourglass);
        // They hold rows of the database.
        for (const QString& pantalla :
             {u"frm04_ActualizarLocalidades"_s, u"frm05_ActualizarEspecies"_s, kHojas, kCapturas})
            forms::pantallas().Unload(pantalla);
        CompactarBase(gConexion, gRutaBD);
        AbrirConexion();
        ponerPuntero(forms::Pointer::Default);
        forms::MsgBox(u"El proceso de compactación ha terminado correctamente."_s, forms::box::Information,
                      titulo);
    } catch (const basic::RuntimeError& error) {
        MostrarErrorSQL(error);
        AbrirConexion();
        ponerPuntero(forms::Pointer::Default);
    }
}

void frm03_Principal::mnuBorrarHojas_Click() {
    abrir({.pantalla = u"frm13_BorrarRegistrosAnteriores"_s, .modo = forms::Modality::Modal});
}

void frm03_Principal::mnuBorrarFicherosExportados_Click() {
    const int respuesta = forms::MsgBox(
        u"Va a eliminar los ficheros comprimidos presentes en la carpeta Datos \r\r¿Desea continuar?\r"_s,
        forms::box::OKCancel + forms::box::Exclamation, u"Eliminar ficheros"_s);
    if (respuesta != forms::box::AnswerOK) return;
    ponerPuntero(forms::Pointer::Hourglass);
    BorrarFicheros(RutaEnAplicacion(u"Datos"_s), u"*.ZIP"_s);
    BorrarFicheros(RutaEnAplicacion(u"Datos"_s), u"*.TXT"_s);
    // The backslash is part of the pattern: the backup of the database stays.
    BorrarFicheros(ObtenerRutaAplicacion(), u"\\*.BAK"_s);
    forms::MsgBox(u"Se han borrado los ficheros."_s, forms::box::Information,
                  u"Borrado de ficheros exportados"_s);
    ponerPuntero(forms::Pointer::Default);
}

void frm03_Principal::mnuActualizarBD_Click() {
    MostrarMensajeEstado(u"Actualizando la base de datos........"_s);
    const QString titulo = u"Actualización de la base de datos"_s;
    if (NecesitaActualizar()) {
        EscribirIni(kSeccionIni, kClaveActualizacion, u"1"_s);
        ActualizarVersion();
        forms::MsgBox(u"La base de datos ya ha sido actualizada"_s, forms::box::Information, titulo);
    } else {
        forms::MsgBox(u"La base de datos ya está actualizada"_s, forms::box::Information, titulo);
    }
    MostrarMensajeEstado({});
}

void frm03_Principal::mnuAyuda_Click() {
    MostrarAyuda();
}

void frm03_Principal::mnuSalir_Click() {
    CerrarAplicacion();
}

void frm03_Principal::tlbBarraHerramientas_ButtonClick(const QString& key) {
    for (const BotonBarra& boton : botonesBarra()) {
        if (boton.clave == key) (this->*boton.orden)();
    }
    MostrarMensajeEstado({});
}

void frm03_Principal::staStatusBar_PanelClick(const QString& key) {
    if (key == u"Date"_s || key == u"Time"_s) forms::host().ShowDateTimeSettings();
}

}  // namespace tarmel
