#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// Asks what a query is to give: listing or balance, on paper or in a text file. The answers are the
/// session's gBalanceA, gBalanceR, gImpreso, gNombreFichero and gCancelado; closing the window by its box
/// leaves them as they were.
class frm12_OpcionesConsulta : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm12_OpcionesConsulta");
    frm12_OpcionesConsulta();

    forms::Label lblEncabezado{*this, QStringLiteral("lblEncabezado"),
                               QStringLiteral("PANTALLA DE SELECCIÓN")};
    forms::Frame fraInforme{*this, QStringLiteral("fraInforme"), QStringLiteral("Opciones Consulta")};
    forms::OptionButton optListado{*this, QStringLiteral("optListado"), QStringLiteral("Listado")};
    forms::OptionButton optBalance_A{*this, QStringLiteral("optBalance_A"),
                                     QStringLiteral("Balance de anillamientos")};
    forms::OptionButton optBalance_R{*this, QStringLiteral("optBalance_R"),
                                     QStringLiteral("Balance de recuperaciones")};

    forms::Frame Opciones{*this, QStringLiteral("Opciones"), QStringLiteral("Opciones Soporte")};
    forms::OptionButton optImpreso{*this, QStringLiteral("optImpreso"), QStringLiteral("Impreso")};
    forms::OptionButton optSoporte{*this, QStringLiteral("optSoporte"), QStringLiteral("Soporte Magnético")};
    forms::Label lblArchivo{*this, QStringLiteral("lblArchivo"), QStringLiteral("Nombre de Fichero:")};
    forms::TextBox Archivo{*this, QStringLiteral("Archivo")};
    forms::Label Label4{*this, QStringLiteral("Label4"), QStringLiteral(".txt")};

    forms::CommandButton B_Opciones{*this, QStringLiteral("B_Opciones"), QStringLiteral("&Aceptar")};
    forms::CommandButton cmdCancelar{*this, QStringLiteral("cmdCancelar"), QStringLiteral("&Cancelar")};

    void B_Opciones_Click();
    void cmdCancelar_Click();
    void optImpreso_Click();
    void optSoporte_Click();

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;

 private:
    void permitirArchivo(bool permitir);
};

}  // namespace tarmel
