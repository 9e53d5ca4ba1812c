#include "platform/ado/Opening.h"

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "platform/ado/Errors.h"

namespace tarmel::ado::detail {

using namespace Qt::StringLiterals;

namespace {

constexpr int kOpeningWait = 250;     // ms, for a lock that is just being released
constexpr int kStatementWait = 2000;  // ms

/// Whether the mode allows anybody to write. An administrator may write in spite of it, but a file that was
/// set to read-only is meant to stay as it is.
bool isWritable(const QString& path) {
    const QByteArray name = QFile::encodeName(path);
    struct stat status {};
    if (::stat(name.constData(), &status) != 0) return false;
    return (status.st_mode & 0222) != 0 && ::access(name.constData(), W_OK) == 0;
}

/// The size in the header counts when it was written together with the last change.
bool isCutShort(const QByteArray& header, qint64 size) {
    const auto number = [&](int place) { return qFromBigEndian<quint32>(header.constData() + place); };
    const quint16 stated = qFromBigEndian<quint16>(header.constData() + 16);
    const qint64 pageSize = stated == 1 ? 65536 : stated;
    if (pageSize < 512 || size < pageSize) return true;
    const bool sizeIsValid = number(24) == number(92) && number(28) > 0;
    return sizeIsValid && size < pageSize * number(28);
}

void checkFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) throw openError(u"No se ha encontrado el archivo «%1»."_s.arg(path));
    if (!info.isFile()) throw openError(u"«%1» no es un archivo."_s.arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw openError(u"No hay permiso para leer el archivo «%1»."_s.arg(path));
    }
    // With a log beside it the file may lag behind what its header says; the log then completes it.
    const bool hasLog = QFileInfo(path + u"-wal"_s).size() > 0;
    const QString trouble = troubleOfHeader(path, file.read(kHeaderSize), file.size(), hasLog);
    if (!trouble.isEmpty()) throw openError(trouble);
    if (!isWritable(path)) throw openError(u"El archivo «%1» es de sólo lectura."_s.arg(path));
    if (!isWritable(info.absolutePath())) {
        throw openError(u"La carpeta «%1» es de sólo lectura."_s.arg(info.absolutePath()));
    }
}

[[noreturn]] void failOpening(sqlite3* db, const QString& path) {
    const QString trouble = troubleOfFile(sqlite3_extended_errcode(db));
    const QString words = trouble.isEmpty() ? QString::fromUtf8(sqlite3_errmsg(db)) : trouble;
    throw openError(words + u" («%1»)"_s.arg(path));
}

void must(sqlite3* db, const QString& path, const char* text) {
    if (sqlite3_exec(db, text, nullptr, nullptr, nullptr) != SQLITE_OK) failOpening(db, path);
}

}  // namespace

QString troubleOfHeader(const QString& path, const QByteArray& header, qint64 size, bool hasLog) {
    if (!header.startsWith(QByteArray("SQLite format 3\0", 16)))
        return u"El archivo «%1» no es una base de datos de este programa."_s.arg(path);
    if (header.size() < kHeaderSize || (!hasLog && isCutShort(header, size)))
        return u"El archivo de la base de datos «%1» está incompleto."_s.arg(path);
    return {};
}

Handle openDatabase(const QString& path, bool create) {
    const bool inMemory = path == u":memory:";
    const bool makes = create && !inMemory && !QFileInfo::exists(path);
    if (!inMemory && !makes) checkFile(path);
    sqlite3* raw = nullptr;
    const int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (makes || inMemory ? SQLITE_OPEN_CREATE : 0);
    const int result = sqlite3_open_v2(path.toUtf8().constData(), &raw, flags, nullptr);
    Handle db(raw);
    if (result != SQLITE_OK) failOpening(raw, path);
    sqlite3_extended_result_codes(raw, 1);
    if (!inMemory) {
        sqlite3_busy_timeout(raw, kOpeningWait);
        // Until the file has passed, closing must not write a log back into it either.
        sqlite3_db_config(raw, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        must(raw, path, "SELECT COUNT(*) FROM sqlite_master");
        must(raw, path, "BEGIN IMMEDIATE; ROLLBACK");
        must(raw, path, "PRAGMA journal_mode=WAL");
        must(raw, path, "PRAGMA synchronous=FULL");
        sqlite3_db_config(raw, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
        sqlite3_busy_timeout(raw, kStatementWait);
    }
    must(raw, path, "PRAGMA foreign_keys=ON; PRAGMA temp_store=MEMORY; PRAGMA cache_size=-16000");
    return db;
}

}  // namespace tarmel::ado::detail
