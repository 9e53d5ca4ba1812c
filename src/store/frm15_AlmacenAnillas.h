#pragma once

#include <optional>

#include "platform/forms/Form.h"

namespace tarmel {

/// The journal of the store: see, filter, add and delete movements of rings. In list mode the list and its
/// buttons are seen, in entry mode the frame of the new movement in their place.
class frm15_AlmacenAnillas : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm15_AlmacenAnillas");
    frm15_AlmacenAnillas();

    forms::Label lblEncabezado{*this, QStringLiteral("lblEncabezado"), QStringLiteral("ALMACÉN DE ANILLAS")};

    forms::Frame fraFiltros{*this, QStringLiteral("fraFiltros"), QStringLiteral("Filtros")};
    forms::Label lblModelo{*this, QStringLiteral("lblModelo"), QStringLiteral("Modelo")};
    forms::ComboBox Modelo{*this, QStringLiteral("Modelo")};
    forms::Label lblInscripcion{*this, QStringLiteral("lblInscripcion"), QStringLiteral("Inscripción")};
    forms::ComboBox Inscripcion{*this, QStringLiteral("Inscripcion")};
    forms::Label lblSerie{*this, QStringLiteral("lblSerie"), QStringLiteral("Serie")};
    forms::TextBox txtSerie{*this, QStringLiteral("txtSerie")};
    forms::CommandButton B_Buscar{*this, QStringLiteral("B_Buscar"), QStringLiteral("Buscar")};
    forms::CommandButton cmdBorrar{*this, QStringLiteral("cmdBorrar"), QStringLiteral("Quitar filtro")};

    forms::ListView lstAlmacenAnillas{*this, QStringLiteral("lstAlmacenAnillas")};
    forms::CommandButton cmdNuevo{*this, QStringLiteral("cmdNuevo"), QStringLiteral("Añadir movimiento")};
    forms::CommandButton cmdEliminar{*this, QStringLiteral("cmdEliminar"),
                                     QStringLiteral("Eliminar movimiento")};
    forms::CommandButton cmdConsultas{*this, QStringLiteral("cmdConsultas"),
                                      QStringLiteral("Consultas de anillas")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("Salir")};

    forms::Frame frmNuevoMovimiento{*this, QStringLiteral("frmNuevoMovimiento"),
                                    QStringLiteral("Nuevo movimiento")};
    forms::Label lblModeloMov{*this, QStringLiteral("lblModeloMov"), QStringLiteral("Modelo")};
    forms::ComboBox cboModelo{*this, QStringLiteral("cboModelo")};
    forms::Label lblInscripcionMov{*this, QStringLiteral("lblInscripcionMov"), QStringLiteral("Inscripción")};
    forms::ComboBox cboInscripcion{*this, QStringLiteral("cboInscripcion")};
    forms::Label lblNumInicial{*this, QStringLiteral("lblNumInicial"), QStringLiteral("Nº Inicial")};
    forms::TextBox txtNumInicial{*this, QStringLiteral("txtNumInicial")};
    forms::Label lblNumFinal{*this, QStringLiteral("lblNumFinal"), QStringLiteral("Nº Final")};
    forms::TextBox txtNumFinal{*this, QStringLiteral("txtNumFinal")};
    forms::Label lblCantidad{*this, QStringLiteral("lblCantidad"), QStringLiteral("Cantidad")};
    forms::TextBox txtCantidad{*this, QStringLiteral("txtCantidad")};
    forms::Label lblFecha{*this, QStringLiteral("lblFecha"), QStringLiteral("Fecha")};
    forms::DatePicker dtFecha{*this, QStringLiteral("dtFecha")};
    forms::Label lblTipoMov{*this, QStringLiteral("lblTipoMov"), QStringLiteral("Tipo Movimiento")};
    forms::ComboBox cboTipoMov{*this, QStringLiteral("cboTipoMov")};
    forms::CommandButton cmdAceptar{*this, QStringLiteral("cmdAceptar"), QStringLiteral("Aceptar")};
    forms::CommandButton cmdCancelar{*this, QStringLiteral("cmdCancelar"), QStringLiteral("Cancelar")};

    void B_Buscar_Click();
    void cmdBorrar_Click();
    void cmdNuevo_Click();
    void cmdEliminar_Click();
    void cmdConsultas_Click();
    void cmdSalir_Click();
    void cmdAceptar_Click();
    void cmdCancelar_Click();
    void Modelo_LostFocus();
    void cboModelo_LostFocus();
    void txtNumInicial_LostFocus();
    void txtNumFinal_LostFocus();

    /// Fills the list with the movements that the filter fields let through.
    void BuscarMovimientos();
    /// The list follows what was written, without reading it anew.
    void AgregarALista(qint16 numMov);
    void QuitarDeLista(const QString& numMov);

 protected:
    void Load() override;
    void Activate() override;
    void FormKeyDown(int& key) override;
    void FormKeyPress(int& character) override;
    void UnloadEvent() override;

 private:
    void prepararFiltros();
    void prepararEntrada();
    void cargarLista(const QString& sql);
    void modoEntrada(bool entrada);
    struct Rango {
        qint64 numInicial = 0;
        qint64 numFinal = 0;
    };
    [[nodiscard]] std::optional<Rango> rangoTecleado() const;
    void ponerCantidad(bool aceptado, qint64 cantidad);
    [[nodiscard]] bool puedeGrabarse(const QString& tipo);
    [[nodiscard]] qint16 siguienteNumMov();

    bool gCargandoLista = false;  ///< the fill of the list goes on while this is on
};

}  // namespace tarmel
