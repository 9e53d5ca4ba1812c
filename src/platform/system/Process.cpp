#include "platform/system/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>
#include <utility>
#include <vector>

#include "platform/system/Files.h"

namespace tarmel::sys {

namespace {

/// What the new program finds: its folder, and nothing to read from or to write to.
class Surroundings {
 public:
    explicit Surroundings(const QString& folder) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_addchdir_np(&actions_, QFile::encodeName(folder).constData());
        posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    }
    ~Surroundings() { posix_spawn_file_actions_destroy(&actions_); }
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;

    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }

 private:
    posix_spawn_file_actions_t actions_{};
};

/// The program has just begun by then: it cannot have used up anything worth the name.
void bound(pid_t id, __rlimit_resource what, qint64 most) {
    if (most <= 0) return;
    const rlimit limit{static_cast<rlim_t>(most), static_cast<rlim_t>(most)};
    ::prlimit(id, what, &limit, nullptr);
}

constexpr int pollMilliseconds = 5;

}  // namespace

Process Process::start(const QString& program, const QStringList& arguments, const QString& workingFolder,
                       const Bounds& bounds) {
    if (!isFolder(workingFolder)) throw basic::RuntimeError(basic::error::PathNotFound);
    std::vector<QByteArray> words{QFile::encodeName(program)};
    for (const QString& argument : arguments)
        words.push_back(QFile::encodeName(argument));
    std::vector<char*> pointers;
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    pid_t id = 0;
    const int failure = posix_spawnp(&id, words[0].constData(), Surroundings(workingFolder).actions(),
                                     nullptr, pointers.data(), environ);
    if (failure != 0) throw fileError(program, failure);
    bound(id, RLIMIT_FSIZE, bounds.fileBytes);
    bound(id, RLIMIT_CPU, bounds.cpuSeconds);
    return Process(id);
}

Process::Process(Process&& other) noexcept : id_(std::exchange(other.id_, 0)), exitCode_(other.exitCode_) {}

Process::~Process() {
    (void)isRunning();
}

bool Process::isRunning() {
    if (id_ == 0) return false;
    int status = 0;
    const pid_t ended = ::waitpid(id_, &status, WNOHANG);
    if (ended == 0) return true;
    id_ = 0;
    if (ended > 0) exitCode_ = WIFSIGNALED(status) ? kSignalBase + WTERMSIG(status) : WEXITSTATUS(status);
    return false;
}

bool Process::wait(int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    while (isRunning()) {
        if (deadline.hasExpired()) return false;
        QThread::msleep(pollMilliseconds);
    }
    return true;
}

std::optional<int> Process::exitCode() {
    (void)isRunning();
    return exitCode_;
}

}  // namespace tarmel::sys
