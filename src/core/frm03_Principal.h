#pragma once

#include <memory>
#include <vector>

#include "platform/forms/Form.h"

namespace tarmel {

/// The main window: a frame that holds menu, toolbar and status bar, and inside which the other screens open.
/// It owns no data; every command opens a screen or starts a piece of maintenance. Every way out of it ends
/// the program.
class frm03_Principal : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm03_Principal");
    frm03_Principal();

    // The entries of the menu are controls of this form too, found by their names.
    forms::Toolbar tlbBarraHerramientas{*this, QStringLiteral("tlbBarraHerramientas")};
    forms::CommandButton pbVersion{*this, QStringLiteral("pbVersion")};
    forms::StatusBar staStatusBar{*this, QStringLiteral("staStatusBar")};

    void mnuActualizacionLocalidades_Click();
    void mnuActualizacionEspecies_Click();
    void mnuListadoHojas_Click();
    void mnuNuevaHoja_Click();
    void mnuListadoAnillasTodas_Click();
    void mnuListadoAnillasSeleccion_Click();
    void mnuAnillasDuplicadas_Click();
    void mnuAlmacenAnillas_Click();
    void mnuAnillasGestionModelos_Click();
    void mnuImprimir_Click();
    void mnuImportarDatos_Click();
    void mnuExportarDatos_Click();
    void mnuConsultarInformes_Click();
    void mnuConsultarContador_Click();
    void mnuUsuario_Click();
    void mnuCompactar_Click();
    void mnuBorrarHojas_Click();
    void mnuBorrarFicherosExportados_Click();
    void mnuActualizarBD_Click();
    void mnuAyuda_Click();
    void mnuSalir_Click();

    void tlbBarraHerramientas_ButtonClick(const QString& key);
    void staStatusBar_PanelClick(const QString& key);

 protected:
    void Load() override;
    void UnloadEvent() override;

 private:
    void hacerMenus();
    void hacerBarras();
    void abrirListaAnillas(const QString& mensaje, bool duplicados, const QString& titulo);

    std::vector<std::unique_ptr<forms::MenuItem>> menus_;
};

}  // namespace tarmel
