#pragma once

#include <QStringList>

#include "desktop/Escritorio.h"
#include "desktop/Views.h"
#include "platform/forms/Form.h"
#include "platform/forms/Host.h"

namespace tarmel::desktop {

/// A screen with a control of every kind that a hand can use, and a log of what its handlers were told.
class FormaPrueba : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frmPrueba");
    FormaPrueba();

    forms::Frame fraCampos{*this, QStringLiteral("fraCampos")};
    forms::Label lblTexto{*this, QStringLiteral("lblTexto"), QStringLiteral("Te&xto")};
    forms::TextBox txtTexto{*this, QStringLiteral("txtTexto")};
    forms::TextBox txtCifras{*this, QStringLiteral("txtCifras")};
    forms::TextBox TxtNotas{*this, QStringLiteral("TxtNotas")};
    forms::ComboBox cboLista{*this, QStringLiteral("cboLista")};
    forms::DatePicker dtpDia{*this, QStringLiteral("dtpDia"), QStringLiteral("dd/MM/yyyy")};
    forms::DatePicker dtpHora{*this, QStringLiteral("dtpHora"), QStringLiteral("HH:mm")};
    forms::CheckBox chkMarca{*this, QStringLiteral("chkMarca"), QStringLiteral("Marca")};
    forms::OptionButton optUna{*this, QStringLiteral("optUna"), QStringLiteral("Una")};
    forms::OptionButton optOtra{*this, QStringLiteral("optOtra"), QStringLiteral("Otra")};
    forms::CommandButton cmdHacer{*this, QStringLiteral("cmdHacer"), QStringLiteral("&Hacer")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir")};
    forms::ListView lstFilas{*this, QStringLiteral("lstFilas")};

    QStringList log;

 protected:
    void FormKeyDown(int& key) override;
    void FormKeyPress(int& character) override;
};

/// Makes the screen known to the registry and to the windows, and shows it; its log is empty then.
FormaPrueba& showFormaPrueba(Escritorio& escritorio, Place place = Place::Dialog);

}  // namespace tarmel::desktop
