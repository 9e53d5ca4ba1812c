#include "engine/FuncionesCombo.h"

#include "platform/ado/Recordset.h"
#include "platform/basic/Text.h"

namespace tarmel {

using namespace Qt::StringLiterals;

using basic::Trim;

void LlenarCombo(forms::ComboBox& combo, ado::Connection& conexion, const QString& sql,
                 const QString& campoCodigo, const QString& campoNombre, bool añadir,
                 const QString& campoItemData) {
    if (!añadir) combo.Clear();
    ado::Recordset filas;
    filas.Open(sql, conexion);
    for (; !filas.Eof(); filas.MoveNext()) {
        const QString codigo = Trim(filas.Text(campoCodigo));
        if (campoNombre.isEmpty()) {
            combo.AddItem(codigo);
            continue;
        }
        const int elemento = combo.AddItem(codigo + u" .-. "_s + Trim(filas.Text(campoNombre)));
        if (!campoItemData.isEmpty()) combo.SetItemData(elemento, filas.Value(campoItemData).toLong());
    }
    filas.Close();
}

void SeleccionarEnCombo(forms::ComboBox& combo, const QString& texto) {
    combo.SetListIndex(combo.Find(texto));
}

void SeleccionarEnDataCombo(forms::DataCombo& combo, const QString& texto) {
    combo.SetFocus();
    // The text stands for keys typed into the combo: without any, nothing is searched for.
    if (texto.isEmpty()) return;
    const int elemento = combo.Find(texto);
    if (elemento < 0) return combo.SetText(QString());
    combo.SetListIndex(elemento);
}

void CopiarCombo(forms::ComboBox& origen, forms::ComboBox& destino) {
    for (int i = 0; i < origen.ListCount(); ++i) {
        origen.SetListIndex(i);
        destino.AddItem(origen.Text());
    }
    origen.SetListIndex(-1);
    destino.SetListIndex(-1);
}

QString ExtraerParteCombo(const QString& separador, const QString& texto, bool parteDerecha) {
    if (separador.isEmpty()) return QString();
    const qsizetype posicion = texto.indexOf(separador) + 1;
    // The blanks around the separator are skipped by counting, whatever stands there.
    if (!parteDerecha && posicion < 2) throw basic::RuntimeError(basic::error::InvalidCall);
    QStringView parte(texto);
    parte = parteDerecha ? parte.mid(posicion + 3) : parte.left(posicion - 2);
    while (parte.startsWith(u' '))
        parte = parte.mid(1);
    while (parte.endsWith(u' '))
        parte.chop(1);
    return parte.toString();
}

void EnlazarDataCombo(forms::DataCombo& combo, ado::Connection& conexion, const QString& sql,
                      const QString& campoLista, const QString& campoEnlazado) {
    ado::Recordset filas;
    filas.Open(sql, conexion);
    std::vector<forms::DataCombo::Row> elementos;
    for (; !filas.Eof(); filas.MoveNext()) {
        elementos.push_back({filas.Text(campoLista), filas.Text(campoEnlazado)});
    }
    filas.Close();
    combo.SetRows(std::move(elementos));
}

}  // namespace tarmel
