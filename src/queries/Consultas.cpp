#include "queries/Consultas.h"

#include "core/General.h"
#include "engine/clsclassTratamientoErr.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "queries/Repintado.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QString kCampos =
    u"SELECT DISTINCT ANICHO.NumHoja, ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANILOC.CodigoLocalidad, "
    "ANILOC.NombreLocalidad & ', ' & ANILOC.Municipio & '. ' & ICAPRO.NombreProvincia AS NombreLocalidad, "
    "ANILOC.Municipio, ANICHO.FechaCaptura, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, "
    "ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, "
    "ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, "
    "ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, "
    "ANICHO.TardeCodigoLluvia, ANICHO.Observaciones AS ANICHO_Observaciones, ANICHO.Dato1 AS ANICHO_Dato1, "
    "ANICHO.Dato2 AS ANICHO_Dato2, ANICHO.Dato3 AS ANICHO_Dato3, ANICHO.Dato4 AS ANICHO_Dato4, "
    "ANICHO.Dato5 AS ANICHO_Dato5, ANICHO.Dato6 AS ANICHO_Dato6, ANICHO.Estado, ANIAHO.NumRegistro, "
    "ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.NumeroAnilla, ANIAHO.IdEspecie, ANIBRD.CodigoEspecie, "
    "ANIBRD.NombreEspecie, ANIAHO.Parentesco, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, "
    "ANIAHO.CodigoEdad, ANIAHO.CodigoSexo, ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, "
    "ANIAHO.Tarso, ANIAHO.CodigoPlaca, ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha as "
    "CodigoPrecision, ANIAHO.CodigoEstado , ANIAHO.CodigoEstatus, ANIAHO.CodigoMuda, "
    "ANIAHO.IniAnillador,ANIAHO.Observaciones AS ANIAHO_Observaciones, ANIAHO.Dato1 AS ANIAHO_Dato1, "
    "ANIAHO.Dato2 AS ANIAHO_Dato2, ANIAHO.Dato3 AS ANIAHO_Dato3, ANIAHO.Dato4 AS ANIAHO_Dato4, "
    "ANIAHO.Dato5 AS ANIAHO_Dato5, ANIAHO.Dato6 AS ANIAHO_Dato6 "_s;

/// A sheet whose owner's code fits several ringers comes out once for each of them: DISTINCT takes that back.
const QString kUniones =
    u"FROM ICAPRO INNER JOIN (ANIBRD INNER JOIN (ANIMAT INNER JOIN (ANILOC INNER JOIN (ANICHO INNER JOIN "
    "ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera)  ON ANILOC.CodigoLocalidad = ANICHO.CodLocalidad)  ON "
    "(ANIMAT.CodigoAnillador = ANICHO.CodAnillador OR ANIMAT.CodigoGrupo = ANICHO.CodAnillador))  ON "
    "ANIBRD.IdEspecie = ANIAHO.IdEspecie)  ON ICAPRO.CodigoProvincia = ANILOC.CodigoProvincia "_s;

QString textoSeleccionados(int filas) {
    if (filas == 0) return u"No se generará el informe ni el fichero."_s;
    return u"Se han seleccionado "_s + basic::CStr(filas) + u" registros que cumplen las condiciones."_s;
}

void informar(int filas) {
    forms::MsgBox(textoSeleccionados(filas), forms::box::Information);
}

/// Empties a work table and fills it again; the number of its rows.
int rellenar(const QString& tabla, const QString& seleccion) {
    const RelojDeArena reloj;
    Repintado repintado;
    const ado::Connection::Interlude entreacto(gConexion, [&repintado] { repintado.aVeces(); });
    gConexion.Execute(u"DELETE FROM "_s + tabla);
    return gConexion.Execute(u"INSERT INTO "_s + tabla + u' ' + seleccion);
}

void soloDeTipo(QString& where, QChar tipo) {
    where += where.isEmpty() ? u" WHERE "_s : u" AND "_s;
    where += u"ANIAHO.TipoRegistro='"_s + tipo + u'\'';
}

}  // namespace

QString TextoFiltro() {
    return gFiltroTexto.isEmpty() ? QString() : u"Filtro de la Consulta:"_s + gFiltroTexto;
}

int EjecutarConsulta(QString& where, bool BalanceA, bool BalanceR) {
    int filas = 0;
    conTrampaSinObjeto([&] {
        if (BalanceA) {
            soloDeTipo(where, u'A');
        } else if (BalanceR) {
            soloDeTipo(where, u'R');
        }
        filas = rellenar(u"Consultas"_s, kCampos + kUniones + u' ' + where);
        // With a balance to follow, it is the species that are told.
        const bool hayBalance = BalanceA || BalanceR;
        if (filas == 0 || !hayBalance) informar(filas);
    });
    return filas;
}

void GenerarBalance() {
    conTrampaSinObjeto([] {
        const QString tipo = gBalanceA ? u"A"_s : u"R"_s;
        informar(rellenar(u"ICABAL"_s,
                          u"SELECT IdEspecie,  Sum(IIf(CodigoEdad='1',1,0)) AS NumPollos,  "
                          u"Sum(IIf(CodigoEdad<>'1',1,0)) AS "
                          "NumVolanderos From Consultas WHERE TipoRegistro='"_s +
                              tipo + u"' GROUP BY IdEspecie ORDER BY IdEspecie"_s));
    });
}

}  // namespace tarmel
