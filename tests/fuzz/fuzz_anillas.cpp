// Anything typed as a ring: nothing but a ring of the fixed form comes out, and no error leaves the
// functions.

#include <QRegularExpression>
#include <limits>

#include "fuzz/Expect.h"
#include "sheets/Anillas.h"
#include "sheets/HostDePrueba.h"

namespace {

constexpr qsizetype kLongitud = 8;

struct Partes {
    QString modelo;
    QString inscripcion;
    qint32 numero = 0;
    bool error = false;
};

Partes partesDe(HostDePrueba& host, const QString& anilla) {
    Partes partes;
    host.cajas.clear();
    tarmel::DescomponerAnilla(anilla, partes.modelo, partes.inscripcion, partes.numero, partes.error);
    expect(host.cajas.size() == (partes.error ? 1u : 0u), "a split that fails says so once", anilla);
    const bool vacias = partes.modelo.isEmpty() && partes.inscripcion.isEmpty();
    expect(partes.error || !vacias, "a ring that is split has a model and an inscription", anilla);
    return partes;
}

/// Dots are put in at one place; what was typed stays.
bool soloAnadePuntos(const QString& tecleada, const QString& anilla) {
    const qsizetype puntos = anilla.size() - tecleada.size();
    for (qsizetype i = 0; i <= tecleada.size(); ++i) {
        if (tecleada.left(i) + QString(puntos, u'.') + tecleada.mid(i) == anilla) return true;
    }
    return false;
}

bool comprobarNormalizada(HostDePrueba& host, const QString& tecleada) {
    QString rellena = tecleada;
    const QString anilla = tarmel::NormalizarAnilla(rellena);
    if (anilla.isEmpty()) return false;
    expect(anilla == rellena, "the argument becomes the padded text", tecleada);
    expect(anilla.size() == std::max(kLongitud, tecleada.size()), "a ring is padded to eight characters",
           tecleada);
    expect(soloAnadePuntos(tecleada, anilla), "dots are all that is added", tecleada + u' ' + anilla);
    QString otraVez = anilla;
    expect(tarmel::NormalizarAnilla(otraVez) == anilla, "a padded ring stays as it is", anilla);
    return !partesDe(host, anilla).error;
}

/// The commonest rings are counted on within their series.
void comprobarSiguiente(HostDePrueba& host, const QString& tecleada) {
    QString siguiente = tecleada;
    const QString resultado = tarmel::SiguienteAnilla(siguiente);
    expect(resultado == siguiente, "the argument becomes the ring that follows", tecleada);

    static const QRegularExpression serie(QStringLiteral("^(?:[A-Y][0-9]{5}|[A-Z]{2}[0-9]{4})\\z"));
    static const QRegularExpression ultima(QStringLiteral("^[A-Z]+9+\\z"));
    if (!serie.match(tecleada).hasMatch() || ultima.match(tecleada).hasMatch()) return;
    QString antes = tecleada;
    QString despues = siguiente;
    const Partes una = partesDe(host, tarmel::NormalizarAnilla(antes));
    const Partes otra = partesDe(host, tarmel::NormalizarAnilla(despues));
    expect(!una.error && !otra.error && otra.inscripcion == una.inscripcion && otra.modelo == una.modelo,
           "the series stays", tecleada + u' ' + siguiente);
    expect(otra.numero == una.numero + 1, "the number is one more", tecleada + u' ' + siguiente);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    HostDePrueba host;
    const QString tecleada =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const bool aceptada = comprobarNormalizada(host, tecleada);
    partesDe(host, tecleada);
    comprobarSiguiente(host, tecleada);
    return aceptada ? 0 : -1;
}
