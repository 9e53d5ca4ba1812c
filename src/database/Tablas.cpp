#include "database/Tablas.h"

#include <algorithm>
#include <initializer_list>
#include <optional>

namespace tarmel {

using access_sql::ColumnDef;
using access_sql::CreateTable;
using access_sql::TableDef;
using access_sql::Type;
using namespace Qt::StringLiterals;

namespace {

using Columnas = std::vector<ColumnDef>;
using Clave = std::vector<QString>;

ColumnDef numero(const char16_t* nombre, Type tipo = Type::Long, std::optional<QString> defecto = {}) {
    return {QString::fromUtf16(nombre), tipo, 0, 0, false, std::move(defecto)};
}
ColumnDef texto(const char16_t* nombre, int ancho, std::optional<QString> defecto = {}) {
    return {QString::fromUtf16(nombre), Type::Text, ancho, 0, false, std::move(defecto)};
}
ColumnDef fecha(const char16_t* nombre) {
    return numero(nombre, Type::Date);
}
ColumnDef contador(const char16_t* nombre) {
    return numero(nombre, Type::Counter);
}
/// A sheet's number: the owner's six digits and six more, read as a number.
ColumnDef numeroDeHoja() {
    return {u"NumHoja"_s, Type::Decimal, 15, 0, false, {}};
}

CreateTable tabla(const char16_t* nombre, Columnas columnas, Clave clave) {
    return {TableDef{QString::fromUtf16(nombre), std::move(columnas), std::move(clave), false}, {}};
}

Columnas juntas(std::initializer_list<Columnas> grupos) {
    Columnas todas;
    for (const Columnas& grupo : grupos)
        todas.insert(todas.end(), grupo.begin(), grupo.end());
    return todas;
}

/// Free data of a sheet or capture, from one number to another: five characters each.
Columnas datos(const QString& prefijo, int desde, int hasta) {
    Columnas columnas;
    for (int n = desde; n <= hasta; ++n) {
        columnas.push_back({prefijo + u"Dato"_s + QString::number(n), Type::Text, 5, 0, false, {}});
    }
    return columnas;
}

constexpr int kNombre = 100;  // widths of names and notes
constexpr int kObservaciones = 250;
constexpr int kHabitat = 2;  // widths of codes, the same in their code table and wherever they are noted
constexpr int kMetodo = 1;
constexpr int kViento = 3;
constexpr int kTiempo = 2;
constexpr int kCentro = 3;
constexpr int kLocalidad = 10;
constexpr int kProvincia = 2;
constexpr int kPais = 2;
constexpr int kEspecie = 5;
constexpr int kAnilla = 8;

/// Weather of one half of the day.
Columnas tiempo(const QString& mitad) {
    const auto columna = [&](const char16_t* nombre, int ancho) {
        return ColumnDef{mitad + u"Codigo"_s + QString::fromUtf16(nombre), Type::Text, ancho, 0, false, {}};
    };
    return {columna(u"Fuerza", kTiempo), columna(u"Direccion", kViento), columna(u"Nubosidad", kTiempo),
            columna(u"Lluvia", kTiempo)};
}

/// How, when and in what weather a sheet's birds were caught: the same in the sheet and in the query's work
/// table.
Columnas lugarYMetodo() {
    return {texto(u"CodigoHabitat", kHabitat), texto(u"CodigoMetodo", kMetodo)};
}
Columnas redesYHoras() {
    return juntas({{numero(u"NumRedes"), numero(u"LongitudRed", Type::Double), fecha(u"HoraDesde"),
                    fecha(u"HoraHasta"), texto(u"Campanna", 50), texto(u"CodigoEstacion", 50)},
                   tiempo(u"Mannana"_s),
                   tiempo(u"Tarde"_s)});
}
Columnas medidas() {
    return {numero(u"Ala", Type::Double),   numero(u"F8", Type::Double), numero(u"Peso", Type::Double),
            numero(u"Tarso", Type::Double), texto(u"CodigoPlaca", 1),    texto(u"CodigoGrasa", 1),
            texto(u"CodigoMusculo", 1)};
}

CreateTable anicho() {
    return tabla(
        u"ANICHO",
        juntas({{numero(u"IdCabecera"), contador(u"IdCab"), numeroDeHoja(), numero(u"CodAnillador"),
                 texto(u"CodLocalidad", kLocalidad), fecha(u"FechaCaptura")},
                lugarYMetodo(),
                redesYHoras(),
                {texto(u"Observaciones", kObservaciones)},
                datos({}, 1, 6),
                {numero(u"NumEAnillador", Type::Integer, u"0"_s), numero(u"NumEGrupo", Type::Integer, u"0"_s),
                 texto(u"Estado", 1), numero(u"Anillador"), numero(u"Grupo")}}),
        {u"IdCab"_s});
}

/// The order is fixed, since exchange files follow it: `IdEspecie` is the twelfth and `CodigoEspecie` the
/// last column. Two columns are spare, so that files from before `CodigoEspecie` have 40 columns.
CreateTable aniaho() {
    return tabla(
        u"ANIAHO",
        juntas({{numero(u"IdCabecera"), numero(u"NumRegistro"), texto(u"TipoRegistro", 1),
                 texto(u"CodigoCentro", kCentro), texto(u"NumeroAnilla", kAnilla), texto(u"Anilla", 10),
                 texto(u"InfoAnilla", 1), texto(u"AnillaSustituida", kAnilla), texto(u"Parentesco", 3),
                 texto(u"Reservado1", 50), texto(u"Reservado2", 50), numero(u"IdEspecie"),
                 texto(u"CodigoEdad", 1), texto(u"TamañoNidada", 2), texto(u"CodigoSexo", 1),
                 texto(u"CodigoManipulacion", 1), texto(u"CodigoTransporte", 1),
                 texto(u"CodigoCircunstancia", 2), texto(u"CodigoCondicion", 1)},
                medidas(),
                {fecha(u"HoraCaptura"), texto(u"PrecisionFecha", 1), texto(u"CodigoEstado", 1),
                 texto(u"CodigoEstatus", 1), numero(u"CodigoMuda", Type::Integer), texto(u"CodigoReclamo", 1),
                 texto(u"IniAnillador", 25), texto(u"Observaciones", kObservaciones)},
                datos({}, 1, 6),
                {texto(u"CodigoEspecie", kEspecie)}}),
        {u"IdCabecera"_s, u"NumRegistro"_s});
}

CreateTable consultas() {
    return tabla(
        u"Consultas",
        juntas({{numeroDeHoja()},
                lugarYMetodo(),
                {texto(u"CodigoLocalidad", kLocalidad), texto(u"NombreLocalidad", 255),
                 texto(u"Municipio", kNombre), fecha(u"FechaCaptura")},
                redesYHoras(),
                {texto(u"ANICHO_Observaciones", kObservaciones)},
                datos(u"ANICHO_"_s, 1, 6),
                {texto(u"Estado", 1), numero(u"NumRegistro"), texto(u"TipoRegistro", 1),
                 texto(u"CodigoCentro", kCentro), texto(u"NumeroAnilla", kAnilla), numero(u"IdEspecie"),
                 texto(u"CodigoEspecie", kEspecie), texto(u"NombreEspecie", kNombre), texto(u"Parentesco", 3),
                 texto(u"CodigoCondicion", 1), texto(u"CodigoCircunstancia", 2), texto(u"CodigoEdad", 1),
                 texto(u"CodigoSexo", 1), texto(u"CodigoReclamo", 1)},
                medidas(),
                {texto(u"CodigoPrecision", 1), texto(u"CodigoEstado", 1), texto(u"CodigoEstatus", 1),
                 numero(u"CodigoMuda", Type::Integer), texto(u"IniAnillador", 25),
                 texto(u"ANIAHO_Observaciones", kObservaciones)},
                datos(u"ANIAHO_"_s, 1, 6)}),
        {});
}

/// A code with its name.
struct TablaDeCodigos {
    const char16_t* nombre;
    const char16_t* columna;  ///< what stands behind "Codigo" and "Nombre"
    int ancho;
};

constexpr TablaDeCodigos kTablasDeCodigos[] = {
    {u"ICAFRO", u"Centro", kCentro},
    {u"ICACIR", u"Circunstancia", 2},
    {u"ICACON", u"Condicion", 1},
    {u"ICAAGE", u"Edad", 1},
    {u"ICASEX", u"Sexo", 1},
    {u"ICASTA", u"Estatus", 1},
    {u"ICAPRECISION", u"Precision", 1},
    {u"ICAMANIP", u"Manipulacion", 1},
    {u"ICATRANS", u"Transporte", 1},
    {u"ICATAM", u"TamañoNidada", 2},
    {u"ICAHAB", u"Habitat", kHabitat},
    {u"ANIRECLAMO", u"Reclamo", 1},
    {u"ANIMUS", u"Musculo", 1},
    {u"ANIGRA", u"Grasa", 1},
    {u"ANIPLACA", u"Placa", 1},
    {u"ANIESTADO", u"Estado", 1},
    {u"ANIMCA", u"Metodo", kMetodo},
    {u"ANIFVE", u"Fuerza", kTiempo},
    {u"ANINUB", u"Nubosidad", kTiempo},
    {u"ANILLU", u"Lluvia", kTiempo},
    {u"ICACNT", u"Pais", kPais},
};

CreateTable codigos(const TablaDeCodigos& t) {
    const QString codigo = u"Codigo"_s + QString::fromUtf16(t.columna);
    const QString nombre = u"Nombre"_s + QString::fromUtf16(t.columna);
    return tabla(t.nombre,
                 {{codigo, Type::Text, t.ancho, 0, false, {}}, {nombre, Type::Text, kNombre, 0, false, {}}},
                 {codigo});
}

std::vector<CreateTable> todasLasTablas() {
    std::vector<CreateTable> tablas{
        tabla(u"ANIMAT",
              {numero(u"IdAnillador"), contador(u"IdAni"), numero(u"CodigoAnillador"),
               texto(u"NombreAnillador", kNombre), numero(u"CoordinadorGrupo", Type::Boolean, u"0"_s),
               texto(u"CodigoGrupo", 6), texto(u"NombreGrupo", kNombre), texto(u"CodigoEntidad", 6),
               texto(u"NombreEntidad", kNombre), numero(u"UltimoEnvio", Type::Integer, u"0"_s),
               texto(u"Email", kNombre, u"''"_s)},
              {u"IdAni"_s}),
        tabla(u"ANILOC",
              {numero(u"IdLocalidad"), contador(u"IdLoc"), texto(u"CodigoLocalidad", kLocalidad),
               texto(u"CodigoProvincia", kProvincia), texto(u"NombreLocalidad", kNombre),
               texto(u"Municipio", kNombre), texto(u"CuadranteLatitud", 1), texto(u"CuadranteLongitud", 1),
               numero(u"GradosLatitud", Type::Integer), numero(u"MinutosLatitud", Type::Integer),
               numero(u"GradosLongitud", Type::Integer), numero(u"MinutosLongitud", Type::Integer),
               numero(u"OrigenDatos", Type::Integer, u"0"_s)},
              {u"IdLoc"_s}),
        tabla(u"ANIBRD",
              {numero(u"IdEspecie"), contador(u"IdEsp"), texto(u"CodigoEspecie", kEspecie),
               texto(u"NombreEspecie", kNombre), texto(u"NombreEspecie2", kNombre),
               numero(u"Iberica", Type::Integer), numero(u"OrigenDatos", Type::Integer, u"0"_s)},
              {u"IdEsp"_s}),
        anicho(),
        aniaho(),
        tabla(u"ICAPRO",
              {texto(u"CodigoProvincia", kProvincia), texto(u"NombreProvincia", 50),
               numero(u"CodigoComunidad", Type::Integer), texto(u"CodigoPais", kPais)},
              {u"CodigoProvincia"_s}),
        tabla(u"MOVIMIENTOS", {texto(u"IdMov", 1), texto(u"Descripcion", 25)}, {u"IdMov"_s}),
        tabla(u"ALMACEN",
              {numero(u"NumMov"), texto(u"Modelo", 2), texto(u"Inscripcion", 2), texto(u"NumInicial", 6),
               texto(u"NumFinal", 6), numero(u"Cantidad"), fecha(u"Fecha"), texto(u"TipoMovimiento", 1)},
              {u"NumMov"_s}),
        tabla(u"TIPOANILLAS", {texto(u"Modelo", 2), texto(u"Inscripcion", 2), numero(u"Total")},
              {u"Modelo"_s, u"Inscripcion"_s}),
        consultas(),
        tabla(u"ICABAL", {numero(u"IdEspecie"), numero(u"NumPollos"), numero(u"NumVolanderos")}, {}),
        tabla(u"ICAMUDA", {numero(u"CodigoMuda", Type::Integer), texto(u"NombreMuda", kNombre)},
              {u"CodigoMuda"_s}),
        tabla(u"ICAINFORNG", {texto(u"InfoAnilla", 1), texto(u"NombreInfoAnilla", kNombre)},
              {u"InfoAnilla"_s}),
        tabla(u"ANIDVI", {texto(u"CodigoDireccion", kViento), texto(u"NombreDireccion", 50)},
              {u"CodigoDireccion"_s}),
    };
    for (const TablaDeCodigos& t : kTablasDeCodigos)
        tablas.push_back(codigos(t));
    return tablas;
}

}  // namespace

const std::vector<CreateTable>& tablasDelEsquema() {
    static const std::vector<CreateTable> tablas = todasLasTablas();
    return tablas;
}

bool empiezaVacia(const QString& tabla) {
    static const std::vector<QString> vacias{u"ANIMAT"_s,  u"ANICHO"_s,    u"ANIAHO"_s,
                                             u"ALMACEN"_s, u"Consultas"_s, u"ICABAL"_s};
    return std::ranges::find(vacias, tabla) != vacias.end();
}

const std::vector<access_sql::ForeignKey>& relacionesDelEsquema() {
    static const std::vector<access_sql::ForeignKey> relaciones{
        {u"ICASEXIANIAHO"_s, u"ANIAHO"_s, u"CodigoSexo"_s, u"ICASEX"_s, u"CodigoSexo"_s},
        {u"ANIBRDANIAHO"_s, u"ANIAHO"_s, u"CodigoEspecie"_s, u"ANIBRD"_s, u"CodigoEspecie"_s},
        {u"MOVIMIENTOSALMACEN"_s, u"ALMACEN"_s, u"TipoMovimiento"_s, u"MOVIMIENTOS"_s, u"IdMov"_s},
    };
    return relaciones;
}

const std::vector<Identificador>& identificadoresDelEsquema() {
    static const std::vector<Identificador> identificadores{
        {u"ANIMAT"_s, u"IdAnillador"_s, u"IdAni"_s},
        {u"ANILOC"_s, u"IdLocalidad"_s, u"IdLoc"_s},
        {u"ANIBRD"_s, u"IdEspecie"_s, u"IdEsp"_s},
        {u"ANICHO"_s, u"IdCabecera"_s, u"IdCab"_s},
    };
    return identificadores;
}

const std::vector<Indice>& indicesDelEsquema() {
    // A partial index serves no query, so the identifiers have a plain one beside it. Every installation's
    // first ringer is number 1 and imports keep the number: `IdAnillador` may repeat.
    static const std::vector<Indice> indices{
        {u"ANIMAT"_s, {u"CodigoAnillador"_s}, true},
        {u"ANIMAT"_s, {u"IdAnillador"_s}},
        {u"ANIMAT"_s, {u"CodigoGrupo"_s}},
        {u"ANILOC"_s, {u"CodigoLocalidad"_s}, true},
        {u"ANILOC"_s, {u"IdLocalidad"_s}, true, true},
        {u"ANILOC"_s, {u"IdLocalidad"_s}},
        {u"ANILOC"_s, {u"CodigoProvincia"_s}},
        {u"ANIBRD"_s, {u"CodigoEspecie"_s}, true},
        {u"ANIBRD"_s, {u"IdEspecie"_s}, true, true},
        {u"ANIBRD"_s, {u"IdEspecie"_s}},
        {u"ANICHO"_s, {u"IdCabecera"_s}, true, true},
        {u"ANICHO"_s, {u"IdCabecera"_s}},
        {u"ANICHO"_s, {u"NumHoja"_s}},
        {u"ANICHO"_s, {u"CodAnillador"_s, u"NumHoja"_s}},
        {u"ANICHO"_s, {u"Anillador"_s}},
        {u"ANICHO"_s, {u"FechaCaptura"_s}},
        {u"ANICHO"_s, {u"CodLocalidad"_s}},
        // A ring is looked up by the first three. The others let the search for duplicates count in the order
        // of the index without reading a row, so that it takes one walk and no sort.
        {u"ANIAHO"_s,
         {u"TipoRegistro"_s, u"Anilla"_s, u"CodigoCentro"_s, u"NumeroAnilla"_s, u"IdCabecera"_s,
          u"HoraCaptura"_s}},
        {u"ANIAHO"_s, {u"NumeroAnilla"_s}},
        {u"ANIAHO"_s, {u"IdEspecie"_s}},
        {u"ANIAHO"_s, {u"CodigoEspecie"_s}},
        {u"ALMACEN"_s, {u"Modelo"_s, u"Inscripcion"_s}},
        // The printed listing begins before its rows could be sorted.
        {u"Consultas"_s, {u"NumHoja"_s, u"NumRegistro"_s}},
    };
    return indices;
}

const std::vector<Vista>& vistasDelEsquema() {
    static const std::vector<Vista> vistas{
        {u"Anillamientos_Dup"_s,
         u"SELECT ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro, Count(*) AS "
         u"TotAnillas "
         "FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = ANIAHO.IdCabecera WHERE "
         "ANIAHO.TipoRegistro='A' "
         "GROUP BY ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro HAVING (((Count(*))>1));"_s},
        {u"Recuperaciones_Dup"_s,
         u"SELECT ANIAHO.CodigoCentro, ANIAHO.Anilla, ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro, "
         u"ANICHO.FechaCaptura, "
         "ANIAHO.HoraCaptura, Count(*) AS TotAnillas FROM ANICHO INNER JOIN ANIAHO ON ANICHO.IdCabecera = "
         "ANIAHO.IdCabecera WHERE ANIAHO.TipoRegistro='R' GROUP BY ANIAHO.CodigoCentro, ANIAHO.Anilla, "
         "ANIAHO.NumeroAnilla, ANIAHO.TipoRegistro, ANICHO.FechaCaptura, ANIAHO.HoraCaptura HAVING (((Count(*))>1));"_s},
        {u"Datos_Duplicados"_s,
         u"SELECT DISTINCT ANIAHO.*, ANIBRD.NombreEspecie, ANICHO.NumHoja, ANICHO.FechaCaptura, "
         "ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO, ANIBRD, ANIAHO, Anillamientos_Dup WHERE "
         "ANIAHO.anilla = "
         "Anillamientos_Dup.anilla And ANIAHO.TipoRegistro = Anillamientos_Dup.TipoRegistro And "
         "ANIAHO.NumeroAnilla = "
         "Anillamientos_Dup.NumeroAnilla And ANIAHO.IdEspecie = ANIBRD.IdEspecie And ANIAHO.IdCabecera = "
         "ANICHO.IdCabecera UNION SELECT DISTINCT ANIAHO.*, ANIBRD.NombreEspecie, ANICHO.NumHoja, "
         "ANICHO.FechaCaptura, "
         "ANICHO.FechaCaptura-#1/1/1900# AS DifFecha FROM ANICHO, ANIBRD, ANIAHO, Recuperaciones_Dup WHERE "
         "ANIAHO.Anilla=Recuperaciones_Dup.Anilla AND ANIAHO.TipoRegistro = Recuperaciones_Dup.TipoRegistro "
         "AND "
         "ANIAHO.NumeroAnilla = Recuperaciones_Dup.NumeroAnilla AND ANICHO.FechaCaptura = "
         "Recuperaciones_Dup.FechaCaptura AND ANIAHO.IdEspecie = ANIBRD.IdEspecie And ANIAHO.IdCabecera = "
         "ANICHO.IdCabecera"_s},
        {u"Datos_Excel"_s,
         u"SELECT ANIMAT.CodigoGrupo, ANIMAT.NombreGrupo, ANIAHO.Anilla, ANIAHO.InfoAnilla, "
         u"ANIAHO.AnillaSustituida, "
         "ANIBRD.NombreEspecie, ANIBRD.CodigoEspecie, ANICHO.FechaCaptura, ANIAHO.HoraCaptura, "
         "ANIAHO.CodigoEdad, "
         "ANIAHO.CodigoSexo, ANIAHO.CodigoEstatus AS CodigoModoStatus, ANILOC.NombreLocalidad, "
         "ANILOC.Municipio AS "
         "MUNICIPIO, ANILOC.CodigoLocalidad, ANILOC.CodigoProvincia AS CodigoPROVINCIA, "
         "ANICHO.Observaciones, "
         "ANICHO.CodigoHabitat, ANICHO.CodigoMetodo, ANICHO.NumRedes, ANICHO.LongitudRed, ANICHO.HoraDesde, "
         "ANICHO.HoraHasta, ANICHO.Campanna, ANICHO.CodigoEstacion, ANICHO.MannanaCodigoFuerza, "
         "ANICHO.MannanaCodigoDireccion, ANICHO.MannanaCodigoNubosidad, ANICHO.MannanaCodigoLluvia, "
         "ANICHO.TardeCodigoFuerza, ANICHO.TardeCodigoDireccion, ANICHO.TardeCodigoNubosidad, "
         "ANICHO.TardeCodigoLluvia, "
         "ANICHO.Dato1, ANICHO.Dato2, ANICHO.Dato3, ANICHO.Dato4, ANICHO.Dato5, ANICHO.Dato6, "
         "ANIAHO.Parentesco, "
         "ANIAHO.TipoRegistro, ANIAHO.CodigoCentro, ANIAHO.CodigoCondicion, ANIAHO.CodigoCircunstancia, "
         "ANIAHO.CodigoReclamo, ANIAHO.Ala, ANIAHO.F8, ANIAHO.Peso, ANIAHO.Tarso, ANIAHO.CodigoPlaca, "
         "ANIAHO.CodigoGrasa, ANIAHO.CodigoMusculo, ANIAHO.PrecisionFecha AS CodigoPrecision, "
         "ANIAHO.CodigoEstado, "
         "ANIAHO.TamañoNidada AS CodigoTamañoNidada, ANIAHO.CodigoMuda, ANIAHO.CodigoManipulacion AS "
         "Manipulacion, "
         "ANIAHO.CodigoTransporte AS Transporte, ANIAHO.IniAnillador "
         "FROM (ANIMAT RIGHT JOIN (ANICHO LEFT JOIN ANILOC ON ANICHO.CodLocalidad = ANILOC.CodigoLocalidad) "
         "ON "
         "ANIMAT.CodigoAnillador = ANICHO.CodAnillador) INNER JOIN (ANIBRD INNER JOIN ANIAHO ON "
         "ANIBRD.IdEspecie = "
         "ANIAHO.IdEspecie) ON ANICHO.IdCabecera = ANIAHO.IdCabecera"_s},
    };
    return vistas;
}

}  // namespace tarmel
