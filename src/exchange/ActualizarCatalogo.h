#pragma once

#include <optional>

#include "exchange/Archivador.h"
#include "platform/forms/Form.h"

namespace tarmel {

/// What the two catalogue screens have in common: an archive is chosen and unpacked, and the rows of its text
/// file whose code the table does not have are added. Rows that exist stay as they are.
class ActualizarCatalogo : public forms::Form {
 public:
    forms::Frame frmNombreFichero{*this, QStringLiteral("frmNombreFichero"), QStringLiteral("Fichero")};
    forms::Label Label1{*this, QStringLiteral("Label1")};
    forms::TextBox txtRuta{*this, QStringLiteral("txtRuta")};
    forms::CommandButton cmdExaminar{*this, QStringLiteral("cmdExaminar"), QStringLiteral("Examinar")};

    forms::Frame SSPanel1{*this, QStringLiteral("SSPanel1")};
    forms::Label lblEspere{*this, QStringLiteral("lblEspere")};
    forms::ProgressBar ProgressBar1{*this, QStringLiteral("ProgressBar1")};

    forms::CommandButton cmdImportar{*this, QStringLiteral("cmdImportar"), QStringLiteral("&Importar")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir")};

    void cmdExaminar_Click();
    void cmdImportar_Click();
    void cmdSalir_Click();

 protected:
    ActualizarCatalogo(const QString& nombre, const QString& titulo, const QString& etiqueta);

    void Load() override;
    void FormKeyPress(int& character) override;

    /// The statements of a table, for a row of the file by position; a row that is too short raises 9.
    [[nodiscard]] virtual QString sentenciaBuscar(const QString& codigo) const = 0;
    [[nodiscard]] virtual QString sentenciaInsertar(const QStringList& fila) const = 0;
    /// The counter takes the place of the new row's placeholder.
    [[nodiscard]] virtual QString sentenciaIdentificar() const = 0;
    [[nodiscard]] static const QString& campo(const QStringList& fila, int posicion);

 private:
    void elegirArchivo();
    void importar();
    void importarFilas();
    void añadirSiFalta(const QStringList& fila);
    void mostrarPanel(bool mostrar);
    void avisarFallo(int numero, const QString& descripcion);

    QString RutaCatalogo;    ///< folder of the archive, later the path of the text file
    QString NombreCatalogo;  ///< the archive's name
    std::optional<Archivador> archivador_;
    bool enCurso_ = false;
};

}  // namespace tarmel
