#include "exchange/Archivador.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <csignal>

#include "core/General.h"
#include "platform/forms/Host.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QString kNombre = u"7za"_s;

/// Its exit codes: 0 is success, 1 a warning, as for a file that nothing matched.
constexpr int kAviso = 1;
constexpr int kDesbordado = sys::kSignalBase + SIGXFSZ;
/// Seconds of work after which an archive is given up; the largest one that is ours takes a fraction.
constexpr int kMasTrabajo = 600;
constexpr int kPaso = 20;  // milliseconds between two turns of the events

QByteArray contenido(const QString& ruta) {
    QFile fichero(ruta);
    if (!fichero.open(QIODevice::ReadOnly)) return {};
    return fichero.readAll();
}

bool esElPropio(const QString& copia, const QString& propio) {
    const QFileInfo info(copia);
    return info.isFile() && !info.isSymLink() && info.isExecutable() && contenido(copia) == contenido(propio);
}

/// The copy that runs, the same as the program's own.
QString asegurar() {
    const QString propio = RutaEnAplicacion(kNombre);
    if (!sys::exists(propio)) throw basic::RuntimeError(basic::error::FileNotFound);
    const QString copia = RutaEnAplicacion(u"Datos"_s) + QDir::separator() + kNombre;
    if (esElPropio(copia, propio)) return copia;
    // Removed first: a link would be written through.
    if (QFileInfo(copia).isSymLink()) QFile::remove(copia);
    sys::copy(propio, copia);
    return copia;
}

}  // namespace

Archivador Archivador::iniciar(const QStringList& palabras, const QString& carpeta, const Salida& salida) {
    QStringList argumentos = palabras + QStringList{u"-y"_s, u"-ssc-"_s};
    for (const QString& fichero : salida.ficheros)
        argumentos << u"-ir!"_s + fichero;
    return Archivador(sys::Process::start(asegurar(), argumentos, carpeta,
                                          {.fileBytes = salida.maximo, .cpuSeconds = kMasTrabajo}));
}

void Archivador::pausar(int milisegundos) {
    for (int pasado = 0; pasado < milisegundos; pasado += kPaso) {
        forms::host().DoEvents();
        forms::host().Sleep(kPaso);
    }
}

void Archivador::esperar(int minimo) {
    pausar(minimo);
    while (!proceso_.wait(kPaso))
        forms::host().DoEvents();
}

bool Archivador::haFallado() {
    return proceso_.exitCode().value_or(0) > kAviso;
}

bool Archivador::seHaDesbordado() {
    return proceso_.exitCode() == kDesbordado;
}

}  // namespace tarmel
