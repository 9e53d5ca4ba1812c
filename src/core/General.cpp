#include "core/General.h"

#include <QDir>

#include "core/DefinicionesGlobales.h"
#include "core/RegistroPantallas.h"
#include "core/frm01_Inicio.h"
#include "core/frm02_Matricula.h"
#include "core/frm03_Principal.h"
#include "database/Esquema.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

void Main() {
    forms::runAction([] {
        if (forms::host().PreviousInstance()) {
            forms::MsgBox(u"Ya se esta ejecutando la aplicación en este PC"_s, forms::box::Critical);
            forms::host().EndProgram();
        }
        registrarPantallas();
        forms::pantallas().Get<frm01_Inicio>().Show();
        forms::pantallas().Unload(frm01_Inicio::kName);
        gIdentificacionInicial = true;
        gNuevaHoja = false;
        forms::pantallas().Get<frm02_Matricula>().Show();
    });
}

QString ObtenerRutaAplicacion() {
    QString ruta = forms::host().ApplicationPath();
    if (ruta.endsWith(QDir::separator())) ruta.chop(1);
    gRutaAplicacion = ruta;
    return ruta;
}

QString RutaEnAplicacion(const QString& nombre) {
    return ObtenerRutaAplicacion() + QDir::separator() + nombre;
}

QString FechaActualAAMMDD() {
    const basic::Date hoy = basic::Date::today();
    const auto dosCifras = [](int parte) { return basic::Right(u"00"_s + basic::CStr(parte), 2); };
    return dosCifras(hoy.year()) + dosCifras(hoy.month()) + dosCifras(hoy.day());
}

void CentrarFormulario(forms::Form&) {
    // The view places every screen in the middle when it first shows it.
}

void AbrirConexion() {
    gSQL.clear();
    gConexion.Close();
    gConexion.Open(u"DSN=AccessDSN;UID=admin;PWD="_s);
    // A program that died between the two statements of an insert left a placeholder for its identifier.
    sanarIdentificadores(gConexion);
}

void CerrarAplicacion() {
    gConexion.Close();
    forms::host().EndProgram();
}

void MostrarMensajeEstado(const QString& mensaje) {
    auto* const principal = forms::pantallas().Loaded<frm03_Principal>();
    if (!principal) return;
    principal->staStatusBar.SetPanelText(u"Messages"_s, mensaje);
    if (!mensaje.isEmpty()) principal->Refresh();  // what follows may take long
}

bool EnterComoTab(forms::Form& formulario, int& caracter) {
    if (caracter != forms::key::Enter) return false;
    caracter = 0;
    formulario.SendTab();
    return true;
}

RelojDeArena::RelojDeArena() {
    forms::host().SetPointer(forms::Pointer::Hourglass);
}

RelojDeArena::~RelojDeArena() {
    forms::host().SetPointer(forms::Pointer::Default);
}

}  // namespace tarmel
