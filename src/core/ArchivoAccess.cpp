#include "core/ArchivoAccess.h"

#include <QFileInfo>

#include "core/ActualizaVersion.h"
#include "core/General.h"
#include "database/TraerAccess.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Host.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

const QString kTitulo = u"Base de datos de Access"_s;

QString resumen(const TraidaAccess& traida) {
    QString texto =
        u"Se han traído los datos del archivo de Access: %1 filas de %2 tablas.\r"
        "El archivo de Access se conserva con el nombre %3."_s.arg(traida.filas)
            .arg(traida.tablas)
            .arg(QFileInfo(traida.guardado).fileName());
    if (traida.anterior && !ActualizacionPedida())
        texto +=
            u"\r\rSon datos de la versión anterior del programa: para ponerlos al día, use la orden "
            "Actualizar BD del menú Utilidades."_s;
    if (!traida.avisos.isEmpty()) texto += u"\r\r"_s + traida.avisos.join(u'\r');
    return texto;
}

QString problema(const QString& fichero, const basic::RuntimeError& error) {
    return u"No se han podido traer los datos del archivo de Access %1.\r\r%2\r\rEl archivo queda como estaba."_s
        .arg(QFileInfo(fichero).fileName(), error.description());
}

}  // namespace

void TraerArchivoAccess(const QString& fichero, const Avance& avance) {
    if (!esArchivoDeAccess(fichero)) return;
    try {
        const TraidaAccess traida = traerAccess(fichero, RutaEnAplicacion(u"tarmel_access"_s), avance);
        forms::MsgBox(resumen(traida), forms::box::Information, kTitulo);
    } catch (const basic::RuntimeError& error) {
        forms::MsgBox(problema(fichero, error), forms::box::Critical, kTitulo);
        forms::host().EndProgram();
    }
}

}  // namespace tarmel
