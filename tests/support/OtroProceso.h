#pragma once

#include <sys/types.h>

#include <QString>

#include "support/Interrupcion.h"

namespace tarmel {

/// Another program of this machine, which can be told to open a database and to stop behind some statements,
/// with the locks that they took. It ends with this object. Made before this process opens a database itself:
/// a process that inherits an open one takes its locks for its own.
class OtroPrograma {
 public:
    OtroPrograma();
    ~OtroPrograma();
    OtroPrograma(const OtroPrograma&) = delete;
    OtroPrograma& operator=(const OtroPrograma&) = delete;

    void abrir(const QString& base, const QByteArray& sentencias);
    void cerrar();

 private:
    void ordenar(const QByteArray& orden);

    pid_t proceso_ = -1;
    int ordenes_ = -1;
    int respuestas_ = -1;
};

/// Carries out the action in a process of its own that may do what any user may, whoever runs the tests: what
/// is read-only is so for it. The folder and all in it become that user's.
[[nodiscard]] Corrida correrComoUsuario(const QString& carpeta,
                                        const std::function<void(const Avisar&)>& accion);

}  // namespace tarmel
