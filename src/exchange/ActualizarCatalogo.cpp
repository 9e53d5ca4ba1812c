#include "exchange/ActualizarCatalogo.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include "core/CopiasSeguridad.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "exchange/Catalogos.h"
#include "exchange/FicheroIntercambio.h"
#include "exchange/Lote.h"
#include "platform/basic/Text.h"
#include "platform/forms/Guards.h"
#include "platform/forms/Host.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {
constexpr int kLargoExtension = 4;
}

ActualizarCatalogo::ActualizarCatalogo(const QString& nombre, const QString& titulo, const QString& etiqueta)
    : Form(nombre, titulo) {
    Label1.SetCaption(etiqueta);
    txtRuta.SetAccessibleName(etiqueta);
    cmdExaminar.SetToolTip(u"Elige el archivo comprimido del catálogo."_s);
    cmdImportar.SetToolTip(u"Añade las filas que faltan en la base de datos."_s);
    cmdSalir.SetToolTip(u"Cierra esta pantalla."_s);
    cmdSalir.Cancel = true;
    frmNombreFichero.Holds({&Label1, &txtRuta, &cmdExaminar});
    SSPanel1.Holds({&lblEspere, &ProgressBar1});

    cmdExaminar.Click = [this] { cmdExaminar_Click(); };
    cmdImportar.Click = [this] { cmdImportar_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void ActualizarCatalogo::Load() {
    CentrarFormulario(*this);
    txtRuta.SetText(QString());
    cmdImportar.SetEnabled(false);
    mostrarPanel(false);
}

void ActualizarCatalogo::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

const QString& ActualizarCatalogo::campo(const QStringList& fila, int posicion) {
    if (posicion >= fila.size()) throw basic::RuntimeError(basic::error::Subscript);
    return fila[posicion];
}

void ActualizarCatalogo::mostrarPanel(bool mostrar) {
    ProgressBar1.SetVisible(mostrar);
    SSPanel1.SetVisible(mostrar);
}

void ActualizarCatalogo::cmdExaminar_Click() {
    if (enCurso_) return;
    const forms::SetWhile<bool> enCurso(enCurso_, true);
    try {
        elegirArchivo();
    } catch (const basic::RuntimeError& fallo) {
        forms::MsgBox(u"Se ha producido un Error: "_s + fallo.description());
    }
}

void ActualizarCatalogo::elegirArchivo() {
    forms::FileDialogue dialogo;
    dialogo.title = cmdExaminar.ToolTip();
    dialogo.folder = ObtenerRutaAplicacion();
    dialogo.filter = u"Archivos comprimidos (.zip)|*.zip"_s;
    const std::optional<QString> elegido = forms::host().OpenFileDialogue(dialogo);
    if (!elegido) return;
    txtRuta.SetText(*elegido);
    NombreCatalogo = QFileInfo(*elegido).fileName();
    RutaCatalogo = elegido->chopped(NombreCatalogo.size());
    archivador_.reset();
    archivador_.emplace(DescomprimirCatalogo(RutaCatalogo, NombreCatalogo));
    if (!txtRuta.Text().isEmpty()) cmdImportar.SetEnabled(true);
}

void ActualizarCatalogo::cmdImportar_Click() {
    if (enCurso_) return;
    const forms::SetWhile<bool> enCurso(enCurso_, true);
    try {
        importar();
    } catch (const basic::RuntimeError& fallo) {
        avisarFallo(fallo.number(), fallo.description());
    }
}

void ActualizarCatalogo::importar() {
    if (txtRuta.Text().isEmpty()) {
        forms::MsgBox(u"Debe seleccionar un archivo de Datos"_s, forms::box::Information,
                      u"Ningún Archivo Seleccionado"_s);
        forms::host().SetPointer(forms::Pointer::Default);
        return;
    }
    forms::host().SetPointer(forms::Pointer::Hourglass);
    if (archivador_) archivador_->esperar(0);
    if (!IsLoaded()) return;  // closed meanwhile
    if (archivador_ && archivador_->seHaDesbordado())
        throw formatoNoValido(u"El archivo comprimido contiene un fichero demasiado grande"_s);
    if (archivador_ && archivador_->haFallado())
        throw formatoNoValido(u"El archivo comprimido no se ha podido descomprimir"_s);
    RutaCatalogo =
        basic::Left(txtRuta.Text(), static_cast<int>(txtRuta.Text().size()) - kLargoExtension) + u".TXT"_s;
    importarFilas();
    forms::MsgBox(u"El Archivo ha sido Importado con Éxito"_s, forms::box::Information,
                  u"Importación de Datos"_s);
    txtRuta.SetText(QString());
    mostrarPanel(false);
    quitarProteccion(RutaCatalogo);
    sys::remove(RutaCatalogo);
    Unload();
    forms::host().SetPointer(forms::Pointer::Default);
}

void ActualizarCatalogo::importarFilas() {
    const std::vector<QStringList> filas = LeerTablaTexto(RutaCatalogo, kSeparadorFichero);
    const int ultima = static_cast<int>(filas.size()) - 1;
    ProgressBar1.SetValue(0);
    ProgressBar1.SetMax(std::max(ultima, 1));
    if (ultima > 0) copiarAntesDe(u"la actualización del catálogo"_s);
    Lote lote(gConexion);
    for (int i = 1; i <= ultima; ++i) {
        if (i == 1) mostrarPanel(true);
        ProgressBar1.SetValue(i);
        lblEspere.SetCaption(u"Procesando Registro "_s + basic::CStr(i));
        lote.abrir();
        añadirSiFalta(filas[static_cast<size_t>(i)]);
        // Repainting for every row would take longer than the rows.
        if (lote.entreFilas()) Refresh();
    }
    lote.cerrar();
    lblEspere.SetCaption(u"Se han procesado "_s + basic::CStr(std::max(ultima, 0)) + u" registros"_s);
}

void ActualizarCatalogo::añadirSiFalta(const QStringList& fila) {
    {
        gRS = ado::Recordset();
        gSQL = sentenciaBuscar(campo(fila, 0));
        gRS.Open(gSQL, gConexion);
        const bool existe = !gRS.Eof();
        gRS = ado::Recordset();
        if (existe) return;
    }
    gSQL2 = sentenciaInsertar(fila);
    gConexion.Execute(gSQL2);
    gSQL2 = sentenciaIdentificar();
    gConexion.Execute(gSQL2);
}

void ActualizarCatalogo::avisarFallo(int numero, const QString& descripcion) {
    if (numero == basic::error::Statement) {
        forms::MsgBox(u"Ya existe un registro con esa clave"_s, forms::box::Information,
                      u"Registro Duplicado"_s);
    } else {
        forms::MsgBox(descripcion + u' ' + basic::CStr(numero));
    }
    forms::MsgBox(u"El Archivo no ha sido Importado"_s, forms::box::OK, u"Importación de Datos"_s);
    mostrarPanel(false);
    forms::host().SetPointer(forms::Pointer::Default);
}

void ActualizarCatalogo::cmdSalir_Click() {
    Unload();
}

}  // namespace tarmel
