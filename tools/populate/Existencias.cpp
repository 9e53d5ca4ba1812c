#include "populate/Existencias.h"

#include <cmath>

namespace tarmel::muestra {

using namespace Qt::StringLiterals;

namespace {

constexpr int kDiasDeEnvio = 20;

/// The first number with so many digits: no series has leading zeros, which a ringer would have to type.
std::int32_t potencia(int cifras) {
    return static_cast<std::int32_t>(std::lround(std::pow(10, cifras)));
}

}  // namespace

Existencias::Existencias(ado::Connection& conexion, const std::vector<Serie>& series)
    : conexion_(conexion), series_(series) {
    for (const Serie& serie : series_)
        libres_.push_back(potencia(serie.cifras - 1) + 1);
}

Existencias::Anilla Existencias::tomar(int anillador, const QString& clase, basic::Date dia) {
    Lote& lote = lotes_[{anillador, clase}];
    if (lote.siguiente > lote.ultima) lote = recibir(clase, dia);
    return {lote.serie, lote.siguiente++};
}

QString Existencias::cifras(std::uint16_t serie, std::int32_t numero) const {
    return QString::number(numero).rightJustified(series_[serie].cifras, u'0');
}

QString Existencias::leer(Anilla anilla) const {
    return series_[anilla.serie].prefijo + cifras(anilla.serie, anilla.numero);
}

Existencias::Lote Existencias::recibir(const QString& clase, basic::Date dia) {
    for (std::uint16_t serie = 0; serie < series_.size(); ++serie) {
        const Serie& esta = series_[serie];
        if (esta.clase != clase || libres_[serie] + esta.lote > potencia(esta.cifras)) continue;
        const Lote lote{serie, libres_[serie], libres_[serie] + esta.lote - 1};
        libres_[serie] += esta.lote;
        anotar(lote, basic::Date(dia.serial() - kDiasDeEnvio), u"A"_s);
        return lote;
    }
    throw basic::RuntimeError(5, u"No quedan anillas de la clase "_s + clase, u"Muestra"_s);
}

void Existencias::anotar(const Lote& lote, basic::Date dia, const QString& movimiento) {
    const Serie& serie = series_[lote.serie];
    conexion_.Execute(u"INSERT INTO ALMACEN VALUES (?, ?, ?, ?, ?, ?, ?, ?)"_s,
                      {++movimientos_, serie.modelo, serie.inscripcion, cifras(lote.serie, lote.siguiente),
                       cifras(lote.serie, lote.ultima), lote.ultima - lote.siguiente + 1, dia, movimiento});
}

void Existencias::devolver(basic::Date dia) {
    int vez = 0;
    for (auto& [de, lote] : lotes_) {
        if (lote.siguiente > lote.ultima || ++vez % 3 != 0) continue;
        anotar(lote, dia, u"D"_s);
        lote.ultima = lote.siguiente - 1;
    }
}

}  // namespace tarmel::muestra
