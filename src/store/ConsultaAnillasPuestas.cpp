#include "core/DefinicionesGlobales.h"
#include "platform/forms/Pantallas.h"
#include "queries/InformeComun.h"
#include "store/InformesAlmacen.h"
#include "store/frm16_ConsultaAnillas.h"

/// The last count of the store, model by model: rings placed, or rings that remain. Its heading alone tells
/// which.
namespace tarmel {

using namespace Qt::StringLiterals;

namespace {

using report::Align;

constexpr double kAlto = 4.6;
constexpr double kIzquierda = 23;  ///< three narrow columns in the middle of the sheet
constexpr double kColumna = 47;

report::Report diseño() {
    report::Report informe;
    informe.name = u"ConsultaAnillasPuestas"_s;
    informe.title = u"Anillas por modelos"_s;
    informe.fontSize = 9;
    informe.groupBy = {u"Modelo"_s};
    const double ancho = informe.width();
    informe.reportHeader.name = u"ReportHeader"_s;
    ponerLogos(informe.reportHeader, ancho);
    // The dialogue counts what remains unless told otherwise.
    informe.pageHeader = {
        u"PageHeader"_s,
        15,
        {report::label(u"REMANENTE POR MODELOS"_s, {0, 0, ancho, 7}, u"Encabezado"_s)
             .bold()
             .points(14)
             .centred(),
         report::label(QString(), {ancho / 2 - 31, 8, 30, 5}, u"Etiqueta1"_s).bold().points(10).right(),
         report::label(QString(), {ancho / 2 + 1, 8, 30, 5}, u"lblAño"_s).bold().points(10)}};
    informe.groupHeader = {u"Consulta_AnillasPuestas_Grouping_Header"_s,
                           5.4,
                           {report::field(u"Modelo"_s, {kIzquierda, 0.5, kColumna - 1, kAlto}).bold()}};
    informe.detail.name = u"Consulta_AnillasPuestas_Detail"_s;
    ponerColumnas({{u"MODELO"_s, QString(), kColumna},
                   {u"INSCRIPCIÓN"_s, u"Inscripcion"_s, kColumna},
                   {u"CANTIDAD"_s, u"Total"_s, kColumna, Align::Right}},
                  kIzquierda, kAlto, informe.pageHeader, informe.detail);
    const double rotulo = kIzquierda + kColumna;
    const double cifra = rotulo + kColumna;
    const auto suma = [&](double arriba, const QString& nombre) {
        return report::sum(u"Total"_s, {cifra, arriba, kColumna - 1, kAlto}, nombre).bold();
    };
    informe.groupFooter = {u"Consulta_AnillasPuestas_Grouping_Footer"_s,
                           8,
                           {report::line({rotulo, 0.4, 2 * kColumna, 0}),
                            report::label(u"Total"_s, {rotulo, 0.9, kColumna - 1, kAlto}).bold(),
                            suma(0.9, u"txtSuma_Modelo"_s)}};
    informe.reportFooter = {u"ReportFooter"_s,
                            8,
                            {report::line({kIzquierda, 0.4, 3 * kColumna, 0}).ruled(0.4),
                             report::label(u"TOTAL GENERAL"_s, {rotulo, 1.4, kColumna - 1, kAlto}).bold(),
                             suma(1.4, u"FuncionSumaTotal"_s)}};
    informe.pageFooter = pieDePagina(ancho, false);
    return informe;
}

void rotular(report::Document& documento, const QString& encabezado, const QString& año) {
    documento.SetText(u"Encabezado"_s, encabezado);
    documento.SetText(u"lblAño"_s, año);
    documento.SetText(u"Etiqueta1"_s, año.isEmpty() ? QString() : u"AÑO"_s);
}

}  // namespace

void mostrarConsultaAnillasPuestas() {
    mostrarInforme(
        diseño(),
        [] {
            ado::Recordset filas;
            filas.Open(u"SELECT * FROM TIPOANILLAS where Total<>0"_s, gConexion);
            return filas;
        },
        [](report::Document& documento) {
            const auto& pantalla = forms::pantallas().Get<frm16_ConsultaAnillas>();
            if (pantalla.optTotalPuestas.Value())
                rotular(documento, u"ANILLAS PUESTAS POR MODELOS"_s, pantalla.cboAño.Text());
            if (pantalla.optRemanenteModelos.Value())
                rotular(documento, u"REMANENTE POR MODELOS"_s, pantalla.cboAñoRemanente.Text());
        },
        forms::Modality::Modal);
}

}  // namespace tarmel
