// tarmel_base FILE FOLDER: makes the prepared database FILE from the tables FOLDER/*.csv. The file appears
// whole or not at all, and the same tables always make the same file.
//
// tarmel_base --former FILE FOLDER...: an empty database of the former version, for tests of the upgrade. The
// rows of a table come from the first folder that has them.

#include <QFile>
#include <QTextStream>

#include "database/Esquema.h"
#include "database/EsquemaAnterior.h"
#include "platform/basic/RuntimeError.h"

namespace {

int fail(const QString& words) {
    QTextStream(stderr) << "tarmel_base: " << words << Qt::endl;
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    QStringList palabras;
    for (int i = 1; i < argc; ++i)
        palabras << QFile::decodeName(argv[i]);
    const bool anterior = palabras.removeOne(QStringLiteral("--former"));
    if (palabras.size() < 2 || (!anterior && palabras.size() > 2))
        return fail(QStringLiteral("uso: tarmel_base ARCHIVO CARPETA | --former ARCHIVO CARPETA..."));
    const QString archivo = palabras.takeFirst();
    const QString nuevo = archivo + QStringLiteral(".nuevo");
    QFile::remove(nuevo);
    try {
        if (anterior) {
            tarmel::prepararBaseAnterior(nuevo, palabras);
        } else {
            tarmel::prepararBase(nuevo, palabras.front());
        }
    } catch (const tarmel::basic::RuntimeError& error) {
        QFile::remove(nuevo);
        return fail(error.description());
    }
    QFile::remove(archivo);
    if (!QFile::rename(nuevo, archivo)) return fail(QStringLiteral("no se puede escribir ") + archivo);
    return 0;
}
