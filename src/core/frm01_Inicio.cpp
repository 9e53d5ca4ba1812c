#include "core/frm01_Inicio.h"

#include <QDir>

#include "core/ActualizaVersion.h"
#include "core/ArchivoAccess.h"
#include "core/DSN.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "database/Mantenimiento.h"
#include "database/Salud.h"
#include "platform/forms/Host.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

frm01_Inicio::frm01_Inicio() : Form(kName, forms::kProgramName) {
    lblProductName.SetCaption(u"Tarmel - Anilladores"_s);
    Label1.SetCaption(u"Cargando la aplicación, espere un momento..."_s);
}

void frm01_Inicio::Load() {
    gVersion = u"Versión 3.0"_s;
    gNombreBD = u"Tarmel_11"_s;
    CentrarFormulario(*this);
    lblVersion.SetCaption(gVersion.joined());
    Show();
    Refresh();

    gRutaBD = forms::host().ApplicationPath() + QDir::separator() + gNombreBD.joined() + u".mdb"_s;
    TerminarCompactacion(gRutaBD);
    const std::optional<QString> fichero = sys::actualPath(gRutaBD);
    if (!fichero) {
        forms::MsgBox(
            u"El fichero de base de datos TARMEL.MDB no existe.\r  No se puede cargar la aplicación."_s,
            forms::box::Critical, u"Error"_s);
        forms::host().EndProgram();
    }
    const QString mensaje = Label1.Caption();
    TraerArchivoAccess(*fichero, [this](const QString& avance) { mostrar(avance); });
    mostrar(mensaje);
    comprobarSalud(*fichero);
    CrearDSN(*fichero);
    AbrirConexion();
    BorrarTemporales();
    if (!ActualizarVersion()) forms::host().EndProgram();
}

void frm01_Inicio::mostrar(const QString& avance) {
    if (Label1.Caption() == avance) return;
    Label1.SetCaption(avance);
    Refresh();
}

void frm01_Inicio::comprobarSalud(const QString& fichero) {
    const QString mensaje = Label1.Caption();
    const QString problema = examinarBase(fichero, [this](const QString& avance) { mostrar(avance); });
    Label1.SetCaption(mensaje);
    if (problema.isEmpty()) return;
    forms::MsgBox(problema, forms::box::Critical, u"La base de datos no se puede abrir"_s);
    forms::host().EndProgram();
}

}  // namespace tarmel
