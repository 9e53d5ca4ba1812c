#include "core/DefinicionesGlobales.h"
#include "queries/Consultas.h"
#include "queries/InformeComun.h"
#include "queries/Informes.h"

/// The field sheets: each with its head, and its captures under it.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

using report::Align;
using report::field;
using report::label;

/// Sheet by sheet and capture by capture, whichever way the engine goes through the tables.
const QString kHojCam_Grouping =
    u"SELECT ANICHO.*, ANILOC.NombreLocalidad AS NombreLocalidad, ANILOC.Municipio AS Municipio, "
    "ICAPRO.NombreProvincia AS NombreProvincia, ICAHAB.NombreHabitat AS NombreHabitat, ANIMCA.NombreMetodo "
    "AS NombreMetodo, ANIMAT.CodigoAnillador AS CodigoAnillador, ANILOC.CodigoLocalidad AS CodigoLocalidad, "
    "ANIMAT.NombreAnillador AS NombreAnillador, ANIAHO.*, ANIBRD.NombreEspecie AS NombreEspecie, "
    "ANIAHO.Observaciones AS ObservacionesD, ANILOC.Municipio AS EXPR1 FROM ANICHO, ANILOC, ICAHAB, ANIMCA, "
    "ANIMAT, ANIAHO, ANIBRD, ICAPRO WHERE ANICHO.CodLocalidad = ANILOC.CodigoLocalidad AND "
    "ANICHO.CodigoHabitat = ICAHAB.CodigoHabitat AND ANICHO.CodigoMetodo = ANIMCA.CodigoMetodo AND "
    "(ANICHO.CodAnillador = ANIMAT.CodigoAnillador OR ANICHO.Anillador = ANIMAT.CodigoAnillador  OR "
    "ANICHO.CodAnillador=ANIMAT.CodigoGrupo) AND ANICHO.IdCabecera = ANIAHO.IdCabecera AND ANIAHO.IdEspecie "
    "= ANIBRD.IdEspecie AND ANILOC.CodigoProvincia = ICAPRO.CodigoProvincia AND (ANICHO.NumHoja >= ?) AND "
    "(ANICHO.NumHoja <= ?) ORDER BY ANICHO.NumHoja, ANIAHO.NumRegistro"_s;

/// A sheet whose codes belong to two ringers makes two groups, one for each name.
const QStringList kGrupo{u"NumHoja"_s,
                         u"NombreLocalidad"_s,
                         u"FechaCaptura"_s,
                         u"HoraDesde"_s,
                         u"HoraHasta"_s,
                         u"NombreHabitat"_s,
                         u"NombreMetodo"_s,
                         u"NumRedes"_s,
                         u"LongitudRed"_s,
                         u"Campanna"_s,
                         u"CodigoEstacion"_s,
                         u"MannanaCodigoFuerza"_s,
                         u"MannanaCodigoDireccion"_s,
                         u"MannanaCodigoNubosidad"_s,
                         u"MannanaCodigoLluvia"_s,
                         u"TardeCodigoFuerza"_s,
                         u"TardeCodigoDireccion"_s,
                         u"TardeCodigoNubosidad"_s,
                         u"TardeCodigoLluvia"_s,
                         u"CodigoLocalidad"_s,
                         u"NombreAnillador"_s,
                         u"Municipio"_s,
                         u"NombreProvincia"_s,
                         u"CodAnillador"_s};

constexpr double kAlto = 4.4;
const QString kHora = u"HH:mm"_s;

