#pragma once

#include "sheets/RangoHojas.h"

namespace tarmel {

/// Prints a range of field sheets. Any sheet can be chosen; what is left blank means the ringer's own.
class frm08_ImprimirHojas : public RangoHojas {
 public:
    static inline const QString kName = QStringLiteral("frm08_ImprimirHojas");
    frm08_ImprimirHojas();

    void cmdAceptar_Click();

 protected:
    void Load() override;
};

}  // namespace tarmel
