#include "database/TraerAccess.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <tuple>

#include "database/CargaAccess.h"
#include "database/Esquema.h"
#include "database/EsquemaAnterior.h"
#include "database/FlujoAccess.h"
#include "database/Tablas.h"
#include "platform/ado/Connection.h"
#include "platform/ado/FileCheck.h"
#include "platform/system/Files.h"
#include "platform/system/ProgramOutput.h"

namespace tarmel {

using access_sql::quoted;
using access_sql::TableDef;
using access_sql::Type;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 kBytesDeCabecera = 32;
constexpr qsizetype kLugarDeFirma = 4;
constexpr qint64 kTrozo = 1 << 20;
constexpr auto kEntreAvances = std::chrono::milliseconds(60);

/// Tells whether a file is still the one that was read.
struct Huella {
    qint64 bytes = 0;
    qint64 segundos = 0;
    qint64 nanos = 0;
    quint64 nodo = 0;
    bool operator==(const Huella&) const = default;
};

Huella huellaDe(const QString& ruta) {
    struct stat estado {};
    if (::stat(QFile::encodeName(ruta).constData(), &estado) != 0) throw sys::fileError(ruta, errno);
    return {estado.st_size, estado.st_mtim.tv_sec, estado.st_mtim.tv_nsec, estado.st_ino};
}

QString raizDe(const QString& base) {
    const QFileInfo info(base);
    return info.path() + u'/' + info.completeBaseName();
}

/// The new file until it is finished. What a death leaves of it goes with the program's other temporary
/// files.
QString rutaNueva(const QString& base) {
    return raizDe(base) + u".access.TMP"_s;
}

void borrarRestos(const QString& nueva) {
    for (const auto* resto : {u"", u"-wal", u"-shm", u"-journal"})
        QFile::remove(nueva + QString::fromUtf16(resto));
}

void leerCon(const QString& lector, const QString& base, FlujoAccess& flujo, int silencio) {
    if (!QFileInfo::exists(lector))
        throw errorAccess(u"En la carpeta del programa falta %1, que lee los archivos de Access."_s.arg(
            QFileInfo(lector).fileName()));
    sys::ProgramOutput programa(lector, {base});
    QByteArray trozo;
    for (;;) {
        const auto leido = programa.read(trozo, silencio);
        if (leido == sys::ProgramOutput::Got::Nothing)
            throw errorAccess(u"La lectura se ha quedado parada: puede que el archivo esté dañado."_s);
        if (leido == sys::ProgramOutput::Got::End) break;
        flujo.recibir(trozo);
    }
    flujo.terminar();
    if (!programa.endedWell()) throw errorAccess(u"La lectura del archivo de Access no acabó bien."_s);
}

bool tieneColumnas(const ado::Connection& conexion, const QString& tabla,
                   const std::vector<QString>& columnas) {
    const TableDef* def = conexion.schema().table(tabla);
    return def && std::ranges::all_of(columnas, [&](const QString& una) { return def->indexOf(una) >= 0; });
}

void crearIndices(ado::Connection& conexion, const CargaAccess& carga, QStringList& avisos,
                  const Avance& avance) {
    std::vector<Indice> indices = carga.clavesPerdidas();
    if (carga.plan().anterior)
        indices.insert(indices.end(), indicesAnteriores().begin(), indicesAnteriores().end());
    indices.insert(indices.end(), indicesDelEsquema().begin(), indicesDelEsquema().end());
    std::size_t hechos = 0;
    for (const Indice& indice : indices) {
        avance(u"Ordenando los datos traídos... %1 %"_s.arg(100 * hechos++ / indices.size()));
        if (!tieneColumnas(conexion, indice.tabla, indice.columnas)) continue;
        if (basic::resumeNext([&] { crearIndice(conexion, indice); })) continue;
        crearIndice(conexion, {indice.tabla, indice.columnas});
        avisos << u"En %1 hay filas con %2 repetido; queda como índice con duplicados."_s.arg(
            indice.tabla, QStringList(indice.columnas.begin(), indice.columnas.end()).join(u", "_s));
    }
}

/// Numbers the new rows of a table whose counter rows have broken, as the counter would: behind its last
/// number, and past those that some row's public identifier bears.
QByteArray textoDeNumerador(const Identificador& id) {
    QByteArray texto =
        "CREATE TRIGGER %tabla_numera AFTER INSERT ON %tabla WHEN NEW.%contador IS NULL BEGIN "
        "UPDATE sqlite_sequence SET seq = 1 + max(seq, coalesce((SELECT max(%contador) FROM %tabla), 0)) "
        "WHERE name = '%tabla'; "
        "UPDATE sqlite_sequence SET seq = (SELECT min(n) FROM (SELECT seq AS n UNION ALL "
        "SELECT %publico + 1 FROM %tabla WHERE %publico >= seq) libre "
        "WHERE NOT EXISTS (SELECT 1 FROM %tabla otra WHERE otra.%publico = libre.n)) WHERE name = '%tabla'; "
        "UPDATE %tabla SET %contador = (SELECT seq FROM sqlite_sequence WHERE name = '%tabla') "
        "WHERE rowid = NEW.rowid; END";
    texto.replace("%tabla", id.tabla.toUtf8());
    texto.replace("%publico", id.publico.toUtf8());
    texto.replace("%contador", id.contador.toUtf8());
    return texto;
}

void crearNumeracion(ado::Connection& conexion) {
    crearContadores(conexion);
    for (const Identificador& id : identificadoresDelEsquema()) {
        const TableDef& tabla = *conexion.schema().table(id.tabla);
        const int lugar = tabla.indexOf(id.contador);
        if (tabla.columns[static_cast<std::size_t>(lugar)].type != Type::Counter)
            conexion.ExecutePlain(textoDeNumerador(id));
    }
}

void crearVistasPropias(ado::Connection& conexion, QStringList& avisos) {
    for (const Vista& vista : vistasDelEsquema()) {
        const bool creada = basic::resumeNext(
            [&] { conexion.Execute(u"CREATE VIEW %1 AS %2"_s.arg(vista.nombre, vista.consulta)); });
        if (!creada) avisos << u"La consulta %1 no se ha podido crear."_s.arg(vista.nombre);
    }
}

/// Indexes, counters and views are ours. Those of a former database come with the upgrade.
void completar(const QString& nueva, const CargaAccess& carga, QStringList& avisos, const Avance& avance) {
    ado::Connection conexion;
    conexion.OpenFile(nueva);
    conexion.ExecutePlain("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF");
    crearIndices(conexion, carga, avisos, avance);
    crearNumeracion(conexion);
    if (!carga.plan().anterior) crearVistasPropias(conexion, avisos);
    conexion.Close();
}

void comprobar(const QString& nueva, const Avance& avance) {
    ado::WholeCheck revision(nueva, ado::WholeCheck::Then::Sync);
    do {
        avance(u"Comprobando los datos traídos... %1 %"_s.arg(revision.percent()));
    } while (!revision.finished(kEntreAvances));
    if (!revision.isGood())
        throw errorAccess(u"La base de datos nueva no ha salido bien: "_s + revision.damage());
}

bool sonElMismo(const QString& a, const QString& b) {
    const Huella una = huellaDe(a);
    const Huella otra = huellaDe(b);
    if (una.bytes != otra.bytes) return false;
    if (una.nodo == otra.nodo) return true;
    QFile ficheroA(a);
    QFile ficheroB(b);
    if (!ficheroA.open(QIODevice::ReadOnly) || !ficheroB.open(QIODevice::ReadOnly)) return false;
    while (!ficheroA.atEnd()) {
        if (ficheroA.read(kTrozo) != ficheroB.read(kTrozo)) return false;
    }
    return ficheroB.atEnd();
}

void sincronizar(const QString& ruta) {
    const int fichero = ::open(QFile::encodeName(ruta).constData(), O_RDONLY | O_CLOEXEC);
    const bool hecho = fichero >= 0 && ::fsync(fichero) == 0;
    const int fallo = errno;
    if (fichero >= 0) ::close(fichero);
    if (!hecho) throw sys::fileError(ruta, fallo);
}

void cambiarNombre(const QString& de, const QString& a) {
    if (::rename(QFile::encodeName(de).constData(), QFile::encodeName(a).constData()) != 0)
        throw sys::fileError(a, errno);
}

/// The Access file gets its second name while it still has the first. Where the file system gives no file two
/// names, a copy serves.
void darOtroNombre(const QString& base, const QString& nombre) {
    if (::link(QFile::encodeName(base).constData(), QFile::encodeName(nombre).constData()) == 0) return;
    const QString copia = raizDe(base) + u".copia.TMP"_s;
    QFile::remove(copia);
    if (!QFile::copy(base, copia)) {
        QFile::remove(copia);
        throw errorAccess(u"No se puede guardar el archivo de Access con otro nombre."_s);
    }
    sincronizar(copia);
    cambiarNombre(copia, nombre);
}

/// Where the Access file is kept: no other file that is there is touched.
QString guardar(const QString& base) {
    for (int vez = 1;; ++vez) {
        const QString nombre = raizDe(base) + (vez == 1 ? u".access.mdb"_s : u".access.%1.mdb"_s.arg(vez));
        if (!QFileInfo::exists(nombre))
            darOtroNombre(base, nombre);
        else if (!sonElMismo(base, nombre))
            continue;
        sys::syncFolder(QFileInfo(base).path());
        return nombre;
    }
}

/// The logs of a database that lay here before the Access file must not be taken for the new one's.
void apartarDiarios(const QString& base) {
    for (const QString& diario : {base + u"-wal"_s, base + u"-journal"_s}) {
        if (QFileInfo::exists(diario)) cambiarNombre(diario, diario + u".anterior"_s);
    }
    QFile::remove(base + u"-shm"_s);
}

}  // namespace

