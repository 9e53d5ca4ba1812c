#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include "platform/basic/RuntimeError.h"

/// The text files of the exchange, one a table: ANSI code page, CR LF behind every line, ";" between fields,
/// nothing quoted and nothing escaped.
namespace tarmel {

inline constexpr QChar kSeparadorFichero = u';';

/// What a file may ask of our memory. The longest line that the program itself writes has some 2,000
/// characters in 41 fields.
inline constexpr qsizetype kMaxLineaFichero = 65536;
inline constexpr int kMaxCamposFichero = 255;
inline constexpr qint64 kMaxFicheroEntero = 64 * 1024 * 1024;
/// And of the disk: some four million captures.
inline constexpr qint64 kMaxFicheroRecibido = 1024 * 1024 * 1024;

/// Number of the error for a text that is no exchange file: NUL bytes, a line or a count of fields beyond the
/// bounds. Its description says which.
inline constexpr int kFormatoNoValido = 321;
[[nodiscard]] basic::RuntimeError formatoNoValido(const QString& descripcion);

/// Writes a file from its beginning; one that is there is emptied first.
/// Errors: 76 no folder, 75 refused, 61 no room.
class EscritorFichero {
 public:
    explicit EscritorFichero(const QString& ruta);
    void escribir(const QStringList& campos);
    /// Everything has reached the file, or an error tells otherwise.
    void cerrar();
    /// For a file that cannot be completed: nothing of it stays.
    void vaciar();

 private:
    void comprobar(bool escrito);
    QFile fichero_;
};

/// Reads lines: CR or CR LF ends one, so that a line feed alone stays within its value.
/// Errors: 53 no file, 76 no folder, 75 refused or no plain file, 62 behind the end, 321 see above.
class LectorFichero {
 public:
    explicit LectorFichero(const QString& ruta);
    [[nodiscard]] bool fin();
    QString leerLinea();

 private:
    bool llenar();
    QFile fichero_;
    QByteArray bloque_;
    qsizetype posicion_ = 0;
};

/// Opens what an archive may have brought: only a plain file is read, never what a link or a device stands
/// for.
void abrirFicheroRecibido(QFile& fichero);
/// Received files keep the marks of their archive; a write-protected one could not be removed.
void quitarProteccion(const QString& ruta);

}  // namespace tarmel
