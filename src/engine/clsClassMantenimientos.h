#pragma once

#include <QString>
#include <optional>
#include <span>
#include <vector>

#include "platform/ado/Recordset.h"
#include "platform/basic/Variant.h"
#include "platform/forms/Form.h"

namespace tarmel {

/// Reads and writes one row of a table for a screen. The screen describes its table once, as field
/// descriptors, each naming a column, its type and the control that shows it; from these come the statements,
/// and between these and the controls the values are moved. Every value travels as text.
class clsClassMantenimientos {
 public:
    /// One descriptor. Fields that a screen does not name keep these defaults (all have one, so that a screen
    /// may name just those it needs).
    struct Campo {
        QString NombreCampo{};
        QString ValorCampo{};
        bool CampoClave = false;
        QString TipoDatos{};  ///< "Numerico", "Caracter", "Decimal" or empty
        int Tamaño = 0;
        QString ValorPredeterminado{};
        bool Obligatorio = false;
        bool LongitudCero = false;
        QString Formato{};
        forms::Control* ControlRelacionado = nullptr;
        QString CampoRelacionado{};
        QString CampoRelacionado2{};
        QString NombreTablaCampo{};
        bool ComboSimple = false;
    };

    /// Resizes to the indices 0..n, without the old contents: one slot more than fields, which stays empty.
    void Elementos(int n);

    [[nodiscard]] const QString& NombreTabla() const { return nombreTabla_; }
    void NombreTabla(const QString& nombre) { nombreTabla_ = nombre; }
    [[nodiscard]] forms::Form* Formulario() const { return formulario_; }
    void Formulario(forms::Form& formulario) { formulario_ = &formulario; }

    /// The descriptor of an index; RuntimeError 9 outside the array.
    [[nodiscard]] Campo& campo(int indice);
    [[nodiscard]] const Campo& campo(int indice) const;
    [[nodiscard]] int UBound() const { return static_cast<int>(campos_.size()) - 1; }
    /// Elementos and all descriptors at once.
    void Describir(std::vector<Campo> campos);

    // Statements. Errors of the first three and of EjecutarSQL are shown in a box ("¡ERROR al ejecutar
    // SQL!"), and the operation returns as if nothing had happened; true tells that the statement went
    // through.
    bool InsertarRegistro();
    bool ModificarRegistro();
    /// With false the captures behind the deleted one are renumbered. True when the row is gone, though
    /// renumbering failed.
    bool EliminarRegistro(bool sinRenumerar);
    void RenumerarNumRegistro();

    // Controls.
    void ObtenerDatosControles();
    void MostrarDatosControles();
    [[nodiscard]] QString ObtenerPrimerCampo(int indice, const Campo& campo) const;
    void BorrarDatosControles();
    void EstablecerLongitudControles();
    /// True when all mandatory fields hold something; a box for each one that does not.
    bool ComprobarDatos();
    void SoloNumeros();

    struct Par {
        basic::Variant valor;
        QString columna;
    };
    /// Fills the descriptors from the row that the pairs find; Null leaves what was there. False when there
    /// is none.
    bool BuscarRegistro(const std::vector<Par>& pares);
    void BorrarDatos();
    /// The rows of a statement, for queries and commands; nothing after an error, which has been shown.
    std::optional<ado::Recordset> EjecutarSQL(const QString& sql);
    void ObtenerUltimoRegistro(const basic::Variant&) {}
    void ControlesEnabledDisable(bool activar);
    void HabilitarBotones();

 private:
    [[nodiscard]] std::span<const Campo> sinElUltimo() const;
    /// Their columns, joined by commas.
    [[nodiscard]] QString columnas() const;
    [[nodiscard]] QString condicionDeBusqueda(const Par& par) const;
    [[nodiscard]] bool mostradoAntes(int indice) const;
    [[nodiscard]] const std::vector<forms::Control*>& controlesDelFormulario() const;

    QString nombreTabla_;
    forms::Form* formulario_ = nullptr;
    std::vector<Campo> campos_;
};

}  // namespace tarmel
