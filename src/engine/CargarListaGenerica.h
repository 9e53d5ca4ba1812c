#pragma once

#include <QString>
#include <vector>

#include "platform/ado/Connection.h"
#include "platform/forms/Form.h"

namespace tarmel {

/// A column of a list that is filled from a statement.
struct ColumnaLista {
    QString titulo;
    int ancho = 0;  ///< twips; 0 cannot be seen
    QString campo;
};

/// How a list is filled. A head whose text begins with "Date" gets the tag "Date" where `marcarFechas`.
struct OpcionesLista {
    int anchoRelleno = 0;  ///< blanks in front of the first column up to this width; 0: none
    bool marcarFechas = true;
};

/// Fills a list view from a statement, letting events run after each row, while `seguir` stays on (this call
/// sets it). With rows, the first is selected and a visible list takes the focus. The number of rows; -1
/// after any failure, which is not shown and turns `seguir` off. The form may be unloaded while the list
/// fills: `seguir` must outlive it (shared state).
int CargarListaGenerica(forms::Form& formulario, forms::ListView& lista, ado::Connection& conexion,
                        const QString& sql, const std::vector<ColumnaLista>& columnas,
                        const OpcionesLista& opciones, bool& seguir);

}  // namespace tarmel
