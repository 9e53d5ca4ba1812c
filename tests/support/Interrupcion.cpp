#include "support/Interrupcion.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <set>
#include <string>

namespace tarmel {

namespace {

constexpr int kSinPermiso = 77;
constexpr int kExcepcion = 4;
constexpr int kParadaDeLlamada = SIGTRAP | 0x80;
constexpr int kTuberia = 1 << 20;  // room for what is told while nobody reads

/// Calls that change the file of their first argument.
bool escribeEnFichero(long llamada) {
    static const std::set<long> llamadas{SYS_write, SYS_pwrite64,  SYS_writev,    SYS_pwritev, SYS_ftruncate,
                                         SYS_fsync, SYS_fdatasync, SYS_fallocate, SYS_sendfile};
    return llamadas.contains(llamada);
}

/// Calls that change names.
bool cambiaNombres(long llamada) {
    static const std::set<long> llamadas{
        SYS_renameat, SYS_renameat2, SYS_unlinkat, SYS_linkat, SYS_mkdirat, SYS_truncate, SYS_copy_file_range,
#ifdef SYS_rename
        SYS_rename,   SYS_unlink,    SYS_link,     SYS_mkdir,  SYS_rmdir
#endif
    };
    return llamadas.contains(llamada);
}

bool creaFichero(const __ptrace_syscall_info& info) {
#ifdef SYS_open
    if (info.entry.nr == SYS_open) return (info.entry.args[1] & (O_CREAT | O_TRUNC)) != 0;
#endif
    return info.entry.nr == SYS_openat && (info.entry.args[2] & (O_CREAT | O_TRUNC)) != 0;
}

[[noreturn]] void serObservado(const std::function<void(const Avisar&)>& accion, int aviso) {
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(kSinPermiso);
    ::raise(SIGSTOP);
    try {
        accion([aviso](const QByteArray& linea) {
            const QByteArray bytes = linea + '\n';
            if (::write(aviso, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
                ::_exit(kExcepcion);
        });
    } catch (...) {
        ::_exit(kExcepcion);
    }
    ::_exit(0);
}

/// Follows a process from call to call.
class Observador {
 public:
    Observador(pid_t hijo, int aviso, int matarEn) : hijo_(hijo), aviso_(aviso), matarEn_(matarEn) {}

    void seguir(Corrida& corrida) {
        int estado = 0;
        ::waitpid(hijo_, &estado, 0);
        if (WIFSTOPPED(estado))
            ::ptrace(PTRACE_SETOPTIONS, hijo_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
        long señal = 0;
        while (WIFSTOPPED(estado)) {
            ::ptrace(PTRACE_SYSCALL, hijo_, nullptr, señal);
            ::waitpid(hijo_, &estado, 0);
            señal = 0;
            if (!WIFSTOPPED(estado)) break;
            if (WSTOPSIG(estado) != kParadaDeLlamada) {
                señal = WSTOPSIG(estado);
            } else if (cambiaAlgo() && ++corrida.escrituras == matarEn_) {
                ::kill(hijo_, SIGKILL);
                ::waitpid(hijo_, &estado, 0);
            }
        }
        corrida.muerto = WIFSIGNALED(estado) && WTERMSIG(estado) == SIGKILL;
        corrida.codigo = WIFEXITED(estado) ? WEXITSTATUS(estado) : 0;
    }

 private:
    bool cambiaAlgo() {
        __ptrace_syscall_info info{};
        if (::ptrace(PTRACE_GET_SYSCALL_INFO, hijo_, sizeof info, &info) <= 0) return false;
        if (info.op != PTRACE_SYSCALL_INFO_ENTRY) return false;
        const auto llamada = static_cast<long>(info.entry.nr);
        if (!escribeEnFichero(llamada)) return empezado_ && (cambiaNombres(llamada) || creaFichero(info));
        const auto fichero = static_cast<int>(info.entry.args[0]);
        if (fichero == aviso_) empezado_ = true;
        return empezado_ && fichero > STDERR_FILENO && esDelDisco(fichero);
    }
    /// Pipes, sockets and wake-ups between threads come and go as time has it.
    [[nodiscard]] bool esDelDisco(int fichero) const {
        const std::string abierto = "/proc/" + std::to_string(hijo_) + "/fd/" + std::to_string(fichero);
        struct stat datos {};
        return ::stat(abierto.c_str(), &datos) == 0 && (S_ISREG(datos.st_mode) || S_ISDIR(datos.st_mode));
    }

    pid_t hijo_;
    int aviso_;
    int matarEn_;
    bool empezado_ = false;
};

}  // namespace

Corrida correr(const std::function<void(const Avisar&)>& accion, int matarEn) {
    Corrida corrida;
    int tubo[2];
    if (::pipe2(tubo, O_CLOEXEC) != 0) {
        ADD_FAILURE() << "no pipe";
        return corrida;
    }
    ::fcntl(tubo[1], F_SETPIPE_SZ, kTuberia);
    std::fflush(nullptr);
    const pid_t hijo = ::fork();
    if (hijo == 0) serObservado(accion, tubo[1]);
    Observador(hijo, tubo[1], matarEn).seguir(corrida);
    ::close(tubo[1]);
    QByteArray recibido;
    char trozo[4096];
    for (ssize_t leidos = 0; (leidos = ::read(tubo[0], trozo, sizeof trozo)) > 0;)
        recibido.append(trozo, leidos);
    ::close(tubo[0]);
    if (!recibido.isEmpty()) corrida.avisos = recibido.chopped(1).split('\n');
    EXPECT_NE(corrida.codigo, kSinPermiso) << "this system does not let a process be watched";
    return corrida;
}

int muertes(int porDefecto) {
    const int pedidas = qEnvironmentVariableIntValue("TARMEL_MUERTES");
    return pedidas > 0 ? pedidas : porDefecto;
}

std::vector<int> momentos(int escrituras, int cuantos, int todosLosUltimos) {
    const int n = std::min(escrituras, cuantos);
    std::set<int> todos;
    for (int i = 0; i < n; ++i)
        todos.insert(n == 1 ? 1 : 1 + static_cast<int>(qint64{i} * (escrituras - 1) / (n - 1)));
    for (int i = std::max(1, escrituras - todosLosUltimos + 1); i <= escrituras; ++i)
        todos.insert(i);
    return {todos.begin(), todos.end()};
}

void repartirMuertes(const char* etapa, int escrituras, const std::function<void(int momento)>& ronda,
                     int todosLosUltimos) {
    const std::vector<int> todos = momentos(escrituras, muertes(), todosLosUltimos);
    std::printf("%s: %zu deaths over %d changes of files\n", etapa, todos.size(), escrituras);
    for (const int momento : todos) {
        SCOPED_TRACE(testing::Message() << etapa << " killed at change " << momento << " of " << escrituras);
        ronda(momento);
        if (testing::Test::HasFatalFailure()) return;
    }
}

}  // namespace tarmel
