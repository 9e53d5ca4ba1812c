#include "sheets/frm13_BorrarRegistrosAnteriores.h"

#include "core/CopiasSeguridad.h"
#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"
#include "sheets/frm06_HojasCampo.h"
#include "sheets/frm07_DetallesHojasCampo.h"

using namespace Qt::StringLiterals;

namespace tarmel {

frm13_BorrarRegistrosAnteriores::frm13_BorrarRegistrosAnteriores()
    : RangoHojas(kName, u"Borrar hojas de campo"_s,
                 u"NOTA: Si dejamos los dos campos en blanco se borrarán                 todas las hojas de "
                 "campo (del Anillador/Coordinador)."_s) {
    cmdAceptar.SetToolTip(u"Borra las hojas, después de preguntar."_s);
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
}

void frm13_BorrarRegistrosAnteriores::Load() {
    // No screen may go on showing a sheet that is deleted here.
    forms::pantallas().Unload(frm07_DetallesHojasCampo::kName);
    forms::pantallas().Unload(frm06_HojasCampo::kName);
    CentrarFormulario(*this);
    const QString codigo = gCodAnillador.joined();
    const QString propias = gEsCoordinador ? QString()
                                           : u" WHERE ANICHO.CodAnillador = "_s + codigo +
                                                 u" OR ANICHO.Anillador="_s + codigo + u" "_s;
    llenarHojas(
        u"SELECT ANICHO.NumHoja AS NumHoja,ANIMAT.NombreAnillador & ' (' &  ANICHO.FechaCaptura & ')' AS "
        "Clave FROM ANIMAT INNER JOIN ANICHO ON (ANIMAT.CodigoAnillador = ANICHO.CodAnillador) OR "
        "(ANICHO.CodAnillador=ANIMAT.CodigoGrupo)"_s +
        propias + u"ORDER BY ANICHO.NumHoja "_s);
    forms::host().SetPointer(forms::Pointer::Default);
}

void frm13_BorrarRegistrosAnteriores::cmdAceptar_Click() {
    if (!leerRango(!gEsCoordinador)) return;
    Hide();
    if (hayRango()) borrarRango();
    // Said whatever the answer was, and when there was nothing to delete too.
    forms::MsgBox(u"Se han borrado todas las hojas seleccionadas."_s, forms::box::Information,
                  u"Borrar hojas"_s);
    Unload();
}

void frm13_BorrarRegistrosAnteriores::borrarRango() {
    const int respuesta =
        forms::MsgBox(u"Va a eliminar las hojas de campo seleccionadas.\r                ¿Desea continuar?"_s,
                      forms::box::YesNo + forms::box::Critical, u"Borrar Hojas"_s);
    if (respuesta != forms::box::AnswerYes) return;
    const RelojDeArena reloj;
    copiarAntesDe(u"el borrado de las hojas"_s);
    gSQL = u"DELETE FROM ANICHO WHERE NumHoja BETWEEN "_s + gHojaInicial.joined() + u" AND "_s +
           gHojaFinal.joined();
    gRS = ado::Recordset();
    gRS.Open(gSQL, gConexion);
    gRS = ado::Recordset();
}

}  // namespace tarmel
