#include "sheets/frm08_ImprimirHojas.h"

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "queries/Consultas.h"
#include "queries/Informes.h"

using namespace Qt::StringLiterals;

namespace tarmel {

frm08_ImprimirHojas::frm08_ImprimirHojas()
    : RangoHojas(kName, u"Imprimir hojas de campo"_s,
                 u"NOTA: Si dejamos los dos campos en blanco se imprimirán               todas las hojas de "
                 "campo (del Anillador/Coordinador)."_s) {
    cmdAceptar.SetToolTip(u"Muestra las hojas como se imprimirán."_s);
    cmdAceptar.Click = [this] { cmdAceptar_Click(); };
}

void frm08_ImprimirHojas::Load() {
    const RelojDeArena reloj;
    CentrarFormulario(*this);
    llenarHojas(
        u"SELECT DISTINCT ANICHO.NumHoja AS NumHoja,'(' &  ANICHO.FechaCaptura & ')' AS Clave FROM ANIMAT "
        "INNER JOIN  ANICHO ON ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR "
        "ANIMAT.CodigoGrupo=ANICHO.CodAnillador ORDER BY ANICHO.NumHoja "_s);
}

void frm08_ImprimirHojas::cmdAceptar_Click() {
    if (!leerRango(true)) return;
    Hide();
    gFiltroTexto.clear();  // a query's filter says nothing about sheets
    if (hayRango()) {
        gFiltroTexto = u"\rHojas de Campo: de "_s + gHojaInicial.joined() + u" a "_s + gHojaFinal.joined();
        mostrarRepHojCam();
    }
    Unload();
}

}  // namespace tarmel
