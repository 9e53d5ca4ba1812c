#pragma once

#include <QString>
#include <vector>

#include "engine/CargarListaGenerica.h"
#include "engine/clsClassMantenimientos.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"
#include "sheets/PanelOtrosDatos.h"

namespace tarmel {

/// The screen of the captures. Two layers take turns in front: the fields of one capture, and a list of
/// captures: those of a sheet, all rings of the ringer, a selection of them, or the duplicates.
///
/// frm07_DetallesHojasCampo.cpp  life of the screen, states, keys
/// frm07_Captura.cpp             the fields, what ties them, the way from one capture to the next
/// frm07_Grabar.cpp              checks and saving, opening for change
/// frm07_Listas.cpp              the list, and the ways between list and fields
class frm07_DetallesHojasCampo : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm07_DetallesHojasCampo");

    frm07_DetallesHojasCampo();

    // --- Controls, in the order in which a capture is typed
    // ------------------------------------------------------ Head, always in sight: the sheet, and the number
    // within it.
    forms::Label lblTxtNumHoja{*this, QStringLiteral("lblTxtNumHoja"), QStringLiteral("lblTxtNumHoja")};
    forms::Label lblIdCabecera{*this, QStringLiteral("lblIdCabecera")};
    forms::Label lblTxtFecha{*this, QStringLiteral("lblTxtFecha"), QStringLiteral("lblTxtFecha")};
    forms::Label lbltxtLocalidad{*this, QStringLiteral("lbltxtLocalidad")};
    forms::Label lblCodigoAnillador{*this, QStringLiteral("lblCodigoAnillador")};
    forms::Label lblNombreAnillador{*this, QStringLiteral("lblNombreAnillador")};
    forms::Label lblCodigoGrupo{*this, QStringLiteral("lblCodigoGrupo")};
    forms::Label lblNombreGrupo{*this, QStringLiteral("lblNombreGrupo")};
    forms::Label lblCodigoEntidad{*this, QStringLiteral("lblCodigoEntidad")};
    forms::Label lblNombreEntidad{*this, QStringLiteral("lblNombreEntidad")};
    forms::TextBox txtNumRegistro{*this, QStringLiteral("txtNumRegistro")};
    forms::CommandButton B_Buscar{*this, QStringLiteral("B_Buscar"), QStringLiteral("Buscar (F8)")};

    forms::Frame fraCabeceras{*this, QStringLiteral("fraCabeceras")};
    // Ring.
    forms::ComboBox cboTipoRegistro{*this, QStringLiteral("cboTipoRegistro")};
    forms::ComboBox cboCentro{*this, QStringLiteral("cboCentro")};
    forms::TextBox txtNumAnilla{*this, QStringLiteral("txtNumAnilla")};
    forms::Label lblTxtAnilla{*this, QStringLiteral("lblTxtAnilla")};
    forms::ComboBox cboInfoAnilla{*this, QStringLiteral("cboInfoAnilla")};
    forms::TextBox AnillaSustituida{*this, QStringLiteral("AnillaSustituida")};
    // Bird.
    forms::DataCombo dbcboEspecie{*this, QStringLiteral("dbcboEspecie")};
    forms::Label lblIdEspecie{*this, QStringLiteral("lblIdEspecie")};
    forms::Label lblCodEspecie{*this, QStringLiteral("lblCodEspecie")};
    forms::ComboBox cboEdad{*this, QStringLiteral("cboEdad")};
    forms::ComboBox cboTamañoNidada{*this, QStringLiteral("cboTamañoNidada")};
    forms::ComboBox cboSexo{*this, QStringLiteral("cboSexo")};
    // Measures.
    forms::TextBox txtAla{*this, QStringLiteral("txtAla")};
    forms::TextBox txtF8{*this, QStringLiteral("txtF8")};
    forms::TextBox txtPeso{*this, QStringLiteral("txtPeso")};
    forms::TextBox txtTarso{*this, QStringLiteral("txtTarso")};
    // Moult and fat.
    forms::ComboBox cboMuda{*this, QStringLiteral("cboMuda")};
    forms::ComboBox cboPlaca{*this, QStringLiteral("cboPlaca")};
    forms::ComboBox cboGrasa{*this, QStringLiteral("cboGrasa")};
    forms::ComboBox cboMusculo{*this, QStringLiteral("cboMusculo")};
    // Circumstances.
    forms::DatePicker dtpHoraInicio{*this, QStringLiteral("dtpHoraInicio"), QStringLiteral("HH:mm")};
    forms::ComboBox cboPrecision{*this, QStringLiteral("cboPrecision")};
    forms::ComboBox cboModo{*this, QStringLiteral("cboModo")};
    forms::ComboBox cboEstado{*this, QStringLiteral("cboEstado")};
    forms::ComboBox cboReclamo{*this, QStringLiteral("cboReclamo")};
    forms::ComboBox cboManipulacion{*this, QStringLiteral("cboManipulacion")};
    forms::ComboBox cboTransporte{*this, QStringLiteral("cboTransporte")};
    forms::Label lblCondicion{*this, QStringLiteral("lblCondicion"), QStringLiteral("Condición")};
    forms::ComboBox cboCondicion{*this, QStringLiteral("cboCondicion")};
    forms::Label lblCircunstancia{*this, QStringLiteral("lblCircunstancia"), QStringLiteral("Circunstancia")};
    forms::ComboBox cboCircunstancia{*this, QStringLiteral("cboCircunstancia")};
    forms::TextBox txtIniciales{*this, QStringLiteral("txtIniciales")};
    forms::TextBox txtParentesco{*this, QStringLiteral("txtParentesco")};
    forms::CheckBox ckMantenerDato{*this, QStringLiteral("ckMantenerDato"), QStringLiteral("Mantener dato")};

