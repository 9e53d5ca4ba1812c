#include "database/FilasFijas.h"

#include <QtGlobal>

#include "database/Csv.h"

using namespace Qt::StringLiterals;

/// Has to be called outside every namespace; a static library would leave the rows out otherwise.
static void traerTablas() {
    Q_INIT_RESOURCE(tablas);
}

namespace tarmel {

std::vector<std::vector<QString>> filasFijas(const QString& tabla) {
    traerTablas();
    std::vector<std::vector<QString>> filas = leerCsv(u":/tablas/%1.csv"_s.arg(tabla));
    filas.erase(filas.begin());  // the heading
    return filas;
}

QStringList especiesApagadas() {
    QStringList codigos;
    for (const std::vector<QString>& fila : filasFijas(u"especies"_s))
        codigos << fila.front();
    return codigos;
}

}  // namespace tarmel
