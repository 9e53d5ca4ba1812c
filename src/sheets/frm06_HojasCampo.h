#pragma once

#include <QString>
#include <vector>

#include "engine/CargarListaGenerica.h"
#include "engine/clsClassMantenimientos.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "sheets/PanelOtrosDatos.h"

namespace tarmel {

/// The screen of the field sheets: a list of them, and in its place the fields of one sheet, to read, change
/// or enter.
///
/// frm06_HojasCampo.cpp  life of the screen, states, keys
/// frm06_Ordenes.cpp     looking up, commands, the list
class frm06_HojasCampo : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm06_HojasCampo");

    frm06_HojasCampo();

    // --- Controls, in the order in which a sheet is typed
    // -------------------------------------------------------- Head, always in sight: which sheet, whose.
    forms::TextBox txtNumHoja{*this, QStringLiteral("txtNumHoja")};
    forms::CommandButton B_Buscar{*this, QStringLiteral("B_Buscar"), QStringLiteral("Buscar (F8)")};
    forms::Label lblIdCabecera{*this, QStringLiteral("lblIdCabecera")};
    forms::Label lblCodigoAnillador{*this, QStringLiteral("lblCodigoAnillador")};
    forms::Label lblNombreAnillador{*this, QStringLiteral("lblNombreAnillador")};
    forms::Label lblCodigoGrupo{*this, QStringLiteral("lblCodigoGrupo")};
    forms::Label lblNombreGrupo{*this, QStringLiteral("lblNombreGrupo")};
    forms::Label lblCodigoEntidad{*this, QStringLiteral("lblCodigoEntidad")};
    forms::Label lblNombreEntidad{*this, QStringLiteral("lblNombreEntidad")};

    // Fields.
    forms::Frame fraCabeceras{*this, QStringLiteral("fraCabeceras")};
    forms::DataCombo dbcboLocalidad{*this, QStringLiteral("dbcboLocalidad")};
    forms::Label lblCodLocalidad{*this, QStringLiteral("lblCodLocalidad")};
    forms::Label lblProvincia{*this, QStringLiteral("lblProvincia")};
    forms::Label lblFechaCaptura{*this, QStringLiteral("lblFechaCaptura"),
                                 QStringLiteral("Fecha de captura")};
    forms::DatePicker dtpCaptura{*this, QStringLiteral("dtpCaptura"), QStringLiteral("dd/MM/yyyy")};
    forms::Label lblHoraInicio{*this, QStringLiteral("lblHoraInicio"), QStringLiteral("Hora de inicio")};
    forms::DatePicker dtpHoraInicio{*this, QStringLiteral("dtpHoraInicio"), QStringLiteral("HH:mm")};
    forms::Label lblHoraFin{*this, QStringLiteral("lblHoraFin"), QStringLiteral("Hora de fin")};
    forms::DatePicker dtpHoraFin{*this, QStringLiteral("dtpHoraFin"), QStringLiteral("HH:mm")};
    forms::ComboBox cboHabitat{*this, QStringLiteral("cboHabitat")};
    forms::ComboBox cboMetodo{*this, QStringLiteral("cboMetodo")};
    forms::TextBox txtNumRedes{*this, QStringLiteral("txtNumRedes")};
    forms::TextBox txtSuperficieRed{*this, QStringLiteral("txtSuperficieRed")};
    forms::TextBox txtCampaña{*this, QStringLiteral("txtCampaña")};
    forms::TextBox txtCodigoEstacion{*this, QStringLiteral("txtCodigoEstacion")};
    forms::ComboBox cboMañanaFuerzaViento{*this, QStringLiteral("cboMañanaFuerzaViento")};
    forms::ComboBox cboMañanaDireccionViento{*this, QStringLiteral("cboMañanaDireccionViento")};
    forms::ComboBox cboMañanaNubosidad{*this, QStringLiteral("cboMañanaNubosidad")};
    forms::ComboBox cboMañanaPrecipitacion{*this, QStringLiteral("cboMañanaPrecipitacion")};
    forms::ComboBox cboTardeFuerzaViento{*this, QStringLiteral("cboTardeFuerzaViento")};
    forms::ComboBox cboTardeDireccionViento{*this, QStringLiteral("cboTardeDireccionViento")};
    forms::ComboBox cboTardeNubosidad{*this, QStringLiteral("cboTardeNubosidad")};
    forms::ComboBox cboTardePrecipitacion{*this, QStringLiteral("cboTardePrecipitacion")};

