#pragma once

#include <QString>
#include <QStringList>

#include "platform/system/Process.h"

namespace tarmel {

/// What may come out of a received archive, whatever it holds.
struct Salida {
    QStringList ficheros;  ///< the only names, without their folders; none: all
    qint64 maximo = 0;     ///< bytes of each; a small archive can unpack to more than a disk holds
};

/// The archiver 7za, which runs beside the program. What runs is the copy in Datos, made sure of before each
/// use: archives that unpack there could bring a program of that name.
class Archivador {
 public:
    /// Starts it in a folder. The command's words come first; behind them the switches that this platform
    /// needs: names without regard to case, no question before a file is replaced.
    /// Errors: 53 no archiver in the program's folder, 76 no folder, 75 refused.
    [[nodiscard]] static Archivador iniciar(const QStringList& palabras, const QString& carpeta,
                                            const Salida& salida = {});

    /// A pause of at least so many milliseconds, and longer while the archiver runs; the events of the
    /// screens go on.
    void esperar(int minimo);
    /// The pause alone.
    static void pausar(int milisegundos);
    /// It has ended, and not well: what it leaves cannot be trusted.
    [[nodiscard]] bool haFallado();
    /// It was ended because a file grew beyond its bound.
    [[nodiscard]] bool seHaDesbordado();

 private:
    explicit Archivador(sys::Process proceso) : proceso_(std::move(proceso)) {}
    sys::Process proceso_;
};

}  // namespace tarmel
