#include "queries/frm14_ContadorRegistros.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

/// The number that a statement counts, in the field `cont`.
QString contar(const QString& sql) {
    gSQL = sql;
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    const QString cuenta = gRS.Text(u"cont"_s);
    gRS = ado::Recordset();
    return cuenta;
}

QString contarTipo(const QString& tipo) {
    return contar(u"SELECT COUNT(*) as cont FROM ANIAHO WHERE (((ANIAHO.TipoRegistro)='"_s + tipo +
                  u"'));"_s);
}

QString contarTipoDelAño(const QString& tipo, const QString& año) {
    return contar(
        u"SELECT COUNT(*) as cont FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera "
        "WHERE (((ANIAHO.TipoRegistro)='"_s +
        tipo + u"') AND ((ANICHO.FechaCaptura)>=#1/1/"_s + año + u"# And (ANICHO.FechaCaptura)<=#12/31/"_s +
        año + u"#));"_s);
}

QString suma(const forms::Label& una, const forms::Label& otra) {
    return basic::CStr(basic::Val(una.Caption()) + basic::Val(otra.Caption()));
}

}  // namespace

frm14_ContadorRegistros::frm14_ContadorRegistros() : Form(kName, u"Contador de registros"_s) {
    Frame1.Holds({&lblAnillamientos, &lblRecuperaciones, &lblTotal});
    Frame2.Holds({&lblAño, &cboAño, &cmdAceptar, &lblAnillamientosAño, &lblRecuperacionesAño, &lblTotalAño});
    cboAño.SetAccessibleName(u"Año"_s);
    cmdAceptar.SetToolTip(u"Cuenta los registros del año elegido."_s);
    cmdCancelar.SetToolTip(u"Cierra esta pantalla."_s);
    cmdCancelar.Cancel = true;

    cboAño.LostFocus = [this] { contarAño(); };
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
    cmdCancelar.Click = [this] { cmdCancelar_Click(); };
}

void frm14_ContadorRegistros::Load() {
    CentrarFormulario(*this);
    lblAnillamientos.SetCaption(contarTipo(u"A"_s));
    lblRecuperaciones.SetCaption(contarTipo(u"R"_s));
    lblTotal.SetCaption(suma(lblAnillamientos, lblRecuperaciones));
    LlenarCombo(cboAño, gConexion, u"SELECT DISTINCT year(ANICHO.FECHACAPTURA) as Year FROM ANICHO"_s,
                u"Year"_s, QString());
    // The combo cannot be left empty, so whoever only looks at the totals does not begin in it.
    cmdCancelar.SetFocus();
}

void frm14_ContadorRegistros::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

void frm14_ContadorRegistros::contarAño() {
    const QString año = cboAño.Text();
    lblAnillamientosAño.SetCaption(contarTipoDelAño(u"A"_s, año));
    lblRecuperacionesAño.SetCaption(contarTipoDelAño(u"R"_s, año));
    lblTotalAño.SetCaption(suma(lblAnillamientosAño, lblRecuperacionesAño));
}

void frm14_ContadorRegistros::cmdAceptar_Click() {
    if (!cboAño.Text().isEmpty()) contarAño();
}

void frm14_ContadorRegistros::cmdCancelar_Click() {
    Unload();
}

}  // namespace tarmel
