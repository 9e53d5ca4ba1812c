#include "store/frm17_GestionAnillas.h"

#include <array>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "platform/forms/Host.h"
#include "store/ModelosAnillas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {
constexpr int kAnchoColumna = 1500;
}

frm17_GestionAnillas::frm17_GestionAnillas() : Form(kName, u"Gestión de los tipos de anillas"_s) {
    TablaTipoAnillas.AddColumn(u"MODELO"_s, kAnchoColumna);
    TablaTipoAnillas.AddColumn(u"INSCRIPCIÓN"_s, kAnchoColumna);
    TablaTipoAnillas.SetAccessibleName(u"Inscripciones de cada modelo"_s);
    for (const QString& modelo : modelosDeAnillas())
        Modelo.AddItem(modelo);
    Modelo.SetAccessibleName(u"Modelo de la inscripción nueva"_s);
    Inscripcion.SetAccessibleName(u"Inscripción nueva"_s);
    cmdAgregar.SetToolTip(u"Añade la inscripción al modelo elegido."_s);
    cmdSalir.SetToolTip(u"Cierra esta pantalla."_s);
    cmdSalir.Cancel = true;
    Frame1.Holds({&lblModelo, &Modelo, &lblInscripcion, &Inscripcion, &cmdAgregar});

    cmdAgregar.Click = [this] { cmdAgregar_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void frm17_GestionAnillas::Load() {
    CentrarFormulario(*this);
    refrescarTabla();
}

void frm17_GestionAnillas::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm17_GestionAnillas::refrescarTabla() {
    TablaTipoAnillas.Clear();
    ado::Recordset filas;
    filas.Open(u"SELECT * FROM TIPOANILLAS"_s, gConexion);
    for (; !filas.Eof(); filas.MoveNext())
        TablaTipoAnillas.Add(std::array{filas.Text(u"Modelo"_s), filas.Text(u"Inscripcion"_s)});
}

void frm17_GestionAnillas::cmdAgregar_Click() {
    const bool agregada = basic::resumeNext([this] {
        gSQL = u"INSERT INTO TIPOANILLAS VALUES ('"_s + Modelo.Text() + u"','"_s + Inscripcion.Text() +
               u"', 0)"_s;
        gConexion.Execute(gSQL);
        refrescarTabla();
        Modelo.SetListIndex(-1);
        Inscripcion.SetText(QString());
    });
    if (!agregada) forms::MsgBox(u"Es posible que esos valores ya estén incluidos en la base de datos"_s);
}

void frm17_GestionAnillas::cmdSalir_Click() {
    Unload();
}

}  // namespace tarmel
