#include "platform/ado/Compaction.h"

#include <QFile>
#include <chrono>

#include "platform/ado/Errors.h"
#include "platform/ado/FileCheck.h"
#include "platform/ado/Sqlite.h"

namespace tarmel::ado {

using namespace Qt::StringLiterals;

namespace {

constexpr int kWait = 250;  // ms, for a lock that is just being released

void removeCopy(const QString& path) {
    for (const auto* part : {u"", u"-journal", u"-wal", u"-shm"})
        QFile::remove(path + QString::fromUtf16(part));
}

/// The file, held against every other program for as long as the handle lives.
detail::Handle holdAlone(const QString& path) {
    sqlite3* raw = nullptr;
    const int result = sqlite3_open_v2(path.toUtf8().constData(), &raw,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    detail::Handle db(raw);
    if (result != SQLITE_OK) throw detail::openError(detail::troubleOfFile(result));
    sqlite3_extended_result_codes(raw, 1);
    sqlite3_busy_timeout(raw, kWait);
    detail::run(raw, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT");
    return db;
}

void mustBeSound(const QString& path) {
    WholeCheck check(path, WholeCheck::Then::Sync);
    while (!check.finished(std::chrono::hours(1))) {
    }
    if (!check.isGood()) throw detail::openError(u"La copia compactada no es buena («%1»)."_s.arg(path));
}

}  // namespace

void compactDatabase(const QString& source, const QString& target) {
    removeCopy(target);
    try {
        const detail::Handle db = holdAlone(source);
        detail::run(db.get(), "VACUUM INTO " + detail::literal(target));
        QFile::setPermissions(target, QFile::permissions(source));
        mustBeSound(target);
    } catch (const basic::RuntimeError&) {
        removeCopy(target);
        throw;
    }
}

}  // namespace tarmel::ado
