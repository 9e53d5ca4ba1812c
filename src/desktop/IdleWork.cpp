#include "desktop/IdleWork.h"

#include <QCoreApplication>
#include <QEvent>

namespace tarmel::desktop {

namespace {
// Milliseconds.
constexpr int kFirstLook = 3000;
constexpr int kPause = 700;  // without input
constexpr int kSoon = 5;
constexpr int kLater = 20000;
}  // namespace

IdleWork::IdleWork(std::function<bool()> work, std::function<bool()> busy)
    : work_(std::move(work)), busy_(std::move(busy)) {
    sinceInput_.start();
    timer_.setSingleShot(true);
    timer_.callOnTimeout([this] { look(); });
    timer_.start(kFirstLook);
    QCoreApplication::instance()->installEventFilter(this);
}

bool IdleWork::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::InputMethod:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::Wheel:
            sinceInput_.start();
            break;
        default:
            break;
    }
    return QObject::eventFilter(watched, event);
}

void IdleWork::look() {
    const qint64 rest = kPause - sinceInput_.elapsed();
    if (rest > 0) return timer_.start(static_cast<int>(rest));
    if (busy_()) return timer_.start(kPause);
    timer_.start(work_() ? kSoon : kLater);
}

}  // namespace tarmel::desktop