    // Commands. Enter in the last field reaches cmdGrabar, so that a series needs no other key.
    forms::CommandButton cmdGrabar{*this, QStringLiteral("cmdGrabar"), QStringLiteral("&Grabar (F3)")};
    forms::CommandButton cmdOtrosDatos{*this, QStringLiteral("cmdOtrosDatos"),
                                       QStringLiteral("Otros datos >>")};
    forms::OptionButton optIbericas{*this, QStringLiteral("optIbericas"),
                                    QStringLiteral("Especies habituales")};
    forms::OptionButton optTodas{*this, QStringLiteral("optTodas"), QStringLiteral("Todas las especies")};
    forms::CommandButton cmdNuevo{*this, QStringLiteral("cmdNuevo"), QStringLiteral("&Nuevo (F1)")};
    forms::CommandButton cmdModificar{*this, QStringLiteral("cmdModificar"),
                                      QStringLiteral("&Modificar (F12)")};
    forms::CommandButton cmdEliminar{*this, QStringLiteral("cmdEliminar"), QStringLiteral("&Eliminar (F11)")};
    forms::CommandButton cmdVerListaCapturas{*this, QStringLiteral("cmdVerListaCapturas"),
                                             QStringLiteral("&Ver lista (F5)")};
    forms::CommandButton cmdVerCaptura{*this, QStringLiteral("cmdVerCaptura"),
                                       QStringLiteral("V&er captura (F5)")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir (F7)")};

    forms::ListView lstDetallesCabecerasHoja{*this, QStringLiteral("lstDetallesCabecerasHoja")};
    PanelOtrosDatos otrosDatos{*this};

    /// Takes over the sheet whose captures are to be shown, with its date and place from the database.
    void TomarHoja(const QString& idCabecera, const QString& numHoja);

    // --- Commands and events
    void cmdNuevo_Click();
    void cmdGrabar_Click();
    void cmdModificar_Click();
    void cmdEliminar_Click();
    void B_Buscar_Click();
    void cmdVerListaCapturas_Click();
    void cmdVerCaptura_Click();
    void cmdSalir_Click();
    void cboTipoRegistro_Click();
    void cboEdad_Click();
    void cboInfoAnilla_Click();
    void dbcboEspecie_Change();
    void optIbericas_Click();
    void optTodas_Click();
    void txtNumAnilla_LostFocus();
    void lstDetallesCabecerasHoja_Click();
    void lstDetallesCabecerasHoja_DblClick();
    void lstDetallesCabecerasHoja_KeyDown(int& tecla);

 protected:
    void Load() override;
    void Activate() override;
    void UnloadEvent() override;
    void FormKeyDown(int& tecla) override;
    void FormKeyPress(int& caracter) override;

 private:
    /// What the screen was opened for.
    enum class Modo { Seleccion, Duplicados, ListaAnillas, Hoja };
    [[nodiscard]] static Modo modo();

    // Life of the screen.
    void conectar();
    void describirControles();
    [[nodiscard]] std::vector<clsClassMantenimientos::Campo> camposCaptura();
    void llenarCombos();

    // States of the fields.
    void estadoVacio();
    void estadoNuevo();
    void estadoMostrado();
    void borrarCampos();
    void colorearObligatorios();

    // Fields.
    void enlazarEspecies(const QString& condicion);
    void tomarHojaDeLaLista();
    void ponerPredeterminados();
    void usarCondicion(bool usar);
    void tipoAnillamiento();
    void tipoRecuperacion();
    void medida_LostFocus(forms::TextBox& medida, int decimales);
    void reserva_LostFocus(const forms::ComboBox& combo);
    void prepararSiguiente();
    void prepararTrasAnillamiento();
    void prepararTrasRecuperacion();

    // Saving.
    [[nodiscard]] bool esAnillamiento() const;
    [[nodiscard]] bool esRecuperacion() const;
    [[nodiscard]] bool anillaAdmitida();
    void avisarAutocontrol();
    [[nodiscard]] bool faltanDatosDelTipo();
    [[nodiscard]] bool estaDuplicada();
    void rechazarDuplicada(const QString& comienzo);
    void ExisteAnillamiento(const QString& centro, const QString& anilla, bool& existe) const;
    void ExisteRecuperacion(const QString& centro, const QString& anilla, const QString& fecha,
                            const QString& hora, bool& existe) const;
    void ExisteAnillamientoAutocontrol(const QString& centro, const QString& anilla, bool& existe) const;
    void AnillamientoMismaEspecie(const QString& centro, const QString& anilla, const QString& codigoEspecie,
                                  bool& existe) const;
    [[nodiscard]] bool almacenar();
    [[nodiscard]] bool grabarCambio();
    [[nodiscard]] bool grabarNueva();

    // Lists.
    [[nodiscard]] QString sqlDeLaLista() const;
    void prepararLista(Modo abierta);
    void prepararListaVacia();
    void ponerListaDelante(bool delante);
    void cubrirConLaLista();
    [[nodiscard]] bool enListado() const;
    void tomarHojaDeLaFila();
    void mostrarSegunTipo();
    void agregarFila();
    [[nodiscard]] int filaDe(const QString& numRegistro) const;
    void quitarFila(const QString& numRegistro);

    clsClassMantenimientos mantenimiento_;
    bool cargandoLista_ = false;  ///< cleared to stop the filling of the list
    int activaciones_ = 0;        ///< tells a filling that another one has begun since
};

}  // namespace tarmel
