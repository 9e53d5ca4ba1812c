#include "exchange/frm09_ImportarDatos.h"

#include <QDir>
#include <array>

#include "core/CopiasSeguridad.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "exchange/A_EXP_EnvioDatos.h"
#include "exchange/A_IMP_ReciboDatos.h"
#include "exchange/Archivador.h"
#include "platform/basic/Text.h"
#include "platform/forms/Guards.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

constexpr int kPausaEntreArchivos = 1000;
constexpr int kAnchoLista = 5000;
constexpr int kLargoExtension = 4;

QString carpetaDatos() {
    return RutaEnAplicacion(u"Datos"_s);
}

void borrarFicherosDeTexto() {
    BorrarFicheroRecibido(carpetaDatos(), u"ANI*.TXT"_s);
}

void borrarTemporales() {
    borrarFicherosDeTexto();
    BorrarFicheroRecibido(carpetaDatos(), u"Temp.zip"_s);
}

/// What an import lays down in Datos, which goes however it ends: the copy of the archive would be taken for
/// one that was received, and half a file for a whole one.
struct Temporales {
    Temporales() = default;
    ~Temporales() { borrarTemporales(); }
    Temporales(const Temporales&) = delete;
    Temporales& operator=(const Temporales&) = delete;
};

}  // namespace