/// "Centro" repeats the type of the record: the ringers' printed sheets have it so.
const std::vector<ColumnaInforme>& columnas() {
    static const std::vector<ColumnaInforme> lista{
        {u"Reg."_s, u"NumRegistro"_s, 11, Align::Right},
        {u"T."_s, u"TipoRegistro"_s, 8, Align::Centre},
        {u"Anilla"_s, u"Anilla"_s, 24},
        {u"Especie"_s, u"NombreEspecie"_s, 66},
        {u"Ed"_s, u"CodigoEdad"_s, 9, Align::Centre},
        {u"Sx"_s, u"CodigoSexo"_s, 9, Align::Centre},
        {u"Ala"_s, u"Ala"_s, 16, Align::Right},
        {u"F8"_s, u"F8"_s, 16, Align::Right},
        {u"Peso"_s, u"Peso"_s, 17, Align::Right},
        {u"Hora"_s, u"HoraCaptura"_s, 18, Align::Centre, {}, kHora},
        {u"St"_s, u"CodigoEstatus"_s, 9, Align::Centre},
        {u"Co"_s, u"CodigoCondicion"_s, 9, Align::Centre},
        {u"Ci"_s, u"CodigoCircunstancia"_s, 11, Align::Centre},
        {u"Centro"_s, u"TipoRegistro"_s, 16, Align::Centre},
        {u"Tarso"_s, u"Tarso"_s, 16, Align::Right},
        {u"G."_s, u"CodigoGrasa"_s, 9, Align::Centre},
        {u"Pl."_s, u"CodigoPlaca"_s, 9, Align::Centre}};
    return lista;
}

/// The key of the abbreviations, in a box of its own.
void ponerTerminologia(report::Section& seccion, double ancho) {
    const std::pair<QString, QString> claves[] = {{u"T."_s, u"Tipo de registro"_s},
                                                  {u"Ed"_s, u"Edad"_s},
                                                  {u"Sx"_s, u"Sexo"_s},
                                                  {u"G."_s, u"Grasa"_s},
                                                  {u"Pl."_s, u"Placa"_s},
                                                  {u"St."_s, u"ModoStatus"_s},
                                                  {u"Co"_s, u"Condición"_s},
                                                  {u"Ci"_s, u"Circunstancia"_s}};
    constexpr double kCabecera = 30;
    constexpr double kSigla = 8;
    const double arriba = seccion.height;
    const double paso = (ancho - kCabecera) / 4;
    seccion.elements.push_back(report::frame({0, arriba, ancho, 11}).filled(0.04));
    seccion.elements.push_back(label(u"Terminología"_s, {2, arriba + 1, kCabecera - 2, kAlto}).bold());
    for (int i = 0; i < 8; ++i) {
        const double x = kCabecera + (i % 4) * paso;
        const double y = arriba + 1 + (i / 4) * 4.6;
        const auto& [sigla, significado] = claves[i];
        seccion.elements.push_back(label(sigla, {x, y, kSigla, kAlto}).bold());
        seccion.elements.push_back(label(significado, {x + kSigla, y, paso - kSigla - 1, kAlto}));
    }
    seccion.height = arriba + 14;
}

/// One line of the sheet's head: labels, each with what stands behind it.
class Renglon {
 public:
    Renglon(report::Section& seccion, double arriba) : seccion_(seccion), arriba_(arriba) {}
    Renglon& rotulo(const QString& texto, double ancho) {
        return poner(label(texto, sitio(ancho)).points(8), ancho);
    }
    Renglon& dato(report::Element campo, double ancho) {
        campo.place = sitio(ancho);
        return poner(campo.bold(), ancho);
    }

 private:
    [[nodiscard]] report::Box sitio(double ancho) const { return {x_, arriba_, ancho - 1, kAlto}; }
    Renglon& poner(const report::Element& elemento, double ancho) {
        seccion_.elements.push_back(elemento);
        x_ += ancho;
        return *this;
    }
    report::Section& seccion_;
    double arriba_;
    double x_ = 2;
};

