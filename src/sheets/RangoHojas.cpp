#include "sheets/RangoHojas.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

/// The number that an item of the list begins with.
QString numeroElegido(const forms::ComboBox& combo) {
    const QString texto = combo.Text();
    return texto.left(texto.indexOf(u' '));
}

basic::Variant numeroDeLaBase(const QString& sql, const QString& campo, bool soloPropias) {
    gSQL = sql;
    if (soloPropias) gSQL += u" WHERE ANICHO.CodAnillador = "_s + gCodAnillador.joined() + u" "_s;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    basic::Variant numero = gRS.Value(campo);
    gRS = ado::Recordset();
    return numero;
}

}  // namespace

RangoHojas::RangoHojas(const QString& nombre, const QString& titulo, const QString& descripcion)
    : Form(nombre, titulo) {
    lblDescripcion.SetCaption(descripcion);
    cboIni.SetAccessibleName(lblIni.Caption());
    cboFin.SetAccessibleName(lblFin.Caption());
    cmdSalir.SetToolTip(u"Cierra esta pantalla sin hacer nada."_s);
    cmdSalir.Cancel = true;
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void RangoHojas::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void RangoHojas::llenarHojas(const QString& sql) {
    gSQL = sql;
    for (forms::ComboBox* combo : {&cboIni, &cboFin})
        LlenarCombo(*combo, gConexion, gSQL, u"NumHoja"_s, u"Clave"_s);
}

bool RangoHojas::leerRango(bool soloPropias) {
    gHojaInicial = cboIni.Text().isEmpty() ? numeroDeLaBase(u"SELECT Min(NumHoja) AS MinHoja FROM ANICHO "_s,
                                                            u"MinHoja"_s, soloPropias)
                                           : numeroElegido(cboIni);
    gHojaFinal = cboFin.Text().isEmpty() ? numeroDeLaBase(u"SELECT Max(NumHoja) AS MaxHoja FROM ANICHO "_s,
                                                          u"MaxHoja"_s, soloPropias)
                                         : numeroElegido(cboFin);
    // As they come: a chosen number is text, and text is greater than any number.
    if (!basic::testsLess(gHojaFinal, gHojaInicial)) return true;
    forms::MsgBox(u"La hoja 'Inicial' debe ser menor que la 'Final'"_s);
    return false;
}

bool RangoHojas::hayRango() {
    return !gHojaInicial.isNull() && !gHojaFinal.isNull();
}

void RangoHojas::cmdSalir_Click() {
    forms::host().SetPointer(forms::Pointer::Default);
    Unload();
}

}  // namespace tarmel