bool esArchivoDeAccess(const QString& ruta) {
    QFile fichero(ruta);
    if (!fichero.open(QIODevice::ReadOnly)) return false;
    const QByteArray firma = fichero.read(kBytesDeCabecera).mid(kLugarDeFirma);
    return firma.startsWith("Standard Jet DB") || firma.startsWith("Standard ACE DB");
}

TraidaAccess traerAccess(const QString& base, const QString& lector, const Avance& avance, int silencio) {
    const QString nueva = rutaNueva(base);
    const QString carpeta = QFileInfo(base).path();
    if (!QFileInfo(carpeta).isWritable())
        throw errorAccess(u"En la carpeta «%1» no se puede escribir."_s.arg(carpeta));
    borrarRestos(nueva);
    try {
        const Huella antes = huellaDe(base);
        CargaAccess carga(nueva, avance);
        FlujoAccess flujo(carga);
        leerCon(lector, base, flujo, silencio);
        carga.acabar();
        TraidaAccess traida{carga.filas(),
                            static_cast<int>(flujo.tablas().size()),
                            carga.plan().anterior,
                            {},
                            carga.avisos()};
        completar(nueva, carga, traida.avisos, avance);
        comprobar(nueva, avance);
        if (huellaDe(base) != antes)
            throw errorAccess(u"El archivo de Access ha cambiado mientras se leía."_s);
        apartarDiarios(base);
        traida.guardado = guardar(base);
        cambiarNombre(nueva, base);
        sys::syncFolder(QFileInfo(base).path());
        return traida;
    } catch (...) {
        borrarRestos(nueva);
        throw;
    }
}

}  // namespace tarmel
