#include "core/frm01_Inicio.h"

#include <QDir>

#include "core/ActualizaVersion.h"
#include "core/DSN.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
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
    const std::optional<QString> fichero = sys::actualPath(gRutaBD);
    if (!fichero) {
        forms::MsgBox(
            u"El fichero de base de datos TARMEL.MDB no existe.\r  No se puede cargar la aplicación."_s,
            forms::box::Critical, u"Error"_s);
        forms::host().EndProgram();
    }
    CrearDSN(*fichero);
    AbrirConexion();
    BorrarTemporales();
    if (!ActualizarVersion()) forms::host().EndProgram();
}

}  // namespace tarmel
