// tarmel_populate FILE --captures N [--seed S]: fills a prepared database with N invented captures and the
// ringers, sheets and rings they need. The file is filled whole or not at all; the same seed makes the same
// rows.

#include <QFile>
#include <QTextStream>
#include <optional>

#include "platform/basic/RuntimeError.h"
#include "populate/Poblacion.h"

namespace {

using namespace Qt::StringLiterals;
namespace muestra = tarmel::muestra;

struct Orden {
    QString archivo;
    int capturas = 0;
    quint64 semilla = 1;
};

std::optional<Orden> leerOrden(const QStringList& palabras) {
    Orden orden;
    bool conCapturas = false;
    for (qsizetype i = 0; i < palabras.size(); ++i) {
        bool bien = true;
        if (palabras[i] == u"--captures"_s) {
            orden.capturas = palabras.value(++i).toInt(&bien);
            bien = bien && orden.capturas >= 0;
            conCapturas = true;
        } else if (palabras[i] == u"--seed"_s) {
            orden.semilla = palabras.value(++i).toULongLong(&bien);
        } else {
            bien = orden.archivo.isEmpty() && !palabras[i].startsWith(u'-');
            orden.archivo = palabras[i];
        }
        if (!bien) return std::nullopt;
    }
    if (orden.archivo.isEmpty() || !conCapturas) return std::nullopt;
    return orden;
}

int fallar(const QString& palabras, int codigo) {
    QTextStream(stderr) << "tarmel_populate: " << palabras << Qt::endl;
    return codigo;
}

muestra::Resumen llenar(const QString& archivo, const Orden& orden) {
    tarmel::ado::Connection conexion;
    conexion.OpenFile(archivo);
    conexion.ExecutePlain("PRAGMA synchronous=OFF");  // a file that was only begun is thrown away
    const muestra::Resumen resumen = muestra::poblar(conexion, orden.capturas, orden.semilla);
    conexion.Close();
    return resumen;
}

}  // namespace

int main(int argc, char** argv) {
    QStringList palabras;
    for (int i = 1; i < argc; ++i)
        palabras << QFile::decodeName(argv[i]);
    const auto orden = leerOrden(palabras);
    if (!orden) return fallar(u"uso: tarmel_populate ARCHIVO --captures N [--seed S]"_s, 2);
    const QString nuevo = orden->archivo + u".nuevo"_s;
    QFile::remove(nuevo);
    if (!QFile::copy(orden->archivo, nuevo)) return fallar(u"no se puede copiar "_s + orden->archivo, 1);
    QFile::setPermissions(nuevo, QFile::permissions(nuevo) | QFile::WriteOwner);
    muestra::Resumen resumen;
    try {
        resumen = llenar(nuevo, *orden);
    } catch (const tarmel::basic::RuntimeError& error) {
        QFile::remove(nuevo);
        return fallar(error.description(), 1);
    }
    QFile::remove(orden->archivo);
    if (!QFile::rename(nuevo, orden->archivo)) return fallar(u"no se puede escribir "_s + orden->archivo, 1);
    QTextStream(stdout) << u"%1 capturas (%2 recuperaciones) en %3 hojas; anilladores %4 a %5"_s
                               .arg(resumen.capturas)
                               .arg(resumen.recuperaciones)
                               .arg(resumen.hojas)
                               .arg(muestra::kPrimerAnillador)
                               .arg(muestra::kPrimerAnillador + resumen.anilladores - 1)
                        << Qt::endl;
    return 0;
}
