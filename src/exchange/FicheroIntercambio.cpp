#include "exchange/FicheroIntercambio.h"

#include <QFileInfo>
#include <cerrno>

#include "platform/basic/Text.h"
#include "platform/forms/Host.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

namespace error = basic::error;

constexpr qint64 kBloque = 65536;

}  // namespace

basic::RuntimeError formatoNoValido(const QString& descripcion) {
    return {kFormatoNoValido, descripcion, forms::kProgramName};
}

// --- Writing

EscritorFichero::EscritorFichero(const QString& ruta) : fichero_(sys::actualPath(ruta).value_or(ruta)) {
    // A link is replaced, not followed: it would lead the rows elsewhere.
    if (QFileInfo(fichero_).isSymLink()) fichero_.remove();
    errno = 0;
    if (!fichero_.open(QIODevice::WriteOnly | QIODevice::Truncate)) throw sys::fileError(ruta, errno);
}

void EscritorFichero::escribir(const QStringList& campos) {
    const QByteArray linea = basic::toAnsi(campos.join(kSeparadorFichero)) + "\r\n";
    errno = 0;
    comprobar(fichero_.write(linea) == linea.size());
}

void EscritorFichero::cerrar() {
    if (!fichero_.isOpen()) return;
    errno = 0;
    comprobar(fichero_.flush());
    fichero_.close();
}

void EscritorFichero::vaciar() {
    fichero_.close();
    QFile::resize(fichero_.fileName(), 0);
}

void EscritorFichero::comprobar(bool escrito) {
    if (escrito) return;
    if (fichero_.error() == QFileDevice::ResourceError) throw basic::RuntimeError(error::DiskFull);
    throw sys::fileError(fichero_.fileName(), errno);
}

// --- Reading

void abrirFicheroRecibido(QFile& fichero) {
    const std::optional<QString> ruta = sys::actualPath(fichero.fileName());
    if (!ruta) throw sys::fileError(fichero.fileName(), ENOENT);
    if (QFileInfo(*ruta).isSymLink()) throw basic::RuntimeError(error::FileAccess);
    fichero.setFileName(*ruta);
    errno = 0;
    if (!fichero.open(QIODevice::ReadOnly)) throw sys::fileError(*ruta, errno);
}

void quitarProteccion(const QString& ruta) {
    QFile fichero(sys::actualPath(ruta).value_or(ruta));
    fichero.setPermissions(fichero.permissions() | QFile::WriteOwner | QFile::ReadOwner);
}

LectorFichero::LectorFichero(const QString& ruta) : fichero_(ruta) {
    abrirFicheroRecibido(fichero_);
}

bool LectorFichero::llenar() {
    bloque_ = fichero_.read(kBloque);
    posicion_ = 0;
    if (bloque_.isEmpty() && fichero_.error() != QFileDevice::NoError)
        throw basic::RuntimeError(error::FileAccess);
    return !bloque_.isEmpty();
}

bool LectorFichero::fin() {
    return posicion_ >= bloque_.size() && !llenar();
}

QString LectorFichero::leerLinea() {
    if (fin()) throw basic::RuntimeError(error::PastEndOfFile);
    QByteArray linea;
    bool terminada = false;
    while (!terminada && !fin()) {
        const qsizetype retorno = bloque_.indexOf('\r', posicion_);
        const qsizetype hasta = retorno < 0 ? bloque_.size() : retorno;
        if (linea.size() + hasta - posicion_ > kMaxLineaFichero)
            throw formatoNoValido(u"El fichero tiene una línea demasiado larga"_s);
        linea += QByteArrayView(bloque_).sliced(posicion_, hasta - posicion_);
        terminada = retorno >= 0;
        posicion_ = hasta + (terminada ? 1 : 0);
    }
    if (terminada && !fin() && bloque_[posicion_] == '\n') ++posicion_;
    if (linea.contains('\0')) throw formatoNoValido(u"El fichero no es un fichero de texto"_s);
    return basic::fromAnsi(linea);
}

}  // namespace tarmel
