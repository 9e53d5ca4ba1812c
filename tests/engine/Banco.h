#pragma once

#include <gtest/gtest.h>

#include "core/DefinicionesGlobales.h"
#include "engine/clsClassMantenimientos.h"
#include "platform/ado/Support.h"
#include "platform/basic/ErrorOf.h"
#include "platform/basic/Printers.h"
#include "platform/forms/Form.h"
#include "platform/forms/Pantallas.h"
#include "sheets/HostDePrueba.h"

namespace tarmel {

/// A screen with one control of each kind.
class FormularioDePrueba : public forms::Form {
 public:
    FormularioDePrueba() : Form(QStringLiteral("frmPrueba")) {}

    forms::Label lblId{*this, QStringLiteral("lblId")};
    forms::TextBox txtCodigo{*this, QStringLiteral("txtCodigo")};
    forms::TextBox txtPeso{*this, QStringLiteral("txtPeso")};
    forms::ComboBox cboEdad{*this, QStringLiteral("cboEdad")};
    forms::ComboBox cboSimple{*this, QStringLiteral("cboSimple")};
    forms::DataCombo dbcboEspecie{*this, QStringLiteral("dbcboEspecie")};
    forms::DatePicker dtpFecha{*this, QStringLiteral("dtpFecha")};
    forms::DatePicker dtpHora{*this, QStringLiteral("dtpHora"), QStringLiteral("HH:mm")};
    forms::CommandButton cmdGrabar{*this, QStringLiteral("cmdGrabar")};
    forms::CheckBox ckDato{*this, QStringLiteral("ckDato")};
    forms::ListView lista{*this, QStringLiteral("lista")};
};

/// An empty database in memory, a host without windows, a screen.
class Banco : public testing::Test {
 protected:
    Banco() { gConexion.OpenFile(QStringLiteral(":memory:"), true); }
    ~Banco() override {
        forms::pantallas().Reset();
        gConexion.Close();
    }

    void sql(const QString& orden) { gConexion.Execute(orden); }

    /// The rows of a statement: fields joined by ";", rows by "|", Null empty.
    static QString filas(const QString& consulta) { return ado::test::rowsOf(gConexion, consulta); }

    HostDePrueba host;
    FormularioDePrueba formulario;
};

}  // namespace tarmel
