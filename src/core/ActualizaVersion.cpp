#include "core/ActualizaVersion.h"

#include "core/General.h"
#include "platform/basic/RuntimeError.h"
#include "platform/system/Files.h"
#include "platform/system/Ini.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

QString rutaIni() {
    return RutaEnAplicacion(u"Tarmel.INI"_s);
}

}  // namespace

double LeerIniEntero(const QString& seccion, const QString& clave) {
    return sys::readInt(rutaIni(), seccion, clave, -1);
}

void EscribirIni(const QString& seccion, const QString& clave, const QString& valor) {
    sys::writeText(rutaIni(), seccion, clave, valor);
}

void BorrarTemporales() {
    basic::resumeNext([] { sys::removeMatching(ObtenerRutaAplicacion(), u"*.TMP"_s); });
}

bool ActualizacionPedida() {
    const double valor = LeerIniEntero(kSeccionIni, kClaveActualizacion);
    return valor != -1 && valor != 0;
}

bool ActualizarVersion() {
    if (!ActualizacionPedida()) return true;
    // The upgrade's statements take their place here. Until then a former database stays as it is, and so
    // does the key, which asks again.
    return true;
}

}  // namespace tarmel
