#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <functional>

namespace tarmel::desktop {

/// Calls a piece of work in the pauses of the user's: never within a moment of a key or a mouse button, so
/// that typing does not wait for it, and not while `busy` says that a command runs.
class IdleWork final : public QObject {
 public:
    /// `work` says whether more is left to be done soon.
    IdleWork(std::function<bool()> work, std::function<bool()> busy);

    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void look();

    std::function<bool()> work_;
    std::function<bool()> busy_;
    QElapsedTimer sinceInput_;
    QTimer timer_;
};

}  // namespace tarmel::desktop
