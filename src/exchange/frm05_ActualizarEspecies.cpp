#include "exchange/frm05_ActualizarEspecies.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {
constexpr int kNombre = 1;
constexpr int kIberica = 3;  // position 2, the Spanish name, is not read
}  // namespace

frm05_ActualizarEspecies::frm05_ActualizarEspecies()
    : ActualizarCatalogo(kName, u"Actualización de especies"_s, u"Fichero con especies a Importar"_s) {}

QString frm05_ActualizarEspecies::sentenciaBuscar(const QString& codigo) const {
    return u"SELECT * FROM ANIBRD WHERE CodigoEspecie = '"_s + codigo + u'\'';
}

QString frm05_ActualizarEspecies::sentenciaInsertar(const QStringList& fila) const {
    return u"INSERT INTO ANIBRD (IdEspecie, CodigoEspecie, NombreEspecie, NombreEspecie2, Iberica) VALUES "
           "(-1, '"_s +
           campo(fila, 0) + u"','"_s + campo(fila, kNombre) + u"','','"_s + campo(fila, kIberica) + u"')"_s;
}

QString frm05_ActualizarEspecies::sentenciaIdentificar() const {
    return u"UPDATE ANIBRD SET IdEspecie = IdEsp WHERE IdEspecie = -1 "_s;
}

}  // namespace tarmel
