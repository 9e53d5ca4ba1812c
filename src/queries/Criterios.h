#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// What a query can ask for, as facts: the lists that are offered, the fragments of the condition and the
/// prefixes of the description. The screen is laid out from them, and both texts are written from them.
namespace tarmel {

/// A criterion by one of the code tables, shown under the prefix of its line of the description.
struct CriterioCodigo {
    QString combo;
    QString descripcion;
    QString etiqueta;        ///< name of the labels of the chosen code and its name
    QString condicion;       ///< with the code at %1
    QString columna;         ///< what the columns bear behind "Codigo" and "Nombre"
    QStringList sentencias;  ///< fill the combo, each anew
    QStringList elementos;   ///< of a combo whose list is fixed
};
/// In the order in which the condition takes them.
[[nodiscard]] const std::vector<CriterioCodigo>& criteriosDeCodigos();

/// What of a chosen place goes into the condition.
enum class DatoLugar { Codigo, CodigoLocalidad, Municipio };

/// A criterion by place: one of the options, with its own combo.
struct CriterioLugar {
    int opcion;  ///< the n of OptionAn
    QString titulo;
    QString combo;
    QString sentencia;  ///< rows of the combo; the list of the communities is fixed
    QString campoLista;
    QString campoEnlazado;
    DatoLugar dato = DatoLugar::Codigo;
    QString condicion;    ///< with the datum at %1
    QString descripcion;  ///< prefix of its line
};
/// In the order of the options on the screen.
[[nodiscard]] const std::vector<CriterioLugar>& criteriosDeLugar();
/// The option that asks for no place.
inline constexpr int kCualquierLugar = 5;

/// Ringers and groups share a combo, ringing centres have their own. The name in it ends in the kind's letter
/// in brackets.
struct CriterioPersona {
    QChar clase;
    QString combo;
    QString sentencia;  ///< adds its rows to the combo
    QString campoCodigo;
    QString condicion;    ///< with the code at every %1
    QString descripcion;  ///< prefix of its line
};
[[nodiscard]] const std::vector<CriterioPersona>& criteriosDePersona();
inline constexpr QChar kClaseCentro = u'C';

/// The criteria that no list of ours offers: what is asked for is at %1 (and %2).
struct CriterioSuelto {
    QString condicion;
    QString descripcion;
};
[[nodiscard]] const CriterioSuelto& criterioEspecies();
[[nodiscard]] const CriterioSuelto& criterioFechas();
[[nodiscard]] const CriterioSuelto& criterioAnilla();

/// Names with their codes, as the combo of the autonomous communities has them.
[[nodiscard]] const QStringList& comunidadesAutonomas();

}  // namespace tarmel
