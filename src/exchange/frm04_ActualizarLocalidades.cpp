#include "exchange/frm04_ActualizarLocalidades.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {
constexpr int kCampos = 10;
}

frm04_ActualizarLocalidades::frm04_ActualizarLocalidades()
    : ActualizarCatalogo(kName, u"Actualización de localidades"_s, u"Fichero con localidades a Importar"_s) {}

QString frm04_ActualizarLocalidades::sentenciaBuscar(const QString& codigo) const {
    return u"SELECT * FROM ANILOC WHERE CodigoLocalidad = '"_s + codigo + u'\'';
}

QString frm04_ActualizarLocalidades::sentenciaInsertar(const QStringList& fila) const {
    QStringList valores;
    for (int i = 0; i < kCampos; ++i)
        valores << campo(fila, i);
    return u"INSERT INTO ANILOC (IdLocalidad, CodigoLocalidad, CodigoProvincia, NombreLocalidad, Municipio, "
           "CuadranteLatitud, CuadranteLongitud, GradosLatitud, MinutosLatitud, GradosLongitud, "
           "MinutosLongitud) VALUES (-1, '"_s +
           valores.join(u"','"_s) + u"')"_s;
}

QString frm04_ActualizarLocalidades::sentenciaIdentificar() const {
    return u"UPDATE ANILOC SET IdLocalidad = IdLoc WHERE IdLocalidad = -1 "_s;
}

}  // namespace tarmel
