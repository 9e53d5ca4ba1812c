#include "support/DiscoAveriado.h"

#include <sqlite3.h>

#include <array>
#include <cstddef>

namespace tarmel {

namespace {

using Averia = DiscoAveriado::Averia;

struct Estado {
    sqlite3_vfs vfs{};            // ours
    sqlite3_vfs* real = nullptr;  // the system's
    std::array<int, 2> cuenta{};  // operations by the trouble that can hit them
    Averia averia = Averia::Lleno;
    int momento = 0;  // 0: the disk is whole
    bool soloUna = false;
    bool haFallado = false;
};

Estado estado;

int& cuenta(Averia averia) {
    return estado.cuenta[averia == Averia::Lleno ? 0 : 1];
}

/// Counts an operation and says whether it fails; `necesitaSitio`: a full disk hits it too.
bool falla(bool necesitaSitio) {
    if (necesitaSitio) ++cuenta(Averia::Lleno);
    ++cuenta(Averia::Error);
    if (estado.momento == 0 || (estado.averia == Averia::Lleno && !necesitaSitio)) return false;
    const int n = cuenta(estado.averia);
    if (estado.soloUna ? n != estado.momento : n < estado.momento) return false;
    estado.haFallado = true;
    return true;
}

int codigo(int delDispositivo) {
    return estado.averia == Averia::Lleno ? SQLITE_FULL : delDispositivo;
}

/// A file of ours: the system's own stands right behind it in memory.
struct Fichero {
    sqlite3_file base;
};

constexpr std::size_t kAlineacion = alignof(std::max_align_t);
constexpr std::size_t kDetras = (sizeof(Fichero) + kAlineacion - 1) / kAlineacion * kAlineacion;

sqlite3_file* real(sqlite3_file* fichero) {
    return reinterpret_cast<sqlite3_file*>(reinterpret_cast<std::byte*>(fichero) + kDetras);
}

int cerrar(sqlite3_file* f) {
    return real(f)->pMethods ? real(f)->pMethods->xClose(real(f)) : SQLITE_OK;
}
int leer(sqlite3_file* f, void* donde, int cuanto, sqlite3_int64 desde) {
    return real(f)->pMethods->xRead(real(f), donde, cuanto, desde);
}
int escribir(sqlite3_file* f, const void* que, int cuanto, sqlite3_int64 desde) {
    if (falla(true)) return codigo(SQLITE_IOERR_WRITE);
    return real(f)->pMethods->xWrite(real(f), que, cuanto, desde);
}
int cortar(sqlite3_file* f, sqlite3_int64 tamaño) {
    if (falla(false)) return SQLITE_IOERR_TRUNCATE;
    return real(f)->pMethods->xTruncate(real(f), tamaño);
}
int sincronizar(sqlite3_file* f, int modo) {
    if (falla(false)) return SQLITE_IOERR_FSYNC;
    return real(f)->pMethods->xSync(real(f), modo);
}
int tamaño(sqlite3_file* f, sqlite3_int64* bytes) {
    return real(f)->pMethods->xFileSize(real(f), bytes);
}
int bloquear(sqlite3_file* f, int nivel) {
    return real(f)->pMethods->xLock(real(f), nivel);
}
int desbloquear(sqlite3_file* f, int nivel) {
    return real(f)->pMethods->xUnlock(real(f), nivel);
}
int reservado(sqlite3_file* f, int* respuesta) {
    return real(f)->pMethods->xCheckReservedLock(real(f), respuesta);
}
int control(sqlite3_file* f, int orden, void* dato) {
    return real(f)->pMethods->xFileControl(real(f), orden, dato);
}
int sector(sqlite3_file* f) {
    return real(f)->pMethods->xSectorSize(real(f));
}
int cualidades(sqlite3_file* f) {
    return real(f)->pMethods->xDeviceCharacteristics(real(f));
}
int memoria(sqlite3_file* f, int trozo, int bytes, int alargar, void volatile** donde) {
    if (alargar != 0 && falla(true)) return codigo(SQLITE_IOERR_SHMSIZE);
    return real(f)->pMethods->xShmMap(real(f), trozo, bytes, alargar, donde);
}
int bloquearMemoria(sqlite3_file* f, int desde, int cuantos, int modo) {
    return real(f)->pMethods->xShmLock(real(f), desde, cuantos, modo);
}
void barrera(sqlite3_file* f) {
    real(f)->pMethods->xShmBarrier(real(f));
}
int soltarMemoria(sqlite3_file* f, int borrar) {
    return real(f)->pMethods->xShmUnmap(real(f), borrar);
}

sqlite3_io_methods operacionesDeFichero() {
    sqlite3_io_methods metodos{};
    metodos.iVersion = 2;  // with the shared memory of the log; without files mapped into memory
    metodos.xClose = cerrar;
    metodos.xRead = leer;
    metodos.xWrite = escribir;
    metodos.xTruncate = cortar;
    metodos.xSync = sincronizar;
    metodos.xFileSize = tamaño;
    metodos.xLock = bloquear;
    metodos.xUnlock = desbloquear;
    metodos.xCheckReservedLock = reservado;
    metodos.xFileControl = control;
    metodos.xSectorSize = sector;
    metodos.xDeviceCharacteristics = cualidades;
    metodos.xShmMap = memoria;
    metodos.xShmLock = bloquearMemoria;
    metodos.xShmBarrier = barrera;
    metodos.xShmUnmap = soltarMemoria;
    return metodos;
}

int abrir(sqlite3_vfs*, const char* nombre, sqlite3_file* f, int modo, int* modoDado) {
    static const sqlite3_io_methods metodos = operacionesDeFichero();
    f->pMethods = nullptr;
    real(f)->pMethods = nullptr;
    const int resultado = estado.real->xOpen(estado.real, nombre, real(f), modo, modoDado);
    if (real(f)->pMethods) f->pMethods = &metodos;
    return resultado;
}
int quitar(sqlite3_vfs*, const char* nombre, int sincronizarCarpeta) {
    if (falla(false)) return SQLITE_IOERR_DELETE;
    return estado.real->xDelete(estado.real, nombre, sincronizarCarpeta);
}

}  // namespace

DiscoAveriado::DiscoAveriado() {
    estado = {};
    estado.real = sqlite3_vfs_find(nullptr);
    estado.vfs = *estado.real;
    estado.vfs.zName = "disco_averiado";
    estado.vfs.pNext = nullptr;
    estado.vfs.szOsFile = static_cast<int>(kDetras) + estado.real->szOsFile;
    estado.vfs.xOpen = abrir;
    estado.vfs.xDelete = quitar;
    sqlite3_vfs_register(&estado.vfs, 1);
}

DiscoAveriado::~DiscoAveriado() {
    sqlite3_vfs_unregister(&estado.vfs);
    sqlite3_vfs_register(estado.real, 1);
}

void DiscoAveriado::averiar(Averia averia, int n, bool soloUna) {
    reparar();
    estado.averia = averia;
    estado.momento = n;
    estado.soloUna = soloUna;
}

void DiscoAveriado::reparar() {
    estado.cuenta = {};
    estado.momento = 0;
    estado.haFallado = false;
}

int DiscoAveriado::operaciones(Averia averia) const {
    return cuenta(averia);
}

bool DiscoAveriado::haFallado() const {
    return estado.haFallado;
}

}  // namespace tarmel
