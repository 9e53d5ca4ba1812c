#pragma once

#include <QString>
#include <array>

#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "platform/basic/Variant.h"

namespace tarmel {

class clsClassMantenimientos;

/// The state of the session: one instance for the process, never saved. Everything starts empty.
extern basic::Variant gNombreBD;  ///< base name of the database file
extern basic::Variant gVersion;
extern QString gRutaBD;

extern ado::Connection gConexion;  ///< the one open connection, used by every statement of the program
extern QString gSQL;               ///< filled right before an open
extern QString gSQL2;
extern ado::Recordset gRS;   ///< made new before use, released after it
extern ado::Recordset gRS2;  ///< for rings, captures and the store

extern std::array<QString, 2> gAnillador;  ///< (0) code of the current ringer, (1) his name
extern std::array<QString, 2> gGrupo;
extern std::array<QString, 2> gEntidad;
extern basic::Variant gCodAnillador;  ///< as read from ANIMAT; the number 0 when the code is new
extern int gCoordinador;              ///< 1 coordinator, 0 not
extern bool gEsCoordinador;           ///< the test that every permission uses
extern bool gIdentificacionInicial;   ///< the identification shown is the start-up one
extern basic::Variant gRutaAplicacion;

/// Flags between the main window, the sheet screen and the capture screen.
extern bool gNuevaHoja;         ///< a sheet was just created: the capture screen starts a new capture
extern bool gListaAnillas;      ///< the capture screen opens as a list of rings
extern bool gListaDuplicados;   ///< that list is the list of duplicates
extern bool gMostrarLista;      ///< on activating, the list comes in front
extern QString gFiltroAnillas;  ///< condition chosen in the ring selection; empty when nothing was chosen
extern bool gModificando;       ///< a capture was opened for change
extern QString gOriginalAnilla, gOriginalCentro, gOriginalHora,
    gOriginalFecha;            ///< that capture before the change
extern bool gCapturaGrabada;   ///< set just before an insert, cleared on activating
extern bool gListaCargada;     ///< the sheet list was filled for this opening
extern bool gModoModificar;    ///< the sheet's fields are open for a change
extern bool gOrdenAscendente;  ///< toggle of the sort, shared by the lists of sheets and captures

/// The readable description of a query's filter: one criterion a line, each begun by a carriage return. Empty
/// for a query without criteria. Whoever prints something else puts his own text here.
extern QString gFiltroTexto;
/// What the last accepted dialogue of a query asked for. Closing it by its box leaves all of it as it was.
extern bool gBalanceA;          ///< balance of ringings
extern bool gBalanceR;          ///< balance of recoveries
extern bool gImpreso;           ///< a report, not a text file
extern bool gCancelado;         ///< the dialogue was cancelled
extern QString gNombreFichero;  ///< without folder and extension: the query's text file; an imported archive

/// The range of sheets to delete or to print: the number as chosen (text) or as found in the database; Null
/// when there is no sheet.
extern basic::Variant gHojaInicial;
extern basic::Variant gHojaFinal;

/// The record engine object that the store and the ring rules share; they use EjecutarSQL only.
extern clsClassMantenimientos gMantenimientos;

/// Back to a process that has just begun, for programs that follow each other in one process. Closes the
/// connection.
void reiniciarSesion();

}  // namespace tarmel
