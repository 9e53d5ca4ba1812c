#pragma once

#include <QByteArray>
#include <QString>
#include <span>
#include <vector>

#include "platform/basic/RuntimeError.h"

/// What the program tarmel_access tells of an Access file: lines that end with LF, fields between tabs,
/// UTF-8. In names and texts a backslash, a tab, a line feed and a NUL stand as \\ \t \n \0. In this order:
///
///     A  1                                             the version of these lines
///     R  name table column other-table other-column   a relation, one line for each of its columns
///     T  table rows last-number                        a table: the count of rows in its definition, its
///     counter C  column type bytes digits decimals counter    a column of that table, in the order of their
///     numbers D  table                                         its rows follow; tables in the order of their
///     T W  value ...                                     a row: a value for each column E  rows end of the
///     table: how many rows were read Z  tables rows                                   end of all X  table
///     words                                   instead of any of them: what ended the reading
///
/// A value begins with the sign of its kind: - Null, " text, # whole number (yes is -1, no is 0), ~ exact
/// decimal, = the 64 bits of a double in hex (a date is one: days since 1899-12-30), x bytes in hex, ! cannot
/// be read.
///
/// The lines come from a process that works on a file which may be damaged or hostile: nothing is taken that
/// does not fit exactly, and only what was complete counts.
namespace tarmel {

enum class TipoAccess {
    Bool,
    Byte,
    Int,
    Long,
    Money,
    Single,
    Double,
    Date,
    Binary,
    Text,
    Ole,
    Memo,
    Guid,
    Numeric
};

struct ColumnaAccess {
    QString nombre;
    TipoAccess tipo = TipoAccess::Text;
    int bytes = 0;  ///< of a text: two for each character
    int cifras = 0;
    int decimales = 0;
    bool contador = false;
};

struct TablaAccess {
    QString nombre;
    qint64 filas = 0;  ///< by its own definition
    qint64 ultimoNumero = 0;
    std::vector<ColumnaAccess> columnas;
};

struct RelacionAccess {
    QString nombre, tabla, columna, otraTabla, otraColumna;
};

struct ValorAccess {
    enum class Clase { Nulo, Texto, Entero, Decimal, Doble, Bytes, Ilegible };
    Clase clase = Clase::Nulo;
    qint64 entero = 0;
    double doble = 0;
    QByteArrayView
        bytes;  ///< of a text in UTF-8, of a decimal as -123.45; valid while its row is handed over
};

/// Who takes in what is read.
class ReceptorAccess {
 public:
    virtual ~ReceptorAccess() = default;
    /// All tables are known; no row has been.
    virtual void definido(const std::vector<TablaAccess>& tablas,
                          const std::vector<RelacionAccess>& relaciones) = 0;
    virtual void empiezaTabla(std::size_t tabla) = 0;
    virtual void fila(std::span<const ValorAccess> valores) = 0;
    virtual void acabaTabla() = 0;
};

/// Number of the error for whatever an Access file or what is told of it is not.
inline constexpr int kErrorAccess = 3343;
[[nodiscard]] basic::RuntimeError errorAccess(const QString& descripcion);

/// What may be held of one line: two long values of the greatest length that the reader hands over.
inline constexpr qsizetype kMaxLineaAccess = 288 * 1024 * 1024;

/// Takes the lines apart as they come. Raises errorAccess at the first that does not fit.
class FlujoAccess {
 public:
    explicit FlujoAccess(ReceptorAccess& receptor) : receptor_(receptor) {}

    void recibir(QByteArrayView trozo);
    /// Nothing more comes: raises when the end of all has not been told.
    void terminar() const;

    [[nodiscard]] const std::vector<TablaAccess>& tablas() const { return tablas_; }

 private:
    enum class Estado { Comienzo, Definiciones, EntreTablas, Filas, Fin };
    using Campos = std::vector<QByteArrayView>;

    void linea(QByteArrayView texto);
    void definicion(char clase, const Campos& campos);
    void tabla(const Campos& campos);
    void columna(const Campos& campos);
    void relacion(const Campos& campos);
    void acabarDefiniciones();
    void comenzarFilas(const Campos& campos);
    void fila(QByteArrayView texto);
    void acabarFilas(const Campos& campos);
    void acabar(const Campos& campos);
    [[nodiscard]] ValorAccess valor(const ColumnaAccess& columna, QByteArrayView campo);
    [[nodiscard]] QByteArrayView liberar(QByteArrayView campo);
    [[noreturn]] void incomprensible() const;
    [[noreturn]] static void ajeno(QByteArrayView texto);

    ReceptorAccess& receptor_;
    Estado estado_ = Estado::Comienzo;
    QByteArray resto_;  ///< a line whose end has not come yet
    std::vector<TablaAccess> tablas_;
    std::vector<RelacionAccess> relaciones_;
    std::vector<ValorAccess> valores_;
    QByteArray suelto_;  ///< texts and bytes of the row, without their escapes
    std::size_t actual_ = 0;
    qint64 filas_ = 0;
    qint64 todas_ = 0;
};

}  // namespace tarmel
