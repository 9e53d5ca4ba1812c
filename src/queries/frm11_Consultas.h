#pragma once

#include <deque>

#include "platform/forms/Form.h"
#include "queries/Criterios.h"

namespace tarmel {

/// Says which captures a query or a balance is about: criteria on five pages, each taken by its own button,
/// and all of them joined by AND. From them come the condition of the statement and the description that
/// stands at the head of what is printed. What was chosen stays for the next query.
class frm11_Consultas : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm11_Consultas");
    frm11_Consultas();

    forms::Label lblEncabezado{*this, QStringLiteral("lblEncabezado"),
                               QStringLiteral("Consultas de datos de Hojas de Campo")};
    forms::TabStrip SSTab1{*this, QStringLiteral("SSTab1")};

    // Species: the hidden column of the list is the species' identifier.
    forms::Frame fraEspecies{*this, QStringLiteral("fraEspecies")};
    forms::Label lblEspecie{*this, QStringLiteral("lblEspecie"), QStringLiteral("Especie:")};
    forms::DataCombo dbcboEspecie{*this, QStringLiteral("dbcboEspecie")};
    forms::CommandButton B_SeleccionarEspecie{*this, QStringLiteral("B_SeleccionarEspecie"),
                                              QStringLiteral("Seleccionar")};
    forms::ListView ListaSeleccion{*this, QStringLiteral("ListaSeleccion")};
    forms::CommandButton B_BorrarLinea{*this, QStringLiteral("B_BorrarLinea"),
                                       QStringLiteral("Borrar Linea")};
    forms::CommandButton B_BorrarTodo{*this, QStringLiteral("B_BorrarTodo"), QStringLiteral("Borrar Todo")};

    // Dates.
    forms::Frame fraFechas{*this, QStringLiteral("fraFechas")};
    forms::Frame fraLimites{*this, QStringLiteral("fraLimites"),
                            QStringLiteral("Seleccionar Fechas límite de Hoja")};
    forms::Label lblDesde{*this, QStringLiteral("lblDesde"), QStringLiteral("Desde")};
    forms::DatePicker DesdeAnillamiento{*this, QStringLiteral("DesdeAnillamiento"),
                                        QStringLiteral("dd/MM/yyyy")};
    forms::Label lblHasta{*this, QStringLiteral("lblHasta"), QStringLiteral("Hasta")};
    forms::DatePicker HastaAnillamiento{*this, QStringLiteral("HastaAnillamiento"),
                                        QStringLiteral("dd/MM/yyyy")};
    forms::CommandButton B_SeleccionarAnillamiento{*this, QStringLiteral("B_SeleccionarAnillamiento"),
                                                   QStringLiteral("Seleccionar Fecha")};
    forms::CommandButton B_BorrarSeleccion{*this, QStringLiteral("B_BorrarSeleccion"),
                                           QStringLiteral("Borrar Selección")};
    forms::Frame fraFechasElegidas{*this, QStringLiteral("fraFechasElegidas"),
                                   QStringLiteral("Fechas seleccionadas")};
    forms::Label lblHojaCampo{*this, QStringLiteral("lblHojaCampo"), QStringLiteral("Hoja de Campo:")};
    forms::Label Anillamiento{*this, QStringLiteral("Anillamiento"), kSinFechas};

    // Location: the options, and for each but the last its combo.
    forms::Frame fraLocalizacion{*this, QStringLiteral("fraLocalizacion")};
    forms::OptionButton OptionA1{*this, QStringLiteral("OptionA1"), titulo(1)};
    forms::OptionButton OptionA4{*this, QStringLiteral("OptionA4"), titulo(4)};
    forms::OptionButton OptionA2{*this, QStringLiteral("OptionA2"), titulo(2)};
    forms::OptionButton OptionA6{*this, QStringLiteral("OptionA6"), titulo(6)};
    forms::OptionButton OptionA3{*this, QStringLiteral("OptionA3"), titulo(3)};
    forms::OptionButton OptionA5{*this, QStringLiteral("OptionA5"), titulo(kCualquierLugar)};
    forms::DataCombo dbcboLocalidad{*this, QStringLiteral("dbcboLocalidad")};
    forms::DataCombo dbcboMunicipio{*this, QStringLiteral("dbcboMunicipio")};
    forms::DataCombo dbcboProvincia{*this, QStringLiteral("dbcboProvincia")};
    forms::ComboBox cboComunidad{*this, QStringLiteral("cboComunidad")};
    forms::DataCombo dbcboPais{*this, QStringLiteral("dbcboPais")};
    forms::CommandButton B_SeleccionarLocalizacion{*this, QStringLiteral("B_SeleccionarLocalizacion"),
                                                   QStringLiteral("Seleccionar")};
    forms::CommandButton B_BorrarLocalizacion{*this, QStringLiteral("B_BorrarLocalizacion"),
                                              QStringLiteral("Borrar Selección")};
    forms::Label LabelSeleccion{*this, QStringLiteral("LabelSeleccion"), titulo(kCualquierLugar)};
    forms::Label LabelDatoA1{*this, QStringLiteral("LabelDatoA1")};
    forms::Label LabelDatoA2{*this, QStringLiteral("LabelDatoA2")};
    forms::Label LabelDatoA3{*this, QStringLiteral("LabelDatoA3")};

