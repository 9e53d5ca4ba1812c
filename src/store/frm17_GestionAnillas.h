#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// The inscriptions that exist for each ring model: they are seen and added to, never changed.
class frm17_GestionAnillas : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm17_GestionAnillas");
    frm17_GestionAnillas();

    forms::ListView TablaTipoAnillas{*this, QStringLiteral("TablaTipoAnillas")};

    forms::Frame Frame1{*this, QStringLiteral("Frame1"), QStringLiteral("Insertar nuevas inscripciones")};
    forms::Label lblModelo{*this, QStringLiteral("lblModelo"), QStringLiteral("Modelo")};
    forms::ComboBox Modelo{*this, QStringLiteral("Modelo")};
    forms::Label lblInscripcion{*this, QStringLiteral("lblInscripcion"), QStringLiteral("Inscripción")};
    forms::TextBox Inscripcion{*this, QStringLiteral("Inscripcion")};
    forms::CommandButton cmdAgregar{*this, QStringLiteral("cmdAgregar"), QStringLiteral("Agregar")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("Salir")};

    void cmdAgregar_Click();
    void cmdSalir_Click();

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;

 private:
    /// Reads the table anew.
    void refrescarTabla();
};

}  // namespace tarmel
