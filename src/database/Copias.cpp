#include "database/Copias.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QStorageInfo>
#include <algorithm>

#include "platform/system/Files.h"

using namespace Qt::StringLiterals;

namespace tarmel {

namespace {

constexpr std::size_t kCopiasRecientes = 10;
constexpr int kPaginasPorVez = 32;
constexpr qint64 kSitioParaElTrabajo = 64 * 1024 * 1024;  // bytes that a copy must leave to the rest
constexpr auto kEsperaMaxima = std::chrono::seconds(10);
const QString kFormato = u"yyyy-MM-dd_HHmmss"_s;
const QString kSufijoProvisional = u".parcial"_s;

QString carpetaDeCopias(const QString& base) {
    return QFileInfo(base).absolutePath() + u"/Copias"_s;
}

/// What the names of a database's copies begin with.
QString comienzo(const QString& base) {
    return QFileInfo(base).completeBaseName() + u'_';
}

QString extension(const QString& base) {
    return u'.' + QFileInfo(base).suffix();
}

QString rutaNueva(const QString& base) {
    QDateTime momento = QDateTime::currentDateTime();
    for (;; momento = momento.addSecs(1)) {
        QString ruta =
            carpetaDeCopias(base) + u'/' + comienzo(base) + momento.toString(kFormato) + extension(base);
        if (!QFileInfo::exists(ruta)) return ruta;
    }
}

basic::RuntimeError fallo(const QString& descripcion) {
    return {basic::error::FileAccess, descripcion, u"Copia de seguridad"_s};
}

void quitar(const QString& ruta) {
    basic::resumeNext([&] { sys::remove(ruta); });
}

void quitarProvisionales(const QString& base) {
    const QString carpeta = carpetaDeCopias(base);
    for (const QString& nombre : sys::find(carpeta, comienzo(base) + u'*' + kSufijoProvisional + u'*'))
        quitar(carpeta + u'/' + nombre);
}

}  // namespace

std::vector<CopiaGuardada> copiasGuardadas(const QString& base) {
    const QString carpeta = carpetaDeCopias(base);
    std::vector<CopiaGuardada> copias;
    for (const QString& nombre : sys::find(carpeta, comienzo(base) + u'*' + extension(base))) {
        const QString fecha =
            nombre.mid(comienzo(base).size())
                .chopped(std::min(nombre.size() - comienzo(base).size(), extension(base).size()));
        const QDateTime momento = QDateTime::fromString(fecha, kFormato);
        if (momento.isValid()) copias.push_back({carpeta + u'/' + nombre, momento});
    }
    std::ranges::sort(copias, std::ranges::greater{}, &CopiaGuardada::momento);
    return copias;
}

std::vector<CopiaGuardada> copiasSobrantes(const std::vector<CopiaGuardada>& copias) {
    std::vector<CopiaGuardada> sobrantes;
    QSet<QString> meses;
    for (std::size_t i = kCopiasRecientes; i < copias.size(); ++i) {
        const QString mes = copias[i].momento.toString(u"yyyy-MM"_s);
        if (meses.contains(mes)) sobrantes.push_back(copias[i]);
        meses.insert(mes);
    }
    return sobrantes;
}

CopiaEnCurso::CopiaEnCurso(ado::Connection& conexion, const QString& base)
    : base_(base), ultimoAvance_(std::chrono::steady_clock::now()) {
    const QString carpeta = carpetaDeCopias(base);
    if (!QDir().mkpath(carpeta)) throw fallo(u"no se puede crear la carpeta Copias."_s);
    quitarProvisionales(base);
    const qint64 libre = QStorageInfo(carpeta).bytesAvailable();
    if (libre >= 0 && libre < QFileInfo(base).size() + kSitioParaElTrabajo)
        throw fallo(u"no hay espacio en el disco."_s);
    ruta_ = rutaNueva(base);
    provisional_ = ruta_ + kSufijoProvisional;
    copia_ = std::make_unique<ado::Backup>(conexion, provisional_);
}

CopiaEnCurso::~CopiaEnCurso() = default;

bool CopiaEnCurso::paso(std::chrono::milliseconds rato) {
    try {
        return pasoSinQuitar(rato);
    } catch (const basic::RuntimeError&) {
        comprobacion_.reset();
        copia_.reset();
        quitarProvisionales(base_);
        throw;
    }
}

bool CopiaEnCurso::pasoSinQuitar(std::chrono::milliseconds rato) {
    if (copia_) {
        copiarPaginas(rato);
        return true;
    }
    if (!comprobacion_) return false;
    if (!comprobacion_->finished(rato)) return true;
    if (!comprobacion_->damage().isEmpty())
        throw fallo(u"no ha pasado la comprobación; la base de datos puede estar dañada."_s);
    if (!comprobacion_->isGood()) throw fallo(u"no se ha podido comprobar."_s);
    comprobacion_.reset();
    darNombre();
    return false;
}

void CopiaEnCurso::copiarPaginas(std::chrono::milliseconds rato) {
    using Paso = ado::Backup::Step;
    const auto fin = std::chrono::steady_clock::now() + rato;
    Paso hecho = Paso::More;
    do {
        hecho = copia_->step(kPaginasPorVez);
    } while (hecho == Paso::More && std::chrono::steady_clock::now() < fin);
    const auto ahora = std::chrono::steady_clock::now();
    if (hecho != Paso::Busy) ultimoAvance_ = ahora;
    if (ahora - ultimoAvance_ > kEsperaMaxima) throw fallo(u"la base de datos está en uso."_s);
    if (hecho != Paso::Done) return;
    marca_ = copia_->mark();
    copia_.reset();
    comprobacion_.emplace(provisional_, ado::WholeCheck::Then::Sync);
}

void CopiaEnCurso::darNombre() {
    sys::rename(provisional_, ruta_);
    sys::syncFolder(QFileInfo(ruta_).path());
    for (const CopiaGuardada& copia : copiasSobrantes(copiasGuardadas(base_))) {
        // A clock that went back makes the new copy look old.
        if (copia.ruta != ruta_) quitar(copia.ruta);
    }
}

}  // namespace tarmel
