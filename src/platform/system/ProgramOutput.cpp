#include "platform/system/ProgramOutput.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QFile>
#include <cerrno>
#include <csignal>
#include <vector>

#include "platform/system/Files.h"

namespace tarmel::sys {

namespace {

constexpr qsizetype pieceBytes = 1 << 16;

}  // namespace

ProgramOutput::ProgramOutput(const QString& program, const QStringList& arguments) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) throw fileError(program, errno);
    std::vector<QByteArray> words{QFile::encodeName(program)};
    for (const QString& argument : arguments)
        words.push_back(QFile::encodeName(argument));
    std::vector<char*> pointers;
    for (QByteArray& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int failure =
        ::posix_spawn(&id_, words[0].constData(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);
    output_ = ends[0];
    if (failure == 0) return;
    ::close(output_);
    throw fileError(program, failure);
}

ProgramOutput::~ProgramOutput() {
    ::close(output_);
    if (id_ == 0) return;
    ::kill(id_, SIGKILL);
    while (::waitpid(id_, nullptr, 0) < 0 && errno == EINTR) {
    }
}

ProgramOutput::Got ProgramOutput::read(QByteArray& bytes, int milliseconds) {
    const QDeadlineTimer deadline(milliseconds);
    for (;;) {
        pollfd waiting{output_, POLLIN, 0};
        const int ready = ::poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
        if (ready == 0) return Got::Nothing;
        if (ready < 0 && errno == EINTR) continue;
        bytes.resize(pieceBytes);
        const ssize_t count = ::read(output_, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (count < 0 && errno == EINTR) continue;
        bytes.resize(count > 0 ? count : 0);
        return count > 0 ? Got::Bytes : Got::End;
    }
}

bool ProgramOutput::endedWell() {
    int status = 0;
    while (id_ != 0 && ::waitpid(id_, &status, 0) < 0) {
        if (errno != EINTR) return false;
    }
    id_ = 0;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace tarmel::sys
