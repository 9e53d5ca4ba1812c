#pragma once

#include "exchange/ActualizarCatalogo.h"

namespace tarmel {

/// Adds the species of a delivered catalogue that the table does not have yet. Their Spanish names do not
/// come with it.
class frm05_ActualizarEspecies : public ActualizarCatalogo {
 public:
    static inline const QString kName = QStringLiteral("frm05_ActualizarEspecies");
    frm05_ActualizarEspecies();

 protected:
    [[nodiscard]] QString sentenciaBuscar(const QString& codigo) const override;
    [[nodiscard]] QString sentenciaInsertar(const QStringList& fila) const override;
    [[nodiscard]] QString sentenciaIdentificar() const override;
};

}  // namespace tarmel
