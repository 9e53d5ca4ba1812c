#include "queries/frm12_OpcionesConsulta.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

frm12_OpcionesConsulta::frm12_OpcionesConsulta() : Form(kName, u"Pantalla de Selección"_s) {
    fraInforme.Holds({&optListado, &optBalance_A, &optBalance_R});
    Opciones.Holds({&optImpreso, &optSoporte, &lblArchivo, &Archivo, &Label4});
    Archivo.SetAccessibleName(u"Nombre de Fichero"_s);
    Archivo.SetToolTip(u"El fichero queda en la carpeta Consultas; si ya existe, se sustituye."_s);
    cmdCancelar.Cancel = true;

    optImpreso.Click = [this] { optImpreso_Click(); };
    optSoporte.Click = [this] { optSoporte_Click(); };
    B_Opciones.Click = [this] { B_Opciones_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frm12_OpcionesConsulta::Load() {
    optListado.SetValue(true);
    optImpreso.SetValue(true);
    CentrarFormulario(*this);
}

void frm12_OpcionesConsulta::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm12_OpcionesConsulta::optImpreso_Click() {
    permitirArchivo(false);
}

void frm12_OpcionesConsulta::optSoporte_Click() {
    permitirArchivo(true);
}

void frm12_OpcionesConsulta::permitirArchivo(bool permitir) {
    Archivo.SetEnabled(permitir);
    Label4.SetEnabled(permitir);
}

void frm12_OpcionesConsulta::B_Opciones_Click() {
    gCancelado = gImpreso = gBalanceA = gBalanceR = false;
    if (optBalance_A.Value()) {
        gBalanceA = true;
    } else if (optBalance_R.Value()) {
        gBalanceR = true;
    }
    if (!optSoporte.Value()) {
        gImpreso = true;
        return Unload();
    }
    if (Archivo.Text().isEmpty()) {
        forms::MsgBox(u"Debe introducir un nombre de fichero"_s);
        return;
    }
    gNombreFichero = Archivo.Text();
    Unload();
}

void frm12_OpcionesConsulta::cmdCancelar_Click() {
    gCancelado = true;
    Unload();
}

}  // namespace tarmel
