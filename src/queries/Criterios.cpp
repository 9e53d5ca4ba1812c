#include "queries/Criterios.h"

using namespace Qt::StringLiterals;

namespace tarmel {

// The blanks at the ends of the conditions differ: each brings its own, or leans on those of the joining
// word.
const std::vector<CriterioCodigo>& criteriosDeCodigos() {
    static const std::vector<CriterioCodigo> criterios{
        {u"cboModo"_s,
         u"Status: "_s,
         u"lblCodigoStatus"_s,
         u" ANIAHO.CodigoEstatus = '%1' "_s,
         u"Estatus"_s,
         {u"SELECT * FROM ICASTA"_s},
         {}},
        {u"cboMuda"_s,
         u"Muda: "_s,
         u"lblCodigoMuda"_s,
         u" ANIAHO.CodigoMuda = %1"_s,
         u"Muda"_s,
         {u"SELECT * FROM ICAMUDA"_s},
         {}},
        {u"cboHabitat"_s,
         u"Hábitat: "_s,
         u"lblCodigoHabitat"_s,
         u" ANICHO.CodigoHabitat = '%1' "_s,
         u"Habitat"_s,
         {u"SELECT * FROM ICAHAB"_s, u"SELECT * FROM ICAHAB "_s},
         {}},
        {u"cboSexo"_s,
         u"Sexo: "_s,
         u"lblCodigoSexo"_s,
         u" ANIAHO.CodigoSexo = '%1'"_s,
         u"Sexo"_s,
         {u"SELECT * FROM ICASEX"_s},
         {}},
        {u"cboEdad"_s,
         u"Edad: "_s,
         u"lblCodigoEdad"_s,
         u" ANIAHO.CodigoEdad = '%1' "_s,
         u"Edad"_s,
         {u"SELECT * FROM ICAAGE"_s},
         {}},
        {u"cboCircunstancia"_s,
         u"Circunstancia: "_s,
         u"lblCodigoCircunstancia"_s,
         u" ANIAHO.CodigoCircunstancia = '%1' "_s,
         u"Circunstancia"_s,
         {u"SELECT * FROM ICACIR"_s},
         {}},
        {u"cboCondicion"_s,
         u"Condición: "_s,
         u"lblCodigoCondicion"_s,
         u" ANIAHO.CodigoCondicion = '%1' "_s,
         u"Condicion"_s,
         {u"SELECT * FROM ICACON"_s},
         {}},
        {u"cboMetodo"_s,
         u"Método: "_s,
         u"lblCodigoMetodo"_s,
         u" ANICHO.CodigoMetodo = '%1' "_s,
         u"Metodo"_s,
         {u"SELECT * FROM ANIMCA"_s},
         {}},
        {u"cboReclamo"_s,
         u"Reclamo: "_s,
         u"lblCodigoReclamo"_s,
         u" ANIAHO.CodigoReclamo = '%1' "_s,
         u"Reclamo"_s,
         {u"SELECT * FROM ANIRECLAMO"_s},
         {}},
        {u"cboTipoRegistro"_s,
         u"Tipo Registro: "_s,
         u"lblTipoRegistro"_s,
         u" ANIAHO.TipoRegistro = '%1' "_s,
         {},
         {},
         {u"A .-. Anillamiento"_s, u"R .-. Recuperación"_s}},
    };
    return criterios;
}

const std::vector<CriterioLugar>& criteriosDeLugar() {
    static const std::vector<CriterioLugar> criterios{
        {1, u"Por Paraje"_s, u"dbcboLocalidad"_s,
         u"SELECT DISTINCT lTrim(l.NombreLocalidad & ', ' & l.Municipio) & ' .-. ' & l.CodigoLocalidad AS "
         "Localidad, l.IdLocalidad AS IdLocalidad, CodLocalidad FROM ANILOC AS l INNER JOIN anicho AS h ON "
         "l.CodigoLocalidad = h.CodLocalidad ORDER BY 1;"_s,
         u"Localidad"_s, u"CodLocalidad"_s, DatoLugar::CodigoLocalidad, u" ANICHO.CodLocalidad = '%1' "_s,
         u"Paraje: "_s},
        {4, u"Por Municipio"_s, u"dbcboMunicipio"_s,
         u"SELECT DISTINCT LTrim(aniloc.Municipio & ', ' & icapro.NombreProvincia) & ' .-. ' & "
         "aniloc.CodigoLocalidad AS Localidad FROM icapro INNER JOIN (anicho INNER JOIN ANILOC ON "
         "anicho.CodLocalidad = ANILOC.CodigoLocalidad) ON icapro.CodigoProvincia = ANILOC.CodigoProvincia "
         "ORDER BY 1;"_s,
         u"Localidad"_s, u"Localidad"_s, DatoLugar::Municipio, u" ANILOC.Municipio = '%1' "_s,
         u"Municipio: "_s},
        {2, u"Por Provincia"_s, u"dbcboProvincia"_s,
         u"SELECT rtrim(NombreProvincia)+ ' .-. ' + CodigoProvincia as Provincia FROM ICAPRO  ORDER BY "
         "NombreProvincia"_s,
         u"Provincia"_s, u"Provincia"_s, DatoLugar::Codigo, u" ANILOC.CodigoProvincia = '%1' "_s,
         u"Provincia: "_s},
        {6,
         u"Por Autonomía"_s,
         u"cboComunidad"_s,
         {},
         {},
         {},
         DatoLugar::Codigo,
         u" ICAPRO.CodigoComunidad = %1 "_s,
         u"Comunidad: "_s},
        {3, u"Por País"_s, u"dbcboPais"_s,
         u"SELECT rtrim(NombrePais)+ ' .-. ' + CodigoPais as Pais FROM ICACNT  ORDER BY NombrePais"_s,
         u"Pais"_s, u"Pais"_s, DatoLugar::Codigo, u" ICAPRO.CodigoPais = '%1' "_s, u"País: "_s},
        {kCualquierLugar, u"Cualquier Registro"_s, {}, {}, {}, {}, DatoLugar::Codigo, {}, {}},
    };
    return criterios;
}

const std::vector<CriterioPersona>& criteriosDePersona() {
    static const std::vector<CriterioPersona> criterios{
        {u'A', u"cboAnillador"_s,
         u"SELECT DISTINCT CodigoAnillador, Trim(NombreAnillador) & ' (A)' AS NOMBRE, IdAnillador AS ID FROM "
         "ANIMAT ORDER BY CodigoAnillador"_s,
         u"CodigoAnillador"_s, u" (ANICHO.CodAnillador = %1 OR ANICHO.Anillador= %1) "_s, u"Anillador: "_s},
        {u'G', u"cboAnillador"_s,
         u"SELECT DISTINCT CodigoGrupo, Trim(NombreGrupo) & ' (G)' AS NOMBRE, CodigoGrupo AS ID FROM ANIMAT "
         "ORDER BY CodigoGrupo"_s,
         u"CodigoGrupo"_s, u" (ANIMAT.CodigoGrupo = %1  OR ANICHO.Grupo= %1) "_s, u"Grupo: "_s},
        {kClaseCentro, u"cboCentro"_s,
         u"SELECT CodigoCentro, Trim(NombreCentro) & ' (C)' AS NOMBRE FROM ICAFRO ORDER BY CodigoCentro"_s,
         u"CodigoCentro"_s, u"ANIAHO.CodigoCentro = '%1' "_s, u"Centro: "_s},
    };
    return criterios;
}

const CriterioSuelto& criterioEspecies() {
    static const CriterioSuelto criterio{u" ANIAHO.IdEspecie IN (%1) "_s, u"Especie/s: "_s};
    return criterio;
}

const CriterioSuelto& criterioFechas() {
    static const CriterioSuelto criterio{u" ANICHO.FechaCaptura BETWEEN CDate('%1') AND CDate('%2') "_s,
                                         u"Fecha/s: "_s};
    return criterio;
}

const CriterioSuelto& criterioAnilla() {
    static const CriterioSuelto criterio{u" ANIAHO.NumeroAnilla = '%1' "_s, u"Anilla: "_s};
    return criterio;
}

const QStringList& comunidadesAutonomas() {
    static const QStringList comunidades{
        u"ANDALUCIA  .-.  1"_s,          u"ARAGON  .-.  2"_s,
        u"ASTURIAS   .-.  3"_s,          u"BALEARES  .-.  4"_s,
        u"CANARIAS  .-.  5"_s,           u"CANTABRIA  .-.  6"_s,
        u"CASTILLA LA MANCHA  .-.  7"_s, u"CASTILLA LEON  .-.  8"_s,
        u"CATALUÑA  .-.  9"_s,           u"CEUTA  .-.  10"_s,
        u"EXTREMADURA  .-.  11"_s,       u"GALICIA  .-.  12"_s,
        u"LA RIOJA  .-.  13"_s,          u"MADRID  .-.  14"_s,
        u"MELILLA  .-.  15"_s,           u"MURCIA  .-.  16"_s,
        u"NAVARRA  .-.  17"_s,           u"PAIS VASCO  .-.  18"_s,
        u"VALENCIA  .-.  19"_s,          u"OTRAS  .-.  20"_s,
    };
    return comunidades;
}

}  // namespace tarmel
