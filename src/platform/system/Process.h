#pragma once

#include <sys/types.h>

#include <QString>
#include <QStringList>
#include <optional>

namespace tarmel::sys {

/// What a program may use up before the system ends it by a signal; 0 is no bound.
struct Bounds {
    qint64 fileBytes = 0;  ///< the size of each file that it writes
    int cpuSeconds = 0;
};

/// What a program's exit code is counted from when a signal ended it.
inline constexpr int kSignalBase = 128;

/// A program that runs beside this one, without input and unseen. It goes on when the object dies. Needs no
/// event loop.
class Process {
 public:
    /// A program's bare name is looked for along the system's path. RuntimeError 53 when there is no such
    /// program, 76 without the folder, 75 when it cannot be run.
    [[nodiscard]] static Process start(const QString& program, const QStringList& arguments,
                                       const QString& workingFolder, const Bounds& bounds = {});
    ~Process();
    Process(Process&& other) noexcept;
    Process& operator=(Process&&) = delete;

    [[nodiscard]] bool isRunning();
    /// True when the program has ended within so many milliseconds.
    bool wait(int milliseconds);
    /// Nothing while it runs; kSignalBase and the signal's number when one ended it.
    [[nodiscard]] std::optional<int> exitCode();

 private:
    explicit Process(pid_t id) : id_(id) {}
    pid_t id_;  // 0: nothing left to collect
    std::optional<int> exitCode_;
};

}  // namespace tarmel::sys
