#include "store/frm18_SeleccionAnillas.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "engine/FuncionesCombo.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

/// The code of a ringer or group; nothing chosen gives the empty text, which the list then refuses.
QString codigoElegido(const forms::ComboBox& combo) {
    const QString texto = combo.Text();
    return texto.isEmpty() ? texto : ExtraerParteCombo(kSeparadorCombo, texto, false);
}

}  // namespace

frm18_SeleccionAnillas::frm18_SeleccionAnillas() : Form(kName, u"Selección de anillas"_s) {
    cboAnillador.SetAccessibleName(u"Anillador o grupo"_s);
    cboLocalidad.SetAccessibleName(u"Localidad"_s);
    cboAño.SetAccessibleName(u"Año"_s);
    cmdMostrar.SetToolTip(u"Muestra las anillas que cumplen lo marcado."_s);
    cmdSalir.SetToolTip(u"Cierra esta pantalla sin elegir."_s);
    cmdSalir.Cancel = true;
    grpExportar.Holds({&optAnillador, &cboAnillador, &optLocalidad, &cboLocalidad, &optAño, &cboAño});

    cmdMostrar.Click = [this] { cmdMostrar_Click(); };
    cmdSalir.Click = [this] { cmdSalir_Click(); };
}

void frm18_SeleccionAnillas::Load() {
    CentrarFormulario(*this);
    LlenarCombo(cboAnillador, gConexion,
                u"SELECT DISTINCT CodigoAnillador, Trim(NombreAnillador) & ' (A)' AS NOMBRE, IdAnillador AS "
                "ID FROM ANIMAT ORDER BY CodigoAnillador"_s,
                u"CodigoAnillador"_s, u"NOMBRE"_s);
    LlenarCombo(cboAnillador, gConexion,
                u"SELECT DISTINCT CodigoGrupo, Trim(NombreGrupo) & ' (G)' AS NOMBRE, CodigoGrupo AS ID FROM "
                "ANIMAT ORDER BY CodigoGrupo"_s,
                u"CodigoGrupo"_s, u"NOMBRE"_s, true);
    LlenarCombo(cboLocalidad, gConexion,
                u"SELECT DISTINCT RTrim(ANILOC.Municipio) & ',   ' & RTrim(ANILOC.NombreLocalidad) & ' .-. "
                "'& RTrim(ANILOC.CodigoLocalidad) as Localidad FROM ANICHO INNER JOIN ANILOC ON "
                "ANICHO.CodLocalidad = ANILOC.CodigoLocalidad"_s,
                u"Localidad"_s, QString());
    LlenarCombo(cboAño, gConexion, u"SELECT DISTINCT year(ANICHO.FechaCaptura) as Año FROM ANICHO"_s,
                u"Año"_s, QString());
}

void frm18_SeleccionAnillas::FormKeyPress(int& character) {
    EnterComoTab(*this, character);
}

QString frm18_SeleccionAnillas::componerFiltro() const {
    QStringList condiciones;
    if (optAnillador.Value() == 1) {
        const QString codigo = codigoElegido(cboAnillador);
        condiciones << u"(ANICHO.CodAnillador="_s + codigo + u" OR ANICHO.Anillador="_s + codigo + u')';
    }
    if (optLocalidad.Value() == 1)
        condiciones << u"(ANICHO.CodLocalidad='"_s +
                           ExtraerParteCombo(kSeparadorCombo, cboLocalidad.Text(), true) + u"')"_s;
    if (optAño.Value() == 1) condiciones << u"(YEAR(ANICHO.FechaCaptura)='"_s + cboAño.Text() + u"')"_s;
    return condiciones.join(u" AND "_s);
}

void frm18_SeleccionAnillas::cmdMostrar_Click() {
    forms::host().SetPointer(forms::Pointer::Hourglass);
    gFiltroAnillas = componerFiltro();
    Unload();
    forms::host().SetPointer(forms::Pointer::Default);
}

void frm18_SeleccionAnillas::cmdSalir_Click() {
    Unload();
}

}  // namespace tarmel
