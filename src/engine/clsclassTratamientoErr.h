#pragma once

#include <QString>

#include "platform/ado/Recordset.h"

namespace tarmel {

/// Messages about errors and deletions. No statement of the program makes an object of it.
class clsclassTratamientoErr {
 public:
    /// The rows of `CodigoError` and `DescCorta` that MostrarError looks through; whoever has them opens
    /// them.
    ado::Recordset& Errores() { return errores_; }

    /// The button pressed. Kind 1 offers OK, any other OK and Cancel.
    int MostrarError(int numero, int tipo, const QString& texto);
    /// Asks before a deletion; kind 1 with the critical icon, kind 2 without.
    int PreguntaBorrar(const QString& codigo, const QString& nombre, int tipo, const QString& titulo);

 private:
    void buscarMensaje(int numero, const QString& texto);

    ado::Recordset errores_;
    QString mensaje_;
};

/// The box of a statement, or of a piece of maintenance, that the database refused.
void MostrarErrorSQL(const basic::RuntimeError& error);

/// A trap that calls MostrarError through a variable which nothing ever sets: whatever fails in `paso` ends
/// as error 91.
template <typename Paso>
void conTrampaSinObjeto(Paso&& paso) {
    if (!basic::resumeNext(paso)) throw basic::RuntimeError(basic::error::ObjectNotSet);
}

}  // namespace tarmel
