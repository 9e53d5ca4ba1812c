#include "platform/system/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace tarmel::sys {

namespace {

namespace error = basic::error;

QString folderOf(const QString& path) {
    return QFileInfo(path).path();
}

[[noreturn]] void raise(const QString& path, int systemError) {
    throw fileError(path, systemError);
}

/// Wildcards: after a failure the last * takes one character more.
bool fits(QStringView name, QStringView pattern) {
    qsizetype n = 0;
    qsizetype p = 0;
    qsizetype star = -1;
    qsizetype starName = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            starName = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == u'?' || pattern[p].toCaseFolded() == name[n].toCaseFolded())) {
            ++p;
            ++n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++starName;
        } else {
            return false;
        }
    }
    return std::all_of(pattern.begin() + p, pattern.end(), [](QChar c) { return c == u'*'; });
}

bool isWriteProtected(const QString& path) {
    struct stat status {};
    const mode_t anyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 && (status.st_mode & anyWrite) == 0;
}

QString requireFile(const QString& path) {
    const std::optional<QString> found = actualPath(path);
    if (!found) raise(path, ENOENT);
    return *found;
}

void requireFolder(const QString& folder) {
    if (!isFolder(folder)) throw basic::RuntimeError(error::PathNotFound);
}

void removeFile(const QString& path) {
    if (isWriteProtected(path)) raise(path, EACCES);
    if (::unlink(QFile::encodeName(path).constData()) != 0) raise(path, errno);
}

/// QFile and QSaveFile know their own kinds of failure, of which only a full disk must be told from the
/// others; the system's code is still the one of the call that failed.
[[noreturn]] void raiseFileFailure(const QString& path, QFileDevice::FileError failure, int systemError) {
    if (failure == QFileDevice::ResourceError || systemError == ENOSPC) raise(path, ENOSPC);
    raise(path, systemError == 0 ? EACCES : systemError);
}

/// A device or a pipe: there is nothing to keep or to replace, and its name must not become a file's.
bool isNoPlainFile(const QString& path) {
    const QFileInfo there(path);
    return there.exists() && !there.isFile() && !there.isDir();
}

void writeInto(const QString& path, const QByteArray& bytes) {
    QFile device(path);
    errno = 0;
    const bool written =
        device.open(QIODevice::WriteOnly) && device.write(bytes) == bytes.size() && device.flush();
    if (!written) raiseFileFailure(path, device.error(), errno);
}

void save(const QString& path, const QByteArray& bytes, std::optional<QFile::Permissions> permissions) {
    requireFolder(folderOf(path));
    if (isNoPlainFile(path)) return writeInto(path, bytes);
    QSaveFile file(path);
    errno = 0;
    bool saved = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    if (saved && permissions) saved = file.setPermissions(*permissions);
    if (!saved || !file.commit()) raiseFileFailure(path, file.error(), errno);
    syncFolder(folderOf(path));
}

}  // namespace

basic::RuntimeError fileError(const QString& path, int systemError) {
    switch (systemError) {
        case ENOENT:
        case ENOTDIR:
            return basic::RuntimeError(isFolder(folderOf(path)) ? error::FileNotFound : error::PathNotFound);
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return basic::RuntimeError(error::DiskFull);
        case EEXIST:
            return basic::RuntimeError(error::FileExists);
        default:
            return basic::RuntimeError(error::FileAccess);
    }
}

bool exists(const QString& path) {
    return actualPath(path).has_value();
}

std::optional<QString> actualPath(const QString& path) {
    const QFileInfo exact(path);
    if (exact.isFile()) return path;
    const QString name = exact.fileName();
    if (name.isEmpty()) return std::nullopt;
    for (const QFileInfo& entry : QDir(exact.path()).entryInfoList(QDir::Files | QDir::Hidden, QDir::Name)) {
        if (entry.fileName().compare(name, Qt::CaseInsensitive) == 0) return entry.filePath();
    }
    return std::nullopt;
}

bool isFolder(const QString& path) {
    return QFileInfo(path).isDir();
}

QStringList find(const QString& folder, const QString& pattern) {
    // Every file fits *.*, those without a point in their name too.
    const QString wanted = pattern == QStringLiteral("*.*") ? QStringLiteral("*") : pattern;
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
    names.removeIf([&wanted](const QString& name) { return !fits(name, wanted); });
    std::ranges::sort(names, [](const QString& a, const QString& b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order == 0 ? a < b : order < 0;
    });
    return names;
}

void remove(const QString& path) {
    removeFile(requireFile(path));
}

void removeMatching(const QString& folder, const QString& pattern) {
    requireFolder(folder);
    const QStringList names = find(folder, pattern);
    if (names.isEmpty()) throw basic::RuntimeError(error::FileNotFound);
    for (const QString& name : names)
        removeFile(QDir(folder).filePath(name));
}

void rename(const QString& from, const QString& to) {
    const QString source = requireFile(from);
    requireFolder(folderOf(to));
    const std::optional<QString> taken = actualPath(to);
    const bool onlyCaseChanges = taken && QFileInfo(*taken) == QFileInfo(source);
    if ((taken && !onlyCaseChanges) || isFolder(to)) raise(to, EEXIST);
    if (::rename(QFile::encodeName(source).constData(), QFile::encodeName(to).constData()) != 0)
        raise(to, errno);
}

void copy(const QString& from, const QString& to) {
    QFile source(requireFile(from));
    errno = 0;
    if (!source.open(QIODevice::ReadOnly)) raiseFileFailure(from, source.error(), errno);
    const QByteArray bytes = source.readAll();
    if (source.error() != QFileDevice::NoError) raiseFileFailure(from, source.error(), errno);
    save(actualPath(to).value_or(to), bytes, source.permissions());
}

void writeWhole(const QString& path, const QByteArray& bytes) {
    save(actualPath(path).value_or(path), bytes, std::nullopt);
}

void syncFolder(const QString& folder) {
    const int handle = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0) return;
    ::fsync(handle);
    ::close(handle);
}

}  // namespace tarmel::sys
