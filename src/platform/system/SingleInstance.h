#pragma once

#include <QString>

namespace tarmel::sys {

/// Tells whether another copy of the same executable is running on this machine, and is seen by later copies
/// for as long as it lives. Held by the kernel: a copy that was killed leaves nothing behind.
class SingleInstance {
 public:
    /// Copies are the same when their executables' paths, with links resolved, are.
    explicit SingleInstance(const QString& executable = ownExecutable());
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    [[nodiscard]] bool anotherIsRunning() const { return anotherIsRunning_; }

    [[nodiscard]] static QString ownExecutable();

 private:
    int socket_ = -1;
    bool anotherIsRunning_ = false;
};

}  // namespace tarmel::sys
