#pragma once

#include "platform/forms/Form.h"

namespace tarmel {

/// Takes in the archives that ringers have sent: one, or all that lie in Datos. For coordinators only. While
/// that runs the screen shows how far it is and stays open.
class frm09_ImportarDatos : public forms::Form {
 public:
    static inline const QString kName = QStringLiteral("frm09_ImportarDatos");
    frm09_ImportarDatos();

    forms::Frame fraOpciones{*this, QStringLiteral("fraOpciones"), QStringLiteral("Recepción de datos")};
    forms::OptionButton optSeleccion{*this, QStringLiteral("optSeleccion"), QStringLiteral("Selección")};
    forms::OptionButton optTodos{*this, QStringLiteral("optTodos"), QStringLiteral("Todos")};

    forms::Frame frmFichero{*this, QStringLiteral("frmFichero")};
    forms::Label lblFicheroImportar{*this, QStringLiteral("lblFicheroImportar"),
                                    QStringLiteral("Fichero a Importar")};
    forms::TextBox txtFichero{*this, QStringLiteral("txtFichero")};
    forms::Label Label1{*this, QStringLiteral("Label1"), QStringLiteral(".ZIP")};
    /// The archives of the folder Datos, by name.
    forms::ListView FileControl{*this, QStringLiteral("FileControl")};

    forms::Frame frmBarra{*this, QStringLiteral("frmBarra")};
    forms::Label lblFichProcesado{*this, QStringLiteral("lblFichProcesado"), QStringLiteral("Procesando...")};
    forms::ProgressBar Progreso{*this, QStringLiteral("Progreso")};

    forms::CommandButton cmdImportar{*this, QStringLiteral("cmdImportar"), QStringLiteral("&Importar")};
    forms::CommandButton cmdSalir{*this, QStringLiteral("cmdSalir"), QStringLiteral("&Salir")};

    void cmdImportar_Click();
    void cmdSalir_Click();
    void optSeleccion_Click();
    void optTodos_Click();
    void FileControl_DblClick();
    void txtFichero_LostFocus();

 protected:
    void Load() override;
    void Activate() override;
    bool QueryUnload() override { return enCurso_; }
    void FormKeyPress(int& character) override;

 private:
    void activarSeleccion(bool activar);
    void listarFicheros();
    void mostrarMarcha(bool enMarcha);
    void importar();
    [[nodiscard]] bool importarElegido();
    [[nodiscard]] bool importarTodos();
    void cerrar();

    bool enCurso_ = false;  ///< an import is running: the screen cannot be closed
};

}  // namespace tarmel
