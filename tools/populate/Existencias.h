#pragma once

#include <QString>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "platform/ado/Connection.h"
#include "populate/Fuentes.h"

namespace tarmel::muestra {

/// The rings that invented ringers have: each receives lots and uses them up in order. The store's journal is
/// written as the lots come in.
class Existencias {
 public:
    struct Anilla {
        std::uint16_t serie = 0;
        std::int32_t numero = 0;
    };

    Existencias(ado::Connection& conexion, const std::vector<Serie>& series);

    /// The next ring of a ringer; a new lot arrives some weeks before the day when he has none left. Raises 5
    /// when all series of the class are used up.
    Anilla tomar(int anillador, const QString& clase, basic::Date dia);
    /// As read off the ring.
    [[nodiscard]] QString leer(Anilla anilla) const;
    /// Gives back what is left of every third lot in use.
    void devolver(basic::Date dia);

 private:
    struct Lote {
        std::uint16_t serie = 0;
        std::int32_t siguiente = 1;
        std::int32_t ultima = 0;
    };
    [[nodiscard]] QString cifras(std::uint16_t serie, std::int32_t numero) const;
    Lote recibir(const QString& clase, basic::Date dia);
    void anotar(const Lote& lote, basic::Date dia, const QString& movimiento);

    ado::Connection& conexion_;
    const std::vector<Serie>& series_;
    std::vector<std::int32_t> libres_;  ///< first number that nobody has, by series
    std::map<std::pair<int, QString>, Lote> lotes_;
    int movimientos_ = 0;
};

}  // namespace tarmel::muestra
