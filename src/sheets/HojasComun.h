#pragma once

#include <QString>
#include <vector>

#include "core/DefinicionesGlobales.h"
#include "engine/CargarListaGenerica.h"
#include "platform/ado/Recordset.h"
#include "platform/basic/Date.h"
#include "platform/forms/Controls.h"
#include "platform/forms/Form.h"

/// What the field-sheet screen and the capture screen share: list rows and their sort, key filters, measures.
namespace tarmel {

/// Width of the first column of both lists, filled up with blanks so that numbers sort as text.
inline constexpr int kAnchoRelleno = 7;
[[nodiscard]] QString Rellenar(const QString& texto);

/// A column of a list, and the control whose value a row shows that is added after a save. Without one the
/// screen works the value out.
struct ColumnaDePantalla {
    QString titulo;
    int ancho = 0;
    QString campo;
    QString control;
};
[[nodiscard]] std::vector<ColumnaLista> ColumnasDeLista(const std::vector<ColumnaDePantalla>& columnas);
[[nodiscard]] std::vector<QString> FilaDeControles(const forms::Form& formulario,
                                                   const std::vector<ColumnaDePantalla>& columnas);

/// A place as the combo of the sheet screen shows it, from a row of ANILOC with its three columns.
[[nodiscard]] QString TextoDeLocalidad(const ado::Recordset& lugar);

/// The days from the first of January 1900: the hidden column by which a list sorts its dates.
[[nodiscard]] QString DiasDesde1900(basic::Date fecha);

/// The part of a combo's text in front of the separator; empty when nothing is chosen.
[[nodiscard]] QString CodigoDeCombo(const forms::ComboBox& combo);

/// A click on a head: sorts by that column, by the hidden one beside it where the head speaks of a "Fecha".
/// Each click in the program turns the direction round, whatever list and column it meets.
void OrdenarPorColumna(forms::ListView& lista, int columnaDesde1);

/// Before a command key acts: the field in which it was pressed ends its entry, as it would before a click.
void TerminarCampoActivo(const forms::Form& formulario);

/// A command of a screen: its button, what it does, and the function key that does the same while the button
/// is enabled.
template <typename Pantalla>
struct Orden {
    forms::CommandButton Pantalla::*boton;
    void (Pantalla::*accion)();
    int tecla = 0;
};
template <typename Pantalla, std::size_t N>
void ConectarOrdenes(Pantalla& pantalla, const Orden<Pantalla> (&ordenes)[N]) {
    for (const Orden<Pantalla>& orden : ordenes)
        (pantalla.*orden.boton).Click = [&pantalla, accion = orden.accion] { (pantalla.*accion)(); };
}
/// A key that is a command's is used up, also while the command cannot be given.
template <typename Pantalla, std::size_t N>
void AtenderTecla(Pantalla& pantalla, const Orden<Pantalla> (&ordenes)[N], int& tecla) {
    for (const Orden<Pantalla>& orden : ordenes) {
        if (orden.tecla != tecla || tecla == 0) continue;
        tecla = 0;
        if (!(pantalla.*orden.boton).Enabled()) return;
        if (orden.tecla == forms::key::F3) TerminarCampoActivo(pantalla);
        (pantalla.*orden.accion)();
        return;
    }
}

/// The identified ringer, group and entity, on the labels of the screen's head.
template <typename Pantalla>
void MostrarSesion(Pantalla& pantalla) {
    pantalla.lblCodigoAnillador.SetCaption(gAnillador[0]);
    pantalla.lblNombreAnillador.SetCaption(gAnillador[1]);
    pantalla.lblCodigoGrupo.SetCaption(gGrupo[0]);
    pantalla.lblNombreGrupo.SetCaption(gGrupo[1]);
    pantalla.lblCodigoEntidad.SetCaption(gEntidad[0]);
    pantalla.lblNombreEntidad.SetCaption(gEntidad[1]);
}

/// Refuses ";" and "|", which separate the fields of the exchange files, and says so.
void RechazarSeparadores(int& tecla);
/// Lets through what stands on a ring: digits, letters and Backspace.
void SoloTeclasDeAnilla(int& tecla);
/// Lets through a number with one decimal comma; "." becomes ",".
void SoloTeclasDeMedida(const forms::TextBox& medida, int& tecla);
/// Gives a measure without decimals its ",0".
void CompletarMedida(forms::TextBox& medida, int decimales);

/// What a control says beside its caption: the name that a screen reader speaks, and the hint under the
/// pointer.
struct Descripcion {
    forms::Control* control;
    QString nombre;
    QString ayuda = {};
};
void DescribirControles(const std::vector<Descripcion>& descripciones);

}  // namespace tarmel
