#pragma once

#include <sys/types.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tarmel::sys {

/// A program that is started to be listened to, without input. It does not outlive the object.
class ProgramOutput {
 public:
    /// RuntimeError 53 when there is no such program, 75 when it cannot be run.
    ProgramOutput(const QString& program, const QStringList& arguments);
    ~ProgramOutput();
    ProgramOutput(const ProgramOutput&) = delete;
    ProgramOutput& operator=(const ProgramOutput&) = delete;

    enum class Got { Bytes, End, Nothing };
    /// Waits for what it writes next, for so long at most; the piece takes the place of what `bytes` held.
    [[nodiscard]] Got read(QByteArray& bytes, int milliseconds);
    /// Behind the end of its output: waits until it is gone. True when it ended by itself with code 0.
    [[nodiscard]] bool endedWell();

 private:
    pid_t id_ = 0;  // 0: nothing left to collect
    int output_ = -1;
};

}  // namespace tarmel::sys