report::Section cabeceraDeHoja(double ancho) {
    report::Section seccion{u"HojCam_Grouping_Header"_s, 20, {}};
    seccion.elements.push_back(report::frame({0, 2, ancho, 16}).filled(0.1).ruled(0.3));
    const auto campo = [](const QString& columna) { return field(columna, {}); };
    Renglon(seccion, 3.2)
        .rotulo(u"Nº Hoja"_s, 15)
        .dato(campo(u"NumHoja"_s), 33)
        .rotulo(u"Fecha Captura"_s, 23)
        .dato(campo(u"FechaCaptura"_s), 25)
        .rotulo(u"Hora Desde"_s, 19)
        .dato(campo(u"HoraDesde"_s).formatted(kHora), 14)
        .rotulo(u"Hora Hasta"_s, 19)
        .dato(campo(u"HoraHasta"_s).formatted(kHora), 14)
        .rotulo(u"Anillador"_s, 16)
        .dato(campo(u"CodAnillador"_s), 17)
        .dato(campo(u"NombreAnillador"_s), 76);
    Renglon(seccion, 7.8)
        .rotulo(u"Localidad"_s, 15)
        .dato(campo(u"NombreLocalidad"_s), 94)
        .dato(campo(u"CodigoLocalidad"_s), 22)
        .dato(campo(u"Municipio"_s), 86)
        .dato(campo(u"NombreProvincia"_s), 54);
    Renglon(seccion, 12.4)
        .rotulo(u"Hábitat"_s, 15)
        .dato(campo(u"NombreHabitat"_s), 56)
        .rotulo(u"Método"_s, 13)
        .dato(campo(u"NombreMetodo"_s), 44)
        .rotulo(u"Nº Redes"_s, 16)
        .dato(campo(u"NumRedes"_s), 9)
        .rotulo(u"Long. Redes"_s, 20)
        .dato(campo(u"LongitudRed"_s), 13)
        .rotulo(u"Campaña"_s, 16)
        .dato(campo(u"Campanna"_s), 28)
        .rotulo(u"Estación"_s, 14)
        .dato(campo(u"CodigoEstacion"_s), 27);
    return seccion;
}

report::Report diseño() {
    report::Report informe;
    informe.name = u"repHojCam"_s;
    informe.title = u"Hojas de campo"_s;
    informe.orientation = report::Orientation::Landscape;
    informe.fontSize = 9;
    informe.banded = true;
    informe.groupBy = kGrupo;
    const double ancho = informe.width();
    informe.reportHeader.name = u"ReportHeader"_s;
    ponerLogos(informe.reportHeader, ancho);
    ponerFiltro(informe.reportHeader, ancho);
    ponerTerminologia(informe.reportHeader, ancho);
    informe.groupHeader = cabeceraDeHoja(ancho);
    informe.groupContinued = {
        u"HojCam_Grouping_Continued"_s,
        6,
        {label(u"Nº Hoja"_s, {2, 0.5, 14, kAlto}).points(8), field(u"NumHoja"_s, {17, 0.5, 32, kAlto}).bold(),
         field(u"FechaCaptura"_s, {50, 0.5, 25, kAlto}).bold(),
         label(u"(continuación)"_s, {76, 0.5, 40, kAlto}).points(8).italic()}};
    informe.groupTitles.name = u"HojCam_Grouping_Titles"_s;
    informe.detail.name = u"HojCam_Detail"_s;
    ponerColumnas(columnas(), 0, kAlto, informe.groupTitles, informe.detail);
    informe.groupFooter = {u"HojCam_Grouping_Footer"_s, 3, {}};
    informe.pageFooter = pieDePagina(ancho);
    return informe;
}

}  // namespace

void mostrarRepHojCam() {
    mostrarInforme(
        diseño(),
        [] {
            ado::Recordset filas;
            filas.Open(kHojCam_Grouping, gConexion, ado::Cursor::ForwardOnly, ado::Lock::ReadOnly, -1,
                       {gHojaInicial.toDouble(), gHojaFinal.toDouble()});
            return filas;
        },
        [](report::Document& documento) { documento.SetText(u"lblFiltro"_s, TextoFiltro()); },
        forms::Modality::Modeless);
}

}  // namespace tarmel
