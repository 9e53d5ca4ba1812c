#include "store/AlmacenAnillas.h"

#include "core/DefinicionesGlobales.h"
#include "engine/clsClassMantenimientos.h"
#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "sheets/Anillas.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

/// Does the statement find a row? It runs through the shared engine object, which shows its errors itself;
/// without an answer nothing can be decided.
bool hayFilas(const QString& sentencia) {
    gSQL = sentencia;
    std::optional<ado::Recordset> filas = gMantenimientos.EjecutarSQL(gSQL);
    if (!filas) throw basic::RuntimeError(basic::error::ObjectNotSet);
    gRS2 = std::move(*filas);
    const bool hay = !gRS2.Eof();
    gRS2 = ado::Recordset();
    return hay;
}

QString condicionModelo(const QString& modelo) {
    return u"SELECT * FROM ALMACEN WHERE Modelo='"_s + modelo + u"'"_s;
}

QString condicionInscripcion(const QString& inscripcion) {
    return u" AND Inscripcion='"_s + inscripcion + u"'"_s;
}

/// The range is text in the table and is compared as numbers here.
QString condicionRango(qint32 numInicial, qint32 numFinal) {
    return u" AND val(NumInicial)<="_s + basic::CStr(numInicial) + u" AND val(NumFinal)>="_s +
           basic::CStr(numFinal);
}

/// The first ring of the range that is on a bird already, in its normal form.
std::optional<QString> buscarAnillaPuesta(const QString& modelo, qint32 numInicial, qint32 numFinal) {
    for (qint64 numero = numInicial; numero <= numFinal; ++numero) {
        QString tecleada = modelo + basic::CStr(numero);
        const QString anilla = NormalizarAnilla(tecleada);
        if (hayFilas(u"SELECT * FROM ANIAHO WHERE Anilla='"_s + anilla + u"' AND TipoRegistro='A'"_s))
            return anilla;
    }
    return std::nullopt;
}

}  // namespace

bool ComprobarDevolucion(const QString& modelo, qint32 numInicial, qint32 numFinal) {
    const QString titulo = u"Devolución - Traspaso anillas"_s;
    bool correcto = true;
    const std::optional<QString> puesta = buscarAnillaPuesta(modelo, numInicial, numFinal);
    if (puesta) {
        forms::MsgBox(u"La anilla "_s + *puesta + u" ya está puesta"_s, forms::box::Exclamation, titulo);
        correcto = false;
    }
    // Neither inscription nor type is asked for: one line of any kind that holds the range is enough.
    if (!hayFilas(condicionModelo(modelo) + condicionRango(numInicial, numFinal))) {
        forms::MsgBox(u"El rango "_s + basic::CStr(numInicial) + u"-"_s + basic::CStr(numFinal) +
                          u" no está en el almacén"_s,
                      forms::box::Exclamation, titulo);
        correcto = false;
    }
    return correcto;
}

bool ComprobarMovimiento(const QString& modelo, const QString& inscripcion, qint32 numInicial,
                         qint32 numFinal, const QString& tipoMovimiento) {
    const bool repetido =
        hayFilas(condicionModelo(modelo) + condicionInscripcion(inscripcion) +
                 condicionRango(numInicial, numFinal) + u" AND TipoMovimiento='"_s + tipoMovimiento + u"'"_s);
    if (!repetido) return true;
    forms::MsgBox(u"El movimiento que pretende hacer ya está en el almacén"_s, forms::box::Exclamation,
                  u"Almacén de anillas"_s);
    return false;
}

bool AnillaEnAlmacen(const QString& modelo, const QString& inscripcion, qint32 numero) {
    const QString lineas =
        condicionModelo(modelo) + condicionInscripcion(inscripcion) + condicionRango(numero, numero);
    if (!hayFilas(lineas + u" AND TipoMovimiento='A'"_s)) return false;
    return !hayFilas(lineas + u" AND (TipoMovimiento='D' or TipoMovimiento='T')"_s);
}

}  // namespace tarmel
