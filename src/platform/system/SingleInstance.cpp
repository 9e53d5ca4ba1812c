#include "platform/system/SingleInstance.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cerrno>
#include <cstddef>

namespace tarmel::sys {

namespace {

/// A name that only one socket of the machine can bear. It lies in no folder, so that no user's rights, no
/// temporary folder and no left-over file play a part.
QByteArray nameFor(const QString& executable) {
    const QString canonical = QFileInfo(executable).canonicalFilePath();
    const QByteArray path = QFile::encodeName(canonical.isEmpty() ? executable : canonical);
    return '\0' + QByteArrayLiteral("tarmel-") +
           QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex();
}

}  // namespace

SingleInstance::SingleInstance(const QString& executable)
    : socket_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    if (socket_ < 0) return;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = nameFor(executable);
    static_assert(sizeof address.sun_path > 72);
    std::ranges::copy(name, address.sun_path);
    const auto size =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<size_t>(name.size()));
    const int bound = ::bind(socket_, reinterpret_cast<const sockaddr*>(&address), size);
    anotherIsRunning_ = bound != 0 && errno == EADDRINUSE;
}

SingleInstance::~SingleInstance() {
    if (socket_ >= 0) ::close(socket_);
}

QString SingleInstance::ownExecutable() {
    return QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
}

}  // namespace tarmel::sys
