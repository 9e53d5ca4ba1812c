#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// Who is working: shown at start-up and again for a change of ringer. A known code fills the rest; a new one
/// becomes a row of ANIMAT. The session and with it the role follow what the screen shows. There is no
/// password.
class frm02_Matricula : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm02_Matricula");
    frm02_Matricula();

    forms::Label lblTitulo{*this, QStringLiteral("lblTitulo")};
    forms::Label lblAnillador{*this, QStringLiteral("lblAnillador")};
    forms::TextBox txtCodAnillador{*this, QStringLiteral("txtCodAnillador")};
    forms::TextBox txtAnillador{*this, QStringLiteral("txtAnillador")};
    forms::Label lblGrupo{*this, QStringLiteral("lblGrupo")};
    forms::TextBox txtCodGrupo{*this, QStringLiteral("txtCodGrupo")};
    forms::TextBox txtGrupo{*this, QStringLiteral("txtGrupo")};
    forms::Label lblEntidad{*this, QStringLiteral("lblEntidad")};
    forms::TextBox txtCodEntidad{*this, QStringLiteral("txtCodEntidad")};
    forms::TextBox txtEntidad{*this, QStringLiteral("txtEntidad")};
    forms::CheckBox chkCoordinador{*this, QStringLiteral("chkCoordinador"),
                                   QStringLiteral("Coordinador de Grupo")};
    forms::CommandButton cmdAceptar{*this, QStringLiteral("cmdAceptar"), QStringLiteral("&Aceptar")};
    forms::CommandButton cmdCancelar{*this, QStringLiteral("cmdCancelar"), QStringLiteral("&Cancelar")};

    void cmdAceptar_Click();
    void cmdCancelar_Click();
    void txtCodAnillador_LostFocus();
    void txtCodGrupo_LostFocus();
    void txtCodEntidad_LostFocus();

    /// Reads the ringer of the typed code and fills the session from the screen.
    void CargarDatosAnillador();

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;
    void UnloadEvent() override;

 private:
    void mostrarSesion();
    void guardarSesion();
    [[nodiscard]] bool comprobarObligatorios();
    [[nodiscard]] QString sentenciaModificar() const;
    [[nodiscard]] QString sentenciaInsertar() const;

    bool gExisteAnillador = false;  ///< the typed code is in ANIMAT
    bool gCodigoTecleado = false;   ///< the code was typed by hand since the form was loaded
};

}  // namespace tarmel
