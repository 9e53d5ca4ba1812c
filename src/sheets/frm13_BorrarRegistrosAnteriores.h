#pragma once

#include "sheets/RangoHojas.h"

namespace tarmel {

/// Deletes a range of field sheets, whoever owns them. Their captures stay.
class frm13_BorrarRegistrosAnteriores : public RangoHojas {
 public:
    static inline const QString kName = QStringLiteral("frm13_BorrarRegistrosAnteriores");
    frm13_BorrarRegistrosAnteriores();

    void cmdAceptar_Click();

 protected:
    void Load() override;

 private:
    static void borrarRango();
};

}  // namespace tarmel
