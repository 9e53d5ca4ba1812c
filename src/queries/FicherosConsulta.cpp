#include <QDir>
#include <array>

#include "core/General.h"
#include "platform/ado/Recordset.h"
#include "platform/basic/Text.h"
#include "platform/system/Files.h"
#include "queries/Consultas.h"
#include "queries/Repintado.h"

using namespace Qt::StringLiterals;

// The text files of a query.
namespace tarmel {

namespace {

constexpr QChar kSeparador = u';';

struct ColumnaListado {
    const char16_t* titulo;
    const char16_t* campo;
};

/// The listing from left to right. "Hora" stands over the precision of the date: that is how the
/// spreadsheets that read the file know it. The free data of sheet and capture bear the same titles.
constexpr std::array<ColumnaListado, 56> kListado{{
    {u"Hoja", u"NumHoja"},
    {u"Registro", u"NumRegistro"},
    {u"Localidad", u"CodigoLocalidad"},
    {u"Habitat", u"CodigoHabitat"},
    {u"Metodo", u"CodigoMetodo"},
    {u"Campaña", u"Campanna"},
    {u"Estacion", u"CodigoEstacion"},
    {u"FechaCaptura", u"FechaCaptura"},
    {u"HoraInicio", u"HoraDesde"},
    {u"HoraFinal", u"HoraHasta"},
    {u"NºRedes", u"NumRedes"},
    {u"Long.Redes", u"LongitudRed"},
    {u"MañanaFuerzaViento", u"MannanaCodigoFuerza"},
    {u"MañanaDirecc.Viento", u"MannanaCodigoDireccion"},
    {u"MañanaNubosidad", u"MannanaCodigoNubosidad"},
    {u"MañanaPrecipitacion", u"MannanaCodigoLluvia"},
    {u"TardeFuerzaViento", u"TardeCodigoFuerza"},
    {u"TardeDirecc.Viento", u"TardeCodigoDireccion"},
    {u"TardeNubosidad", u"TardeCodigoNubosidad"},
    {u"TardePrecipitacion", u"TardeCodigoLluvia"},
    {u"Observ.Hoja", u"ANICHO_Observaciones"},
    {u"v1", u"ANICHO_Dato1"},
    {u"v2", u"ANICHO_Dato2"},
    {u"v3", u"ANICHO_Dato3"},
    {u"v4", u"ANICHO_Dato4"},
    {u"v5", u"ANICHO_Dato5"},
    {u"v6", u"ANICHO_Dato6"},
    {u"Centro", u"CodigoCentro"},
    {u"TipoRegistro", u"TipoRegistro"},
    {u"Anilla", u"NumeroAnilla"},
    {u"Parentesco", u"Parentesco"},
    {u"Especie", u"CodigoEspecie"},
    {u"Edad", u"CodigoEdad"},
    {u"Sexo", u"CodigoSexo"},
    {u"Reclamo", u"CodigoReclamo"},
    {u"Condicion", u"CodigoCondicion"},
    {u"Circunstancia", u"CodigoCircunstancia"},
    {u"Ala", u"Ala"},
    {u"F8", u"F8"},
    {u"Peso", u"Peso"},
    {u"Tarso", u"Tarso"},
    {u"Grasa", u"CodigoGrasa"},
    {u"Placa", u"CodigoPlaca"},
    {u"Musculo", u"CodigoMusculo"},
    {u"Hora", u"CodigoPrecision"},
    {u"Estado", u"CodigoEstado"},
    {u"Modo", u"CodigoEstatus"},
    {u"Muda", u"CodigoMuda"},
    {u"Iniciales", u"IniAnillador"},
    {u"Observ.Detalle", u"ANIAHO_Observaciones"},
    {u"v1", u"ANIAHO_Dato1"},
    {u"v2", u"ANIAHO_Dato2"},
    {u"v3", u"ANIAHO_Dato3"},
    {u"v4", u"ANIAHO_Dato4"},
    {u"v5", u"ANIAHO_Dato5"},
    {u"v6", u"ANIAHO_Dato6"},
}};

QString rutaFichero(const QString& nombre) {
    // A name, not a path: it stays in the folder.
    if (nombre.contains(u'/') || nombre.contains(u'\\')) throw basic::RuntimeError(basic::error::FileAccess);
    return RutaEnAplicacion(u"Consultas"_s) + QDir::separator() + nombre + u".txt"_s;
}

/// Lines as the file has them, kept until all of them are there: a file that looks whole is whole.
class Lineas {
 public:
    void añadir(const QString& linea) { bytes_ += basic::toAnsi(linea) + "\r\n"; }
    void guardar(const QString& nombre) const { sys::writeWhole(rutaFichero(nombre), bytes_); }

 private:
    QByteArray bytes_;
};

}  // namespace

void EscribirListado(const QString& NombreFichero) {
    const RelojDeArena relojDeArena;
    Lineas lineas;
    QStringList titulos;
    for (const ColumnaListado& columna : kListado)
        titulos << QString::fromUtf16(columna.titulo);
    lineas.añadir(titulos.join(kSeparador));

    ado::Recordset filas;
    filas.Open(u"SELECT * FROM Consultas ORDER BY NumHoja,NumRegistro"_s, gConexion);
    std::array<int, kListado.size()> posiciones{};
    for (size_t i = 0; i < kListado.size(); ++i)
        posiciones[i] = filas.FieldIndex(QString::fromUtf16(kListado[i].campo));
    QString linea;
    for (Repintado repintado; !filas.Eof(); filas.MoveNext()) {
        linea.resize(0);
        for (const int posicion : posiciones) {
            linea += filas.Text(posicion);
            linea += kSeparador;
        }
        linea.chop(1);
        lineas.añadir(linea);
        repintado.aVeces();
    }
    lineas.guardar(NombreFichero);
}

void EscribirBalance(const QString& NombreFichero) {
    const RelojDeArena relojDeArena;
    Lineas lineas;
    lineas.añadir(u"Especie;Pollos;Volanderos;Total"_s);

    ado::Recordset filas;
    filas.Open(
        u"SELECT NombreEspecie, NumPollos, NumVolanderos FROM ICABAL INNER JOIN ANIBRD ON ICABAL.IdEspecie = "
        "ANIBRD.IdEspecie"_s,
        gConexion);
    for (; !filas.Eof(); filas.MoveNext()) {
        const int total = filas.Value(u"NumPollos"_s).toLong() + filas.Value(u"NumVolanderos"_s).toLong();
        const QStringList campos{filas.Text(0), filas.Text(1), filas.Text(2), basic::CStr(total)};
        lineas.añadir(campos.join(kSeparador));
    }
    lineas.guardar(NombreFichero);
}

}  // namespace tarmel