frm09_ImportarDatos::frm09_ImportarDatos() : Form(kName, u"Importar Datos"_s) {
    txtFichero.SetAccessibleName(u"Fichero a importar, sin la extensión ZIP"_s);
    txtFichero.SetToolTip(u"Nombre del archivo de la carpeta Datos."_s);
    FileControl.AddColumn(u"Archivos de la carpeta Datos"_s, kAnchoLista);
    FileControl.SetAccessibleName(u"Archivos de la carpeta Datos"_s);
    FileControl.SetToolTip(u"Doble clic o Intro para elegir el archivo."_s);
    cmdImportar.SetToolTip(u"Incorpora los datos recibidos a la base de datos."_s);
    cmdSalir.SetToolTip(u"Cierra esta pantalla."_s);
    cmdSalir.Cancel = true;
    fraOpciones.Holds({&optSeleccion, &optTodos});
    frmFichero.Holds({&lblFicheroImportar, &txtFichero, &Label1, &FileControl});
    frmBarra.Holds({&lblFichProcesado, &Progreso});

    optSeleccion.Click = [this] { optSeleccion_Click(); };
    optTodos.Click = [this] { optTodos_Click(); };
    txtFichero.LostFocus = [this] { txtFichero_LostFocus(); };
    FileControl.DblClick = [this] { FileControl_DblClick(); };
    FileControl.KeyPress = [this](int& caracter) {
        if (caracter == forms::key::Enter) FileControl_DblClick();
    };
    cmdImportar.Click = [this] { cmdImportar_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void frm09_ImportarDatos::Load() {
    CentrarFormulario(*this);
    optSeleccion.SetValue(true);
    forms::host().SetPointer(forms::Pointer::Default);
    mostrarMarcha(false);
}

void frm09_ImportarDatos::Activate() {
    listarFicheros();
    MostrarMensajeEstado(u"Importando Datos..."_s);
}

void frm09_ImportarDatos::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm09_ImportarDatos::listarFicheros() {
    FileControl.Clear();
    for (const QString& nombre : sys::find(carpetaDatos(), u"*.zip"_s))
        FileControl.Add(std::array{nombre});
}

void frm09_ImportarDatos::activarSeleccion(bool activar) {
    txtFichero.SetEnabled(activar);
    FileControl.SetEnabled(activar);
    lblFicheroImportar.SetEnabled(activar);
}

void frm09_ImportarDatos::optSeleccion_Click() {
    activarSeleccion(true);
    txtFichero.SetFocus();
}

void frm09_ImportarDatos::optTodos_Click() {
    activarSeleccion(false);
}

void frm09_ImportarDatos::FileControl_DblClick() {
    const QString nombre = FileControl.SelectedText();
    const int punto = basic::InStr(nombre, u"."_s);
    if (punto > 0) txtFichero.SetText(basic::Left(nombre, punto - 1));
}

void frm09_ImportarDatos::txtFichero_LostFocus() {
    txtFichero.SetText(basic::UCase(txtFichero.Text()));
}

void frm09_ImportarDatos::mostrarMarcha(bool enMarcha) {
    frmBarra.SetVisible(enMarcha);
    frmFichero.SetVisible(!enMarcha);
}

void frm09_ImportarDatos::cmdImportar_Click() {
    if (enCurso_) return;
    const forms::SetWhile<bool> enCurso(enCurso_, true);
    const Temporales temporales;
    importar();
}

void frm09_ImportarDatos::importar() {
    forms::host().SetPointer(forms::Pointer::Hourglass);
    for (const QString& pantalla : {u"frm04_ActualizarLocalidades"_s, u"frm05_ActualizarEspecies"_s,
                                    u"frm06_HojasCampo"_s, u"frm07_DetallesHojasCampo"_s})
        forms::pantallas().Unload(pantalla);
    cmdImportar.SetEnabled(false);
    borrarTemporales();
    mostrarMarcha(true);
    Refresh();
    LeerDatosEnvio();
    if (!gEsCoordinador) {
        forms::MsgBox(u"No puede importar ficheros, esta opción sólo la puede realizar el coordinador. "_s);
        return cerrar();
    }
    if (optTodos.Value() && !importarTodos()) return;
    if (optSeleccion.Value() && !importarElegido()) return;

    forms::MsgBox(u"La Base de datos ha sido actualizada correctamente."_s, forms::box::Information,
                  u"Importación correcta"_s);
    lblFicheroImportar.SetEnabled(true);
    cmdImportar.SetEnabled(true);
    forms::host().SetPointer(forms::Pointer::Default);
    cerrar();
}

bool frm09_ImportarDatos::importarTodos() {
    // An import that was killed leaves its copy of an archive; by now that is gone.
    listarFicheros();
    // The list as it is now: filled again on the way it would hold the copy that is being unpacked.
    QStringList archivos;
    for (int i = 0; i < FileControl.Count(); ++i)
        archivos << FileControl.Cell(i, 0);
    if (!archivos.isEmpty()) copiarAntesDe(u"la importación"_s);
    for (const QString& nombre : archivos) {
        borrarFicherosDeTexto();
        Archivador::pausar(kPausaEntreArchivos);
        DescomprimirEnvio(nombre.chopped(kLargoExtension));
        if (!ImportarTablas(tablasDeIntercambio())) return false;
    }
    return true;
}

bool frm09_ImportarDatos::importarElegido() {
    if (txtFichero.Text().isEmpty()) {
        forms::MsgBox(u"Debe de introducir el nombre de un fichero obligatoriamente."_s);
        mostrarMarcha(false);
        txtFichero.SetFocus();
        cmdImportar.SetEnabled(true);
        forms::host().SetPointer(forms::Pointer::Default);
        return false;
    }
    if (!sys::exists(carpetaDatos() + QDir::separator() + txtFichero.Text() + u".ZIP"_s)) {
        forms::MsgBox(u"El archivo no existe. Compruebe que está en el directorio Datos."_s);
        cerrar();
        return false;
    }
    copiarAntesDe(u"la importación"_s);
    DescomprimirEnvio(txtFichero.Text());
    return ImportarTablas(tablasDeIntercambio());
}

/// The screen goes, also while it is in its run.
void frm09_ImportarDatos::cerrar() {
    enCurso_ = false;
    Unload();
}

void frm09_ImportarDatos::cmdSalir_Click() {
    if (enCurso_) return;
    txtFichero.SetText(QString());
    Unload();
}

}  // namespace tarmel
