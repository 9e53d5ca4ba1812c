#include "platform/ado/FileCheck.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrl>
#include <algorithm>
#include <array>
#include <optional>

#include "platform/ado/Opening.h"
#include "platform/ado/Sqlite.h"

namespace tarmel::ado {

using detail::columnText;
using detail::Handle;
using detail::Statement;
using namespace Qt::StringLiterals;

namespace {

constexpr int kWait = 250;  // ms, for a lock that is just being released
const QString kDamaged = u"El archivo de la base de datos está dañado."_s;
const QString kUnreadable = u"El disco no puede leer el archivo de la base de datos."_s;

QString logOf(const QString& path) {
    return path + u"-wal"_s;
}
QString indexOf(const QString& path) {
    return path + u"-shm"_s;
}
QString journalOf(const QString& path) {
    return path + u"-journal"_s;
}

struct Header {
    QByteArray bytes;
    qint64 size = 0;
    [[nodiscard]] bool worksWithLog() const { return bytes.size() > 18 && bytes[18] == 2; }
};

std::optional<Header> headerOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    return Header{file.read(detail::kHeaderSize), file.size()};
}

/// A result that speaks of the file's content, as words; empty for every other one.
QString damageIn(int result) {
    switch (result) {
        case SQLITE_IOERR_READ:
        case SQLITE_IOERR_SHORT_READ:
        case SQLITE_IOERR_CORRUPTFS:
            return kUnreadable;
        default:
            break;
    }
    const int kind = result & 0xff;
    return kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB ? kDamaged : QString();
}

/// A file open for reading in the way that its neighbours ask for; none of them is written to.
class OpenFile {
 public:
    explicit OpenFile(const QString& path) {
        const std::optional<Header> header = headerOf(path);
        if (!header) return;
        if (QFileInfo(journalOf(path)).size() > 0) {
            openCopy(path);
        } else if (QFileInfo(logOf(path)).size() > 0) {
            // Alone with the log: its index is then kept in memory, and it is neither applied nor removed.
            open(path, SQLITE_OPEN_READWRITE, "mode=rw");
        } else if (header->worksWithLog()) {
            // Nobody has such a file open, or there would be a log; taking a lock would make one.
            open(path, SQLITE_OPEN_READONLY, "immutable=1");
        } else {
            open(path, SQLITE_OPEN_READONLY, "mode=ro");
        }
    }
    [[nodiscard]] sqlite3* handle() const { return db_.get(); }

