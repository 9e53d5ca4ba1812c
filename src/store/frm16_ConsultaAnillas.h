#pragma once

#include <vector>

#include "platform/forms/Form.h"

namespace tarmel {

/// Asks the store what movements there were, how many rings of each inscription were placed, and how many are
/// left. The last two counts are written into `TIPOANILLAS.Total`, which their report then reads; the column
/// keeps them until the next run.
class frm16_ConsultaAnillas : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm16_ConsultaAnillas");
    frm16_ConsultaAnillas();

    forms::Frame fraInforme{*this, QStringLiteral("fraInforme"), QStringLiteral("Opciones Consulta")};
    forms::OptionButton optHistorialAlmacen{*this, QStringLiteral("optHistorialAlmacen"),
                                            QStringLiteral("Historial de gestión de anillas")};
    forms::Frame Frame1{*this, QStringLiteral("Frame1")};
    forms::OptionButton optRecibidas{*this, QStringLiteral("optRecibidas"), QStringLiteral("Recibidas")};
    forms::OptionButton optDevueltas{*this, QStringLiteral("optDevueltas"), QStringLiteral("Devueltas")};
    forms::OptionButton optTraspasadas{*this, QStringLiteral("optTraspasadas"),
                                       QStringLiteral("Traspasadas")};
    forms::OptionButton optTodas{*this, QStringLiteral("optTodas"), QStringLiteral("Todas")};
    forms::OptionButton optTotalPuestas{*this, QStringLiteral("optTotalPuestas"),
                                        QStringLiteral("Número de anillas puestas")};
    forms::Label lblAño{*this, QStringLiteral("lblAño"), QStringLiteral("Año")};
    forms::ComboBox cboAño{*this, QStringLiteral("cboAño")};
    forms::OptionButton optRemanenteModelos{*this, QStringLiteral("optRemanenteModelos"),
                                            QStringLiteral("Remanente")};
    forms::Label lblAñoRemanente{*this, QStringLiteral("lblAñoRemanente"), QStringLiteral("Año")};
    forms::ComboBox cboAñoRemanente{*this, QStringLiteral("cboAñoRemanente")};
    forms::CommandButton cmdAceptar{*this, QStringLiteral("cmdAceptar"), QStringLiteral("&Aceptar")};
    forms::CommandButton cmdCancelar{*this, QStringLiteral("cmdCancelar"), QStringLiteral("&Cancelar")};

    struct FilaInscripcion {
        QString inscripcion;
        QString patron;  ///< what a stored ring of the inscription begins with
        QString cuenta;  ///< rings placed, once counted
    };

    /// Type of the movements in the history: "A", "D", "T", or empty for all.
    QString TipoHistorial;
    std::vector<FilaInscripcion> TablaInscripciones;

    void cmdAceptar_Click();
    void cmdCancelar_Click();

    /// One row for each inscription of the ring models.
    void CargarInscripciones();
    /// Counts the rings of each inscription of the table into `TIPOANILLAS.Total`: placed ("Puestas"), or
    /// what is left in the store (any other `Tipo`). `Anio` is a year; empty or "TODOS" means all.
    void ContarAnillas(const QString& Anio, const QString& Tipo);

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;

 private:
    void mostrarHistorial();
    void permitir(bool añoPuestas, bool tipos, bool añoRemanente);
};

}  // namespace tarmel
