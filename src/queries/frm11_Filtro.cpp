#include <algorithm>

#include "core/DefinicionesGlobales.h"
#include "engine/FuncionesCombo.h"
#include "platform/basic/Text.h"
#include "queries/frm11_Consultas.h"

using namespace Qt::StringLiterals;

// The two texts of a query: the condition of its statement, and its description.
namespace tarmel {

namespace {

constexpr int kLargoClase = 4;  // " (A)" behind a name

/// A line of the description, in front of which it is ended.
void añadirLinea(const QString& prefijo, const QString& texto) {
    gFiltroTexto += u'\r' + prefijo + texto;
}

QString sinClase(const QString& nombre) {
    return basic::Left(nombre, static_cast<int>(nombre.size()) - kLargoClase);
}

void añadirPersona(QString& where, QChar clase, const QString& codigo, const QString& nombre) {
    for (const CriterioPersona& criterio : criteriosDePersona()) {
        if (criterio.clase != clase) continue;
        where += criterio.condicion.arg(codigo);
        añadirLinea(criterio.descripcion, sinClase(nombre));
    }
}

}  // namespace

QString frm11_Consultas::textoDeFecha(const forms::DatePicker& selector) {
    return basic::Left(basic::Format(selector.Value(), u"dd/mm/yyyy"_s), 10);
}

void frm11_Consultas::CompletaWhere(QString& where) {
    where += where.isEmpty() ? u" WHERE "_s : u" AND "_s;
}

QString frm11_Consultas::BuscaFiltro() {
    QString where;
    gFiltroTexto.clear();
    BuscaFiltroEspecies(where);
    BuscaFiltroFechas(where);
    BuscaFiltroLocalizacion(where);
    BuscaFiltroCentroAnilla(where);
    BuscaFiltroCodigo(where);
    return where;
}

void frm11_Consultas::BuscaFiltroEspecies(QString& where) const {
    if (ListaSeleccion.Count() == 0) return;
    QStringList identificadores;
    QStringList nombres;
    for (int i = 0; i < ListaSeleccion.Count(); ++i) {
        const QString linea = ListaSeleccion.Cell(i, 0);
        identificadores << ListaSeleccion.Cell(i, kColumnaIdEspecie);
        nombres << basic::Left(linea, basic::InStr(linea, kSeparadorCombo) - 1);
    }
    CompletaWhere(where);
    where += criterioEspecies().condicion.arg(identificadores.join(u','));
    añadirLinea(criterioEspecies().descripcion, nombres.join(u", "_s));
}

void frm11_Consultas::BuscaFiltroFechas(QString& where) const {
    if (Anillamiento.Caption() == kSinFechas) return;
    const QString desde = textoDeFecha(DesdeAnillamiento);
    const QString hasta = textoDeFecha(HastaAnillamiento);
    CompletaWhere(where);
    where += criterioFechas().condicion.arg(desde, hasta);
    añadirLinea(criterioFechas().descripcion, u"de "_s + desde + u" a "_s + hasta);
}

void frm11_Consultas::BuscaFiltroLocalizacion(QString& where) const {
    if (LabelDatoA1.Caption().isEmpty() || LabelDatoA2.Caption().isEmpty()) return;
    CompletaWhere(where);
    const auto dato = [this](DatoLugar cual) {
        switch (cual) {
            case DatoLugar::CodigoLocalidad:
                return basic::Trim(LabelDatoA3.Caption());
            case DatoLugar::Municipio:
                return basic::Trim(LabelDatoA2.Caption().section(u',', 0, 0));
            case DatoLugar::Codigo:
                break;
        }
        return basic::Trim(LabelDatoA1.Caption());
    };
    for (const CriterioLugar& criterio : criteriosDeLugar()) {
        if (criterio.titulo != LabelSeleccion.Caption() || criterio.condicion.isEmpty()) continue;
        where += criterio.condicion.arg(dato(criterio.dato));
        añadirLinea(criterio.descripcion, LabelDatoA2.Caption());
    }
}

void frm11_Consultas::BuscaFiltroCentroAnilla(QString& where) const {
    if (const QString& nombre = LabelAnillador.Caption(); !nombre.isEmpty()) {
        CompletaWhere(where);
        const QString clase = basic::Mid(nombre, basic::InStr(nombre, u"("_s) + 1, 1);
        if (clase == u"A"_s || clase == u"G"_s) {
            añadirPersona(where, clase.front(), CodigoAni.Caption(), nombre);
        } else {
            // A bracket in the name itself is taken for the kind's: the condition ends in the joining word.
            gFiltroTexto += sinClase(nombre);
        }
    }
    if (const QString& nombre = LabelCentro.Caption(); !nombre.isEmpty()) {
        CompletaWhere(where);
        añadirPersona(where, kClaseCentro, CodigoCentro.Caption(), nombre);
    }
    if (const QString& anilla = LabelAnilla.Caption(); !anilla.isEmpty()) {
        CompletaWhere(where);
        where += criterioAnilla().condicion.arg(anilla);
        añadirLinea(criterioAnilla().descripcion, anilla);
    }
}

void frm11_Consultas::BuscaFiltroCodigo(QString& where) const {
    for (const CampoDeCodigo& campo : Codigos) {
        if (campo.codigo.Caption().isEmpty()) continue;
        CompletaWhere(where);
        where += campo.criterio.condicion.arg(campo.codigo.Caption());
        añadirLinea(campo.criterio.descripcion, campo.nombre.Caption());
    }
}

}  // namespace tarmel