 private:
    void open(const QString& path, int flags, const QByteArray& how) {
        const QByteArray address = "file:" + QUrl::toPercentEncoding(path, "/") + '?' + how;
        sqlite3* raw = nullptr;
        const int result =
            sqlite3_open_v2(address, &raw, flags | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
        db_.reset(raw);
        if (result != SQLITE_OK) return db_.reset();
        sqlite3_extended_result_codes(raw, 1);
        sqlite3_busy_timeout(raw, kWait);
        sqlite3_db_config(raw, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
        if ((flags & SQLITE_OPEN_READWRITE) != 0 && !copies_)
            sqlite3_exec(raw, "PRAGMA locking_mode=EXCLUSIVE; PRAGMA query_only=ON", nullptr, nullptr,
                         nullptr);
    }

    /// A journal left behind is undone as the file is opened, which writes: so in a copy.
    void openCopy(const QString& path) {
        copies_.emplace();
        if (!copies_->isValid()) return;
        const QString copy = copies_->filePath(u"base"_s);
        for (const auto& name : {&journalOf, &logOf}) {
            if (QFileInfo::exists(name(path)) && !QFile::copy(name(path), name(copy))) return;
        }
        if (QFile::copy(path, copy)) open(copy, SQLITE_OPEN_READWRITE, "mode=rw");
    }

    std::optional<QTemporaryDir> copies_;  // goes behind the handle
    Handle db_;
};

/// Runs a query to its end; its result. What cannot be prepared is told likewise.
template <typename EachRow>
int forEachRow(sqlite3* db, const QByteArray& text, const EachRow& eachRow) {
    sqlite3_stmt* raw = nullptr;
    const int prepared = sqlite3_prepare_v2(db, text.constData(), -1, &raw, nullptr);
    const Statement statement(raw);
    if (prepared != SQLITE_OK) return prepared;
    int result = 0;
    while ((result = sqlite3_step(raw)) == SQLITE_ROW)
        eachRow(raw);
    return result;
}

QByteArray quoted(const QString& name) {
    return '"' + name.toUtf8().replace('"', "\"\"") + '"';
}

constexpr char kAllTables[] =
    "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'";

/// Reads the first entry of each index: what is looked up first is found through them.
int lookIntoIndexes(sqlite3* db, const QString& table) {
    QStringList indexes;
    int result = forEachRow(db,
                            "SELECT name FROM pragma_index_list(" + detail::literal(table) +
                                ") WHERE NOT partial AND origin = 'c'",
                            [&](sqlite3_stmt* row) { indexes << columnText(row, 0); });
    for (const QString& index : std::as_const(indexes)) {
        if (result != SQLITE_DONE) break;
        QString column;
        result = forEachRow(db, "SELECT name FROM pragma_index_info(" + detail::literal(index) + ") LIMIT 1",
                            [&](sqlite3_stmt* row) { column = columnText(row, 0); });
        if (result != SQLITE_DONE) break;
        result = forEachRow(db,
                            "SELECT " + quoted(column) + " FROM " + quoted(table) + " INDEXED BY " +
                                quoted(index) + " ORDER BY " + quoted(column) + " LIMIT 1",
                            [](sqlite3_stmt*) {});
        if (result == SQLITE_ERROR) result = SQLITE_DONE;  // over an expression, or another program's order
    }
    return result;
}

/// What the check of the rows will take, in steps of SQLite's machine. It need not be exact: the progress is
/// shown by it.
double stepsExpected(sqlite3* db) {
    constexpr double kEach = 4, kColumn = 1, kIndex = 5;
    double steps = 1;
    QStringList tables;
    forEachRow(db, kAllTables, [&](sqlite3_stmt* row) { tables << columnText(row, 0); });
    const auto number = [db](const QByteArray& text) {
        double value = 0;
        forEachRow(db, text, [&](sqlite3_stmt* row) { value = sqlite3_column_double(row, 0); });
        return value;
    };
    for (const QString& table : tables) {
        const QByteArray name = detail::literal(table);
        steps += number("SELECT MAX(rowid) FROM " + quoted(table)) *
                 (kEach + kColumn * number("SELECT COUNT(*) FROM pragma_table_info(" + name + ")") +
                  kIndex * number("SELECT COUNT(*) FROM pragma_index_list(" + name + ")"));
    }
    return steps;
}

constexpr int kHandlerEvery = 5000;  // steps of SQLite's machine
constexpr int kShareOfReading = 30;  // percent of the whole, on a disk that is not the fastest
constexpr int kAllButTheEnd = 99;

struct Watch {
    const std::atomic<bool>& stop;
    std::atomic<int>& percent;
    double expected;
    double done = 0;
};

int onSteps(void* data) {
    auto& watch = *static_cast<Watch*>(data);
    watch.done += kHandlerEvery;
    const double share = std::min(1.0, watch.done / watch.expected);
    watch.percent = kShareOfReading + static_cast<int>(share * (kAllButTheEnd - kShareOfReading));
    return watch.stop ? 1 : 0;
}

/// A row that breaks a rule of its table is no damage: a foreign file may have brought it.
bool tellsDamage(const QString& line) {
    return line != u"ok" && !line.startsWith(u"CHECK constraint failed"_s) && !line.contains(u" value in "_s);
}

bool syncFile(const QString& path) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return false;
    const bool synced = ::fsync(file) == 0;
    ::close(file);
    return synced;
}

}  // namespace

bool wasClosed(const QString& path) {
    return std::ranges::none_of(std::array{logOf(path), indexOf(path), journalOf(path)},
                                [](const QString& name) { return QFileInfo::exists(name); });
}

bool hasStrayLog(const QString& path) {
    const std::optional<Header> header = headerOf(path);
    return header && header->size > 0 && !header->worksWithLog() && QFileInfo(logOf(path)).size() > 0;
}

Glance glanceAt(const QString& path) {
    Glance glance;
    const std::optional<Header> header = headerOf(path);
    if (!header) return glance;
    const bool hasLog = QFileInfo(logOf(path)).size() > 0;
    const bool hasJournal = QFileInfo(journalOf(path)).size() > 0;
    glance.damage = detail::troubleOfHeader(path, header->bytes, header->size, hasLog || hasJournal);
    if (!glance.damage.isEmpty()) return glance;
    const OpenFile file(path);
    if (!file.handle()) return glance;
    int result = forEachRow(file.handle(), kAllTables,
                            [&](sqlite3_stmt* row) { glance.tables << columnText(row, 0); });
    for (const QString& table : std::as_const(glance.tables)) {
        if (result != SQLITE_DONE) break;
        result =
            forEachRow(file.handle(), "SELECT * FROM " + quoted(table) + " LIMIT 1", [](sqlite3_stmt*) {});
        if (result == SQLITE_ERROR) result = SQLITE_DONE;  // a kind of table of another program's
        if (result == SQLITE_DONE) result = lookIntoIndexes(file.handle(), table);
    }
    glance.damage = damageIn(result);
    glance.readable = result == SQLITE_DONE;
    return glance;
}

WholeCheck::WholeCheck(const QString& path, Then then) : thread_([this, path, then] { run(path, then); }) {}

WholeCheck::~WholeCheck() {
    stop_ = true;
    thread_.join();
}

bool WholeCheck::finished(std::chrono::milliseconds wait) {
    constexpr auto kLook = std::chrono::milliseconds(5);
    for (const auto end = std::chrono::steady_clock::now() + wait;
         !done_ && std::chrono::steady_clock::now() < end;)
        std::this_thread::sleep_for(kLook);
    return done_;
}

/// In order and in large pieces, as disks like it: the check behind it finds the file in memory.
void WholeCheck::readThrough(const QString& path) {
    constexpr qint64 kPiece = 1 << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return;
    QByteArray piece(kPiece, Qt::Uninitialized);
    const qint64 size = std::max<qint64>(1, file.size());
    qint64 done = 0;
    while (!stop_ && !file.atEnd()) {
        const qint64 read = file.read(piece.data(), kPiece);
        if (read < 0) damage_ = kUnreadable;
        if (read <= 0) return;
        done += read;
        percent_ = static_cast<int>(std::min(done, size) * kShareOfReading / size);
    }
}

void WholeCheck::run(const QString& path, Then then) {
    damage_ = glanceAt(path).damage;
    if (damage_.isEmpty()) readThrough(path);
    if (damage_.isEmpty()) checkAll(path);
    if (then == Then::Sync && isGood()) good_ = syncFile(path);
    done_ = true;
}

void WholeCheck::checkAll(const QString& path) {
    const OpenFile file(path);
    if (!file.handle() || stop_) return;
    sqlite3_exec(file.handle(), "PRAGMA ignore_check_constraints=ON; PRAGMA cache_size=-64000", nullptr,
                 nullptr, nullptr);
    Watch watch{stop_, percent_, stepsExpected(file.handle())};
    sqlite3_progress_handler(file.handle(), kHandlerEvery, onSteps, &watch);
    const int result =
        forEachRow(file.handle(), "PRAGMA integrity_check(1000000)", [this](sqlite3_stmt* row) {
            if (tellsDamage(columnText(row, 0))) damage_ = kDamaged;
        });
    if (damage_.isEmpty()) damage_ = damageIn(result);
    good_ = result == SQLITE_DONE && damage_.isEmpty();
}

bool isWhole(const QString& path) {
    WholeCheck check(path);
    while (!check.finished(std::chrono::hours(1))) {
    }
    return check.isGood();
}

}  // namespace tarmel::ado
