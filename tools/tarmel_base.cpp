// tarmel_base FILE FOLDER: makes the prepared database FILE from the tables FOLDER/*.csv. The file appears
// whole or not at all, and the same tables always make the same file.

#include <QFile>
#include <QTextStream>

#include "database/Esquema.h"
#include "platform/basic/RuntimeError.h"

namespace {

int fail(const QString& words) {
    QTextStream(stderr) << "tarmel_base: " << words << Qt::endl;
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return fail(QStringLiteral("uso: tarmel_base ARCHIVO CARPETA"));
    const QString archivo = QFile::decodeName(argv[1]);
    const QString nuevo = archivo + QStringLiteral(".nuevo");
    QFile::remove(nuevo);
    try {
        tarmel::prepararBase(nuevo, QFile::decodeName(argv[2]));
    } catch (const tarmel::basic::RuntimeError& error) {
        QFile::remove(nuevo);
        return fail(error.description());
    }
    QFile::remove(archivo);
    if (!QFile::rename(nuevo, archivo)) return fail(QStringLiteral("no se puede escribir ") + archivo);
    return 0;
}
