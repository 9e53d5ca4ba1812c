#include "platform/ado/Backup.h"

#include "platform/ado/Engine.h"
#include "platform/ado/Errors.h"
#include "platform/ado/FileCheck.h"

namespace tarmel::ado {

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void fail(int result, sqlite3* db) {
    const QString trouble = detail::troubleOfFile(result);
    throw detail::openError(trouble.isEmpty() ? QString::fromUtf8(sqlite3_errmsg(db)) : trouble);
}

void must(sqlite3* db, const char* text) {
    if (const int result = sqlite3_exec(db, text, nullptr, nullptr, nullptr); result != SQLITE_OK)
        fail(result, db);
}

struct FinishBackup {
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

}  // namespace

class Backup::Run final : public detail::Follower {
 public:
    Run(std::shared_ptr<detail::Engine> engine, const QString& file)
        : engine_(std::move(engine)), file_(file) {
        if (!engine_) throw detail::connectionClosed();
        sqlite3* raw = nullptr;
        const int flags =
            SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE | SQLITE_OPEN_NOMUTEX;
        const int result = sqlite3_open_v2(file.toUtf8().constData(), &raw, flags, nullptr);
        copy_.reset(raw);
        if (result != SQLITE_OK) fail(result, raw);
        sqlite3_extended_result_codes(raw, 1);
        // A file that was only begun is thrown away: nothing need be undone in it, and it is synced as a
        // whole.
        must(raw, "PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF");
        backup_.reset(sqlite3_backup_init(raw, "main", engine_->handle(), "main"));
        if (!backup_) fail(sqlite3_extended_errcode(raw), raw);
        engine_->attach(this);
    }
    ~Run() override {
        if (engine_) engine_->detach(this);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    void sourceCloses() noexcept override {
        backup_.reset();
        engine_.reset();
    }

    [[nodiscard]] Step step(int pages) {
        if (!backup_) throw detail::connectionClosed();
        const int result = sqlite3_backup_step(backup_.get(), pages);
        switch (result & 0xff) {
            case SQLITE_OK:
                return Step::More;
            case SQLITE_BUSY:
            case SQLITE_LOCKED:
                return Step::Busy;
            case SQLITE_DONE:
                return Step::Done;
            default:
                fail(result, copy_.get());
        }
    }

    /// The copy works without a log from now on, so that it is one file wherever it is carried.
    [[nodiscard]] QByteArray finish() {
        const QByteArray mark = engine_->changeMark();
        if (const int result = sqlite3_backup_finish(backup_.release()); result != SQLITE_OK)
            fail(result, copy_.get());
        must(copy_.get(), "PRAGMA journal_mode=DELETE");
        copy_.reset();
        // What could not be removed would be taken for a part of the file.
        if (!wasClosed(file_)) fail(SQLITE_IOERR, nullptr);
        return mark;
    }

 private:
    std::shared_ptr<detail::Engine> engine_;
    QString file_;
    detail::Handle copy_;
    std::unique_ptr<sqlite3_backup, FinishBackup> backup_;
};

Backup::Backup(Connection& source, const QString& file) : run_(std::make_unique<Run>(source.engine_, file)) {}

Backup::~Backup() = default;

Backup::Step Backup::step(int pages) {
    if (!run_) throw detail::connectionClosed();
    const Step result = run_->step(pages);
    if (result != Step::Done) return result;
    mark_ = run_->finish();
    run_.reset();
    return Step::Done;
}

}  // namespace tarmel::ado
