#include "exchange/Catalogos.h"

#include <QFile>

#include "exchange/FicheroIntercambio.h"
#include "platform/basic/Text.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

constexpr int kLargoExtension = 4;
const QString kFinDeLinea = u"\r\n"_s;

/// No line may be longer than the bound, which is seen before the text is copied.
void comprobarLineas(const QByteArray& bytes) {
    for (qsizetype desde = 0; desde < bytes.size();) {
        const qsizetype fin = bytes.indexOf("\r\n", desde);
        const qsizetype hasta = fin < 0 ? bytes.size() : fin;
        if (hasta - desde > kMaxLineaFichero)
            throw formatoNoValido(u"El fichero tiene una línea demasiado larga"_s);
        desde = hasta + kFinDeLinea.size();
    }
}

}  // namespace

Archivador DescomprimirCatalogo(const QString& Carpeta, const QString& Fichero) {
    // A name that begins as a switch or a list of the archiver's would not be taken for a name.
    const bool confuso = Fichero.startsWith(u'-') || Fichero.startsWith(u'@');
    const QString palabra = confuso ? u"./"_s + Fichero : Fichero;
    return Archivador::iniciar({u"e"_s, palabra}, Carpeta,
                               {{Fichero.chopped(kLargoExtension) + u".TXT"_s}, kMaxFicheroEntero});
}

QString LeerFichero(const QString& Ruta) {
    QFile fichero(Ruta);
    abrirFicheroRecibido(fichero);
    const qint64 largo = fichero.size();
    if (largo > kMaxFicheroEntero) throw formatoNoValido(u"El fichero es demasiado grande"_s);
    const QByteArray bytes = fichero.read(largo);  // room is made for all that is asked for
    if (fichero.error() != QFileDevice::NoError) throw basic::RuntimeError(basic::error::FileAccess);
    if (bytes.contains('\0')) throw formatoNoValido(u"El fichero no es un fichero de texto"_s);
    comprobarLineas(bytes);
    return basic::fromAnsi(bytes);
}

std::vector<QStringList> LeerTablaTexto(const QString& Ruta, QChar Separador) {
    const QString texto = LeerFichero(Ruta);
    std::vector<QStringList> filas;
    for (const QStringView linea : QStringView(texto).split(kFinDeLinea)) {
        if (linea.isEmpty() && !filas.empty()) continue;
        if (linea.count(Separador) >= kMaxCamposFichero)
            throw formatoNoValido(u"El fichero tiene demasiados campos"_s);
        filas.push_back(linea.toString().split(Separador));
    }
    return filas;
}

}  // namespace tarmel
