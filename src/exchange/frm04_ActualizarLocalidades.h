#pragma once

#include "exchange/ActualizarCatalogo.h"

namespace tarmel {

/// Adds the places of a delivered catalogue that the table does not have yet.
class frm04_ActualizarLocalidades : public ActualizarCatalogo {
 public:
    static inline const QString kName = QStringLiteral("frm04_ActualizarLocalidades");
    frm04_ActualizarLocalidades();

 protected:
    [[nodiscard]] QString sentenciaBuscar(const QString& codigo) const override;
    [[nodiscard]] QString sentenciaInsertar(const QStringList& fila) const override;
    [[nodiscard]] QString sentenciaIdentificar() const override;
};

}  // namespace tarmel
