#pragma once

#include <QStringList>

namespace tarmel {

/// The ring models that the screens offer, in their order; the table of models may know more.
inline const QStringList& modelosDeAnillas() {
    static const QStringList modelos =
        QStringLiteral("0 10 11 12 1V 2 3 3M 4 5 6 7 8 9 A B C D E F G K L P T V Y").split(u' ');
    return modelos;
}

}  // namespace tarmel
