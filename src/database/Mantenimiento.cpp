#include "database/Mantenimiento.h"

#include <QFileInfo>

#include "platform/ado/Compaction.h"
#include "platform/ado/FileCheck.h"
#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

/// A name that is to outlast a power cut before the next step is taken.
void cambiarNombre(const QString& de, const QString& a) {
    sys::rename(de, a);
    sys::syncFolder(QFileInfo(a).path());
}

}  // namespace

FicherosDeBase ficherosDeBase(const QString& rutaBase) {
    const QString tronco = rutaBase.chopped(QFileInfo(rutaBase).suffix().size());
    return {sys::actualPath(rutaBase).value_or(rutaBase), tronco + u"999"_s, tronco + u"bak"_s};
}

void CompactarBase(ado::Connection& conexion, const QString& rutaBase) {
    const FicherosDeBase ficheros = ficherosDeBase(rutaBase);
    if (sys::exists(ficheros.anterior)) sys::remove(ficheros.anterior);
    conexion.CloseAlone();
    ado::compactDatabase(ficheros.base, ficheros.copia);
    sys::syncFolder(QFileInfo(ficheros.copia).path());
    cambiarNombre(ficheros.base, ficheros.anterior);
    cambiarNombre(ficheros.copia, ficheros.base);
}

void TerminarCompactacion(const QString& rutaBase) {
    const FicherosDeBase ficheros = ficherosDeBase(rutaBase);
    if (sys::exists(ficheros.base) || !sys::exists(ficheros.copia) || !sys::exists(ficheros.anterior)) return;
    if (ado::isWhole(ficheros.copia)) {
        cambiarNombre(ficheros.copia, ficheros.base);
    } else {
        sys::copy(ficheros.anterior, ficheros.base);
    }
}

void BorrarFicheros(const QString& carpeta, const QString& patron) {
    if (patron.startsWith(u'\\')) return;
    (void)basic::resumeNext([&] { sys::removeMatching(carpeta, patron); });
}

}  // namespace tarmel
