#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// The splash. Its load event carries out the whole start-up: database file, data source, connection,
/// temporary files, upgrade. A failure shows its box and ends the program.
class frm01_Inicio : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm01_Inicio");
    frm01_Inicio();

    forms::Label lblProductName{*this, QStringLiteral("lblProductName")};
    forms::Label lblVersion{*this, QStringLiteral("lblVersion")};
    forms::Label Label1{*this, QStringLiteral("Label1")};

 protected:
    void Load() override;

 private:
    /// What goes on, for whoever waits.
    void mostrar(const QString& avance);
    /// Ends the program, the file untouched, when the database is damaged or another program's.
    void comprobarSalud(const QString& fichero);
};

}  // namespace tarmel
