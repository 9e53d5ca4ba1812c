#pragma once

#include <QString>

/// The checks over the journal of ring movements. A ring is in the store when a received line holds it and no
/// returned or passed-on line does.
namespace tarmel {

/// May rings be returned or passed on? Shows what stands against it: a ring already on a bird, a range not in
/// the store.
bool ComprobarDevolucion(const QString& modelo, qint32 numInicial, qint32 numFinal);
/// True when no movement of the same type holds the whole range; shows a message otherwise.
bool ComprobarMovimiento(const QString& modelo, const QString& inscripcion, qint32 numInicial,
                         qint32 numFinal, const QString& tipoMovimiento);
/// True when the ring is in the store. Shows nothing.
bool AnillaEnAlmacen(const QString& modelo, const QString& inscripcion, qint32 numero);

}  // namespace tarmel
