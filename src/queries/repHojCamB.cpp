#include "core/DefinicionesGlobales.h"
#include "queries/Consultas.h"
#include "queries/InformeComun.h"
#include "queries/Informes.h"

/// The balance of a query: chicks and full-grown birds, species by species.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

using report::Align;

const QString kHojCamB =
    u"SELECT ICABAL.*, ANIBRD.NombreEspecie AS NombreEspecie, ICABAL.NumPollos+ICABAL.NumVolanderos AS "
    "NumTotal FROM ICABAL, ANIBRD WHERE ICABAL.IdEspecie = ANIBRD.IdEspecie ORDER BY ICABAL.IdEspecie"_s;

const QString kAnillamientos = u"BALANCE DE ANILLAMIENTOS"_s;
const QString kRecuperaciones = u"BALANCE DE RECUPERACIONES"_s;

constexpr double kAlto = 4.8;
constexpr double kCifra = 30;
constexpr double kEspecie = 96;

report::Report diseño() {
    report::Report informe;
    informe.name = u"repHojCamB"_s;
    informe.title = u"Balance"_s;
    informe.fontSize = 10;
    informe.banded = true;
    const double ancho = informe.width();
    informe.reportHeader.name = u"ReportHeader"_s;
    ponerLogos(informe.reportHeader, ancho);
    ponerFiltro(informe.reportHeader, ancho);
    informe.reportHeader.elements.push_back(
        report::label(kAnillamientos, entreLogos(ancho, 10, 7), u"lblTitulo"_s).bold().points(14).centred());
    informe.pageHeader.name = u"PageHeader"_s;
    informe.detail.name = u"HojCamB_Detail"_s;
    ponerColumnas({{u"Especie"_s, u"NombreEspecie"_s, kEspecie},
                   {u"Nº Pollos"_s, u"NumPollos"_s, kCifra, Align::Right, u"txtPollos"_s},
                   {u"Volanderos"_s, u"NumVolanderos"_s, kCifra, Align::Right, u"txtVolanderos"_s},
                   {u"TOTAL"_s, u"NumTotal"_s, kCifra, Align::Right, u"txtTotal"_s}},
                  0, kAlto, informe.pageHeader, informe.detail);
    informe.reportFooter = {u"ReportFooter"_s, 8, {report::line({0, 0.8, ancho, 0}).ruled(0.4)}};
    double x = kEspecie;
    for (const QString& columna : {u"NumPollos"_s, u"NumVolanderos"_s, u"NumTotal"_s}) {
        informe.reportFooter.elements.push_back(report::sum(columna, {x, 1.8, kCifra - 1, kAlto}).bold());
        x += kCifra;
    }
    informe.pageFooter = pieDePagina(ancho);
    return informe;
}

void ponerTitulo(report::Document& documento) {
    if (!documento.HasRows()) {
        documento.SetText(u"lblTitulo"_s, QString());
    } else if (gBalanceA) {
        documento.SetText(u"lblTitulo"_s, kAnillamientos);
    } else if (gBalanceR) {
        documento.SetText(u"lblTitulo"_s, kRecuperaciones);
    }
}

}  // namespace

void mostrarRepHojCamB() {
    mostrarInforme(
        diseño(),
        [] {
            ado::Recordset filas;
            filas.Open(kHojCamB, gConexion);
            return filas;
        },
        [](report::Document& documento) {
            documento.SetText(u"lblFiltro"_s, TextoFiltro());
            ponerTitulo(documento);
        },
        forms::Modality::Modal);
}

}  // namespace tarmel
