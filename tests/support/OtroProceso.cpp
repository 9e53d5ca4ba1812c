#include "support/OtroProceso.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDirIterator>
#include <QFile>
#include <csignal>

namespace tarmel {

namespace {

constexpr uid_t kNadie = 65534;  // the user that owns nothing

/// Takes orders of one message each: "file\0statements", or nothing to close what is open.
[[noreturn]] void obedecer(int ordenes, int respuestas) {
    sqlite3* db = nullptr;
    char orden[4096];
    for (ssize_t leidos = 0; (leidos = ::read(ordenes, orden, sizeof orden)) > 0;) {
        sqlite3_close(db);
        db = nullptr;
        const QByteArray todo(orden, static_cast<qsizetype>(leidos));
        const QByteArrayList partes = todo.split('\0');
        const bool hecho = partes.size() < 2 ||
                           (sqlite3_open(partes[0].constData(), &db) == SQLITE_OK &&
                            sqlite3_exec(db, partes[1].constData(), nullptr, nullptr, nullptr) == SQLITE_OK);
        if (::write(respuestas, hecho ? "1" : "0", 1) != 1) break;
    }
    ::_exit(0);
}

void darCarpeta(const QString& carpeta) {
    const auto dar = [](const QString& ruta) {
        EXPECT_EQ(::lchown(QFile::encodeName(ruta).constData(), kNadie, kNadie), 0) << ruta.toStdString();
    };
    dar(carpeta);
    for (QDirIterator it(carpeta, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
         it.hasNext();)
        dar(it.next());
}

}  // namespace

OtroPrograma::OtroPrograma() {
    int ida[2];
    int vuelta[2];
    if (::pipe2(ida, O_CLOEXEC) != 0 || ::pipe2(vuelta, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipe";
        return;
    }
    proceso_ = ::fork();
    if (proceso_ == 0) {
        ::close(ida[1]);
        obedecer(ida[0], vuelta[1]);
    }
    ::close(ida[0]);
    ::close(vuelta[1]);
    ordenes_ = ida[1];
    respuestas_ = vuelta[0];
}

OtroPrograma::~OtroPrograma() {
    ::close(ordenes_);
    ::close(respuestas_);
    if (proceso_ <= 0) return;
    ::kill(proceso_, SIGKILL);
    ::waitpid(proceso_, nullptr, 0);
}

void OtroPrograma::abrir(const QString& base, const QByteArray& sentencias) {
    ordenar(base.toUtf8() + '\0' + sentencias);
}

void OtroPrograma::cerrar() {
    ordenar("-");
}

void OtroPrograma::ordenar(const QByteArray& orden) {
    char respuesta = 0;
    EXPECT_EQ(::write(ordenes_, orden.constData(), static_cast<size_t>(orden.size())), orden.size());
    EXPECT_EQ(::read(respuestas_, &respuesta, 1), 1);
    EXPECT_EQ(respuesta, '1') << "the other program could not do what it was told";
}

Corrida correrComoUsuario(const QString& carpeta, const std::function<void(const Avisar&)>& accion) {
    if (::geteuid() == 0) darCarpeta(carpeta);
    return correr([&](const Avisar& avisar) {
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setgid(kNadie) != 0 || ::setuid(kNadie) != 0))
            ::_exit(1);
        accion(avisar);
    });
}

}  // namespace tarmel
