#include "core/DefinicionesGlobales.h"

#include "core/CopiasSeguridad.h"
#include "engine/clsClassMantenimientos.h"

namespace tarmel {

basic::Variant gNombreBD;
basic::Variant gVersion;
QString gRutaBD;

ado::Connection gConexion;
QString gSQL;
QString gSQL2;
ado::Recordset gRS;
ado::Recordset gRS2;

std::array<QString, 2> gAnillador;
std::array<QString, 2> gGrupo;
std::array<QString, 2> gEntidad;
basic::Variant gCodAnillador;
int gCoordinador = 0;
bool gEsCoordinador = false;
bool gIdentificacionInicial = false;
basic::Variant gRutaAplicacion;

bool gNuevaHoja = false;
bool gListaAnillas = false;
bool gListaDuplicados = false;
bool gMostrarLista = false;
QString gFiltroAnillas;
bool gModificando = false;
QString gOriginalAnilla, gOriginalCentro, gOriginalHora, gOriginalFecha;
bool gCapturaGrabada = false;
bool gListaCargada = false;
bool gModoModificar = false;
bool gOrdenAscendente = false;

basic::Variant gHojaInicial;
basic::Variant gHojaFinal;

QString gFiltroTexto;
bool gBalanceA = false;
bool gBalanceR = false;
bool gImpreso = false;
bool gCancelado = false;
QString gNombreFichero;

clsClassMantenimientos gMantenimientos;

void reiniciarSesion() {
    olvidarCopias();
    gRS = ado::Recordset();
    gRS2 = ado::Recordset();
    gConexion.Close();
    for (basic::Variant* variable :
         {&gNombreBD, &gVersion, &gCodAnillador, &gRutaAplicacion, &gHojaInicial, &gHojaFinal})
        *variable = {};
    for (QString* texto : {&gRutaBD, &gSQL, &gSQL2, &gFiltroAnillas, &gOriginalAnilla, &gOriginalCentro,
                           &gOriginalHora, &gOriginalFecha, &gFiltroTexto, &gNombreFichero})
        texto->clear();
    gAnillador = gGrupo = gEntidad = {};
    gCoordinador = 0;
    gEsCoordinador = gIdentificacionInicial = false;
    gNuevaHoja = gListaAnillas = gListaDuplicados = gMostrarLista = false;
    gModificando = gCapturaGrabada = gListaCargada = gModoModificar = gOrdenAscendente = false;
    gBalanceA = gBalanceR = gImpreso = gCancelado = false;
    gMantenimientos = {};
}

}  // namespace tarmel
