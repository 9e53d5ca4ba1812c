#include "database/Salud.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <chrono>

#include "database/Copias.h"
#include "platform/ado/FileCheck.h"
#include "platform/basic/Text.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

/// Without these it is some other program's database.
constexpr std::array kTablasPropias{u"ANIMAT", u"ANILOC", u"ANIBRD", u"ANICHO", u"ANIAHO"};
constexpr auto kEntreAvances = std::chrono::milliseconds(50);

bool esNuestra(const QStringList& tablas) {
    return std::ranges::all_of(kTablasPropias, [&](const char16_t* tabla) {
        return tablas.contains(QString::fromUtf16(tabla), Qt::CaseInsensitive);
    });
}

/// A log that the database does not know belongs to the file that lay here before, as when a copy was put
/// back behind a crash. Applied to this one it would spoil it.
void apartarDiarioAjeno(const QString& base) {
    if (!ado::hasStrayLog(base)) return;
    const QString apartado = base + u"-wal.anterior"_s;
    QFile::remove(apartado);
    QFile::rename(base + u"-wal"_s, apartado);
}

/// What a whole check finds.
QString revisar(const QString& ruta, const QString& mensaje, const Avance& avance, bool& buena) {
    ado::WholeCheck revision(ruta);
    do {
        avance(mensaje.arg(revision.percent()));
    } while (!revision.finished(kEntreAvances));
    buena = revision.isGood();
    return revision.damage();
}

QString consejo(const QString& base, const Avance& avance) {
    const QString nombre = QFileInfo(base).fileName();
    for (const CopiaGuardada& copia : copiasGuardadas(base)) {
        bool buena = false;
        (void)revisar(copia.ruta, u"Buscando la última copia buena... %1 %"_s, avance, buena);
        if (!buena) continue;
        const QString cual = u"La última copia buena es %1, del %2, en la carpeta Copias."_s.arg(
            QFileInfo(copia.ruta).fileName(), copia.momento.toString(u"dd/MM/yyyy 'a las' HH:mm"_s));
        return cual +
               u"\rPara volver a ella, dé otro nombre a %1, cópiela en su lugar y llámela %1."_s.arg(nombre);
    }
    return u"No hay ninguna copia buena en la carpeta Copias."_s;
}

QString problemaDe(const QString& base, const Avance& avance) {
    const bool cerrada = ado::wasClosed(base);
    const ado::Glance vistazo = ado::glanceAt(base);
    if (!vistazo.damage.isEmpty()) return vistazo.damage;
    if (!vistazo.readable) return {};
    if (!esNuestra(vistazo.tables))
        return u"El fichero %1 es una base de datos de otro programa: no contiene las tablas de Tarmel."_s
            .arg(QFileInfo(base).fileName());
    if (cerrada) return {};
    bool buena = false;
    return revisar(base, u"Comprobando la base de datos tras un cierre inesperado... %1 %"_s, avance, buena);
}

}  // namespace

QString examinarBase(const QString& base, const Avance& avance) {
    apartarDiarioAjeno(base);
    const QString problema = problemaDe(base, avance);
    if (problema.isEmpty()) return {};
    return problema + u"\rEl fichero no se ha modificado.\r\r"_s + consejo(base, avance);
}

}  // namespace tarmel
