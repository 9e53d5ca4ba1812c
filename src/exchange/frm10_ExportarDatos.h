#pragma once

#include "exchange/A_EXP_EnvioDatos.h"
#include "platform/forms/Form.h"

namespace tarmel {

/// Chooses what to hand in, checks that it can travel, takes the number of the dispatch, and has the files
/// written and packed. While that runs the screen shows how far it is and stays open.
class frm10_ExportarDatos : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm10_ExportarDatos");
    frm10_ExportarDatos();

    forms::Frame grpExportar{*this, QStringLiteral("grpExportar"), QStringLiteral("Exportación de Datos")};
    forms::OptionButton optSeleccion{*this, QStringLiteral("optSeleccion"),
                                     QStringLiteral("Hojas seleccionadas")};
    forms::Label lblIni{*this, QStringLiteral("lblIni"), QStringLiteral("Nº Hoja Inicial")};
    forms::ComboBox cboIni{*this, QStringLiteral("cboIni")};
    forms::Label lblFin{*this, QStringLiteral("lblFin"), QStringLiteral("Nº Hoja Final")};
    forms::ComboBox cboFin{*this, QStringLiteral("cboFin")};
    forms::OptionButton optAño{*this, QStringLiteral("optAño"), QStringLiteral("Año seleccionado")};
    forms::ComboBox cboAño{*this, QStringLiteral("cboAño")};
    forms::OptionButton optCampaña{*this, QStringLiteral("optCampaña"),
                                   QStringLiteral("Campaña seleccionada")};
    forms::ComboBox cboCampaña{*this, QStringLiteral("cboCampaña")};
    forms::OptionButton optFechas{*this, QStringLiteral("optFechas"), QStringLiteral("Fechas seleccionadas")};
    forms::ComboBox cboFecha1{*this, QStringLiteral("cboFecha1")};
    forms::ComboBox cboFecha2{*this, QStringLiteral("cboFecha2")};
    forms::Label lblDescripcion{*this, QStringLiteral("lblDescripcion")};

    forms::Frame frmBarra{*this, QStringLiteral("frmBarra"), QStringLiteral("Exportación de datos")};
    forms::Label lblFichProcesado{*this, QStringLiteral("lblFichProcesado")};
    forms::ProgressBar Progreso{*this, QStringLiteral("Progreso")};

    forms::CommandButton cmdExportar{*this, QStringLiteral("cmdExportar"), QStringLiteral("&Exportar")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir")};

    void cmdExportar_Click();
    void cmdSalir_Click();
    void optSeleccion_Click();
    void optAño_Click();
    void optCampaña_Click();
    void optFechas_Click();

    /// A whole dispatch, from the checks to the archive.
    void ExportarDatos(const SeleccionEnvio& seleccion);

 protected:
    void Load() override;
    void Activate() override;
    bool QueryUnload() override { return enCurso_; }
    void FormKeyPress(int& character) override;

 private:
    void activarSolo(std::initializer_list<forms::ComboBox*> combos);
    void mostrarMarcha(bool enMarcha);
    bool exigir(std::initializer_list<forms::ComboBox*> combos, const QString& mensaje);
    void exportarHojas();
    void preparar(const SeleccionEnvio& seleccion);
    [[nodiscard]] bool verificar(const SeleccionEnvio& seleccion);
    void salir();

    bool enCurso_ = false;  ///< a dispatch is being made: the screen cannot be closed
};

}  // namespace tarmel
