#include "core/DefinicionesGlobales.h"
#include "queries/Consultas.h"
#include "queries/InformeComun.h"
#include "queries/Informes.h"

/// The listing of a query, one line a capture.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

using report::Align;

const QString kHojCamC = u"SELECT * FROM Consultas ORDER BY NumHoja,NumRegistro"_s;

const std::vector<ColumnaInforme>& columnas() {
    static const std::vector<ColumnaInforme> lista{{u"Nº Hoja"_s, u"NumHoja"_s, 20.5, Align::Right},
                                                   {u"Reg."_s, u"NumRegistro"_s, 8, Align::Right},
                                                   {u"T."_s, u"TipoRegistro"_s, 5, Align::Centre},
                                                   {u"Fecha"_s, u"FechaCaptura"_s, 15.5},
                                                   {u"Háb."_s, u"CodigoHabitat"_s, 8.3, Align::Centre},
                                                   {u"Mét."_s, u"CodigoMetodo"_s, 7.8, Align::Centre},
                                                   {u"Red."_s, u"NumRedes"_s, 8.3, Align::Right},
                                                   {u"Lon."_s, u"LongitudRed"_s, 11, Align::Right},
                                                   {u"Especie"_s, u"NombreEspecie"_s, 36},
                                                   {u"Localidad"_s, u"NombreLocalidad"_s, 45.7},
                                                   {u"Centro"_s, u"CodigoCentro"_s, 10.5, Align::Centre},
                                                   {u"Anilla"_s, u"NumeroAnilla"_s, 14.5},
                                                   {u"Edad"_s, u"CodigoEdad"_s, 8.3, Align::Centre},
                                                   {u"Sexo"_s, u"CodigoSexo"_s, 8.3, Align::Centre},
                                                   {u"Prec."_s, u"CodigoPrecision"_s, 8.3, Align::Centre},
                                                   {u"Ala"_s, u"Ala"_s, 10, Align::Right},
                                                   {u"F8"_s, u"F8"_s, 9.5, Align::Right},
                                                   {u"Peso"_s, u"Peso"_s, 12.5, Align::Right},
                                                   {u"Gras."_s, u"CodigoGrasa"_s, 8.8, Align::Centre},
                                                   {u"Recl."_s, u"CodigoReclamo"_s, 8.8, Align::Centre},
                                                   {u"Est."_s, u"CodigoEstado"_s, 7.4, Align::Centre}};
    return lista;
}

report::Report diseño() {
    report::Report informe;
    informe.name = u"repHojCamC"_s;
    informe.title = u"Listado de capturas"_s;
    informe.orientation = report::Orientation::Landscape;
    informe.fontSize = 7;
    informe.banded = true;
    const double ancho = informe.width();
    informe.reportHeader.name = u"ReportHeader"_s;
    ponerLogos(informe.reportHeader, ancho);
    ponerFiltro(informe.reportHeader, ancho);
    informe.pageHeader.name = u"PageHeader"_s;
    informe.detail.name = u"HojCamC_Detail"_s;
    ponerColumnas(columnas(), 0, 3.5, informe.pageHeader, informe.detail);
    informe.pageFooter = pieDePagina(ancho);
    return informe;
}

}  // namespace

void mostrarRepHojCamC() {
    mostrarInforme(
        diseño(),
        [] {
            ado::Recordset filas;
            filas.Open(kHojCamC, gConexion);
            return filas;
        },
        [](report::Document& documento) { documento.SetText(u"lblFiltro"_s, TextoFiltro()); },
        forms::Modality::Modal);
}

}  // namespace tarmel