    // Centre, ringer or group, ring. The codes of the first two are not shown: they stay when their names go.
    forms::Frame fraCentro{*this, QStringLiteral("fraCentro")};
    forms::Label lblAnilladorGrupo{*this, QStringLiteral("lblAnilladorGrupo"),
                                   QStringLiteral("Anillador / Grupo:")};
    forms::ComboBox cboAnillador{*this, QStringLiteral("cboAnillador")};
    forms::Label CodigoAni{*this, QStringLiteral("CodigoAni")};
    forms::Label LabelAnillador{*this, QStringLiteral("LabelAnillador")};
    forms::Label lblCentro{*this, QStringLiteral("lblCentro"), QStringLiteral("Centro:")};
    forms::ComboBox cboCentro{*this, QStringLiteral("cboCentro")};
    forms::Label CodigoCentro{*this, QStringLiteral("CodigoCentro")};
    forms::Label LabelCentro{*this, QStringLiteral("LabelCentro")};
    forms::Label lblAnilla{*this, QStringLiteral("lblAnilla"), QStringLiteral("Anilla:")};
    forms::TextBox txtAnilla{*this, QStringLiteral("txtAnilla")};
    forms::Label LabelAnilla{*this, QStringLiteral("LabelAnilla")};
    forms::CommandButton B_SeleccionarCentro{*this, QStringLiteral("B_SeleccionarCentro"),
                                             QStringLiteral("Seleccionar")};
    forms::CommandButton B_BorrarCentro{*this, QStringLiteral("B_BorrarCentro"),
                                        QStringLiteral("Borrar Selección")};

    /// A combo of codes, in front of it what it is called, behind it what was taken.
    struct CampoDeCodigo {
        CampoDeCodigo(forms::Form& pantalla, const CriterioCodigo& criterio);
        const CriterioCodigo& criterio;
        forms::Label rotulo;
        forms::ComboBox combo;
        forms::Label codigo;
        forms::Label nombre;
    };
    forms::Frame fraCodigos{*this, QStringLiteral("fraCodigos")};
    std::deque<CampoDeCodigo> Codigos = camposDeCodigos(*this);
    forms::CommandButton B_SeleccionarCodigosR{*this, QStringLiteral("B_SeleccionarCodigosR"),
                                               QStringLiteral("Seleccionar")};
    forms::CommandButton B_BorrarCodigosR{*this, QStringLiteral("B_BorrarCodigosR"),
                                          QStringLiteral("Borrar Selección")};

    forms::CommandButton B_GenerarConsulta{*this, QStringLiteral("B_GenerarConsulta"),
                                           QStringLiteral("Generar Consulta")};
    forms::CommandButton BorrarTodo{*this, QStringLiteral("BorrarTodo"), QStringLiteral("Borrar Todo")};
    forms::CommandButton B_Salir{*this, QStringLiteral("B_Salir"), QStringLiteral("&Salir")};

    void B_SeleccionarEspecie_Click();
    void B_BorrarLinea_Click();
    void B_BorrarTodo_Click();
    void B_SeleccionarAnillamiento_Click();
    void B_BorrarSeleccion_Click();
    void B_SeleccionarLocalizacion_Click();
    void B_BorrarLocalizacion_Click();
    void B_SeleccionarCentro_Click();
    void B_BorrarCentro_Click();
    void B_SeleccionarCodigosR_Click();
    void B_BorrarCodigosR_Click();
    void BorrarTodo_Click();
    void B_Salir_Click();
    void LimpiarLabel();
    /// The combo of that option is the one that can be used; what was chosen before is dropped.
    void ActivarLocalizacion(int opcion);
    void LimpiarLocalizacion();

    /// Dialogue, condition, selection, then report or file.
    void GenerarConsulta();

    /// The whole condition, empty without criteria; gFiltroTexto takes the description. What was typed or
    /// read goes into the condition as it is: a quote in it makes the statement fail.
    [[nodiscard]] QString BuscaFiltro();
    void BuscaFiltroEspecies(QString& where) const;
    void BuscaFiltroFechas(QString& where) const;
    void BuscaFiltroLocalizacion(QString& where) const;
    void BuscaFiltroCentroAnilla(QString& where) const;
    void BuscaFiltroCodigo(QString& where) const;
    static void CompletaWhere(QString& where);

 protected:
    void Load() override;
    void FormKeyPress(int& character) override;

 private:
    static inline const QString kSinFechas = QStringLiteral("Ninguna");
    static constexpr int kColumnaIdEspecie = 1;

    /// An option of the location with its combo, if it has one.
    struct OpcionDeLugar {
        const CriterioLugar& criterio;
        forms::OptionButton& opcion;
        forms::ComboBox* combo;
    };
    [[nodiscard]] static const QString& titulo(int opcion);
    static std::deque<CampoDeCodigo> camposDeCodigos(forms::Form& pantalla);
    void nombrar();
    void enlazarEventos();
    void llenarListas();
    void borrarEspecies();
    void seleccionarLocalizacion();
    void consultar();
    [[nodiscard]] static QString textoDeFecha(const forms::DatePicker& selector);

    std::vector<OpcionDeLugar> lugares_;
    int numRegistros_ = 0;  ///< rows of the last selection
};

}  // namespace tarmel