    // Commands.
    forms::CommandButton cmdGrabar{*this, QStringLiteral("cmdGrabar"), QStringLiteral("&Grabar (F3)")};
    forms::CommandButton cmdMostrarDetalle{*this, QStringLiteral("cmdMostrarDetalle"),
                                           QStringLiteral("&Capturas (F6)")};
    forms::CommandButton cmdOtrosDatos{*this, QStringLiteral("cmdOtrosDatos"),
                                       QStringLiteral("Otros datos >>")};
    forms::CommandButton cmdNuevo{*this, QStringLiteral("cmdNuevo"), QStringLiteral("&Nueva (F1)")};
    forms::CommandButton cmdModificar{*this, QStringLiteral("cmdModificar"),
                                      QStringLiteral("&Modificar (F12)")};
    forms::CommandButton cmdEliminar{*this, QStringLiteral("cmdEliminar"), QStringLiteral("&Eliminar (F11)")};
    forms::CommandButton cmdVerListaHojas{*this, QStringLiteral("cmdVerListaHojas"),
                                          QStringLiteral("&Ver lista (F5)")};
    forms::CommandButton cmdVerHoja{*this, QStringLiteral("cmdVerHoja"), QStringLiteral("V&er hoja (F5)")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir (F7)")};

    forms::ListView lstCabecerasHoja{*this, QStringLiteral("lstCabecerasHoja")};
    PanelOtrosDatos otrosDatos{*this};

    /// Is a sheet being typed that is not stored yet?
    [[nodiscard]] bool EscribiendoHojaNueva() const;

    // --- Commands and events
    void cmdNuevo_Click();
    void cmdGrabar_Click();
    void cmdModificar_Click();
    void cmdEliminar_Click();
    void B_Buscar_Click();
    void cmdVerHoja_Click();
    void cmdVerListaHojas_Click();
    void cmdMostrarDetalle_Click();
    void cmdSalir_Click();
    void dbcboLocalidad_Change();
    void cboMetodo_LostFocus();
    void lstCabecerasHoja_Click();
    void lstCabecerasHoja_DblClick();
    void lstCabecerasHoja_KeyPress(int& tecla);

 protected:
    void Load() override;
    void Activate() override;
    void FormKeyDown(int& tecla) override;
    void FormKeyPress(int& caracter) override;

 private:
    void conectar();
    void describirControles();
    [[nodiscard]] std::vector<clsClassMantenimientos::Campo> camposHoja();
    void llenarCombos();
    [[nodiscard]] bool llenarLista();
    void ponerListaDelante(bool delante);
    void mostrarLocalidad();

    void PrepararHojaNueva();
    void PrepararHojaExistente();
    void colorearObligatorios();
    void LimpiarHoja();
    void AgregarFilaLista();
    void QuitarFilaLista();
    [[nodiscard]] int filaDe(const QString& idCabecera) const;

    [[nodiscard]] bool usaRedes() const;
    [[nodiscard]] bool faltanDatos();
    [[nodiscard]] bool esAjena() const;
    bool grabarCambio();
    bool grabarNueva();

    clsClassMantenimientos mantenimiento_;
    bool gPermitido = true;       ///< the last search met a sheet that the ringer may see
    bool gCargandoLista = false;  ///< cleared to stop the filling of the list
    bool gCargaActiva = false;    ///< the list is being filled
};

}  // namespace tarmel
