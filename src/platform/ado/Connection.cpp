#include "platform/ado/Connection.h"

#include <utility>

#include "platform/ado/Engine.h"
#include "platform/ado/Errors.h"
#include "platform/system/DataSource.h"

namespace tarmel::ado {

using namespace Qt::StringLiterals;

namespace {

/// The value of a key in "DSN=AccessDSN;UID=admin;PWD=".
QString valueOf(const QString& connectionText, QStringView key) {
    for (const QString& pair : connectionText.split(u';')) {
        const qsizetype equals = pair.indexOf(u'=');
        if (equals >= 0 && QStringView(pair).left(equals).trimmed().compare(key, Qt::CaseInsensitive) == 0) {
            return pair.mid(equals + 1).trimmed();
        }
    }
    return {};
}

detail::Engine& mustBeOpen(const std::shared_ptr<detail::Engine>& engine) {
    if (!engine) throw detail::connectionClosed();
    return *engine;
}

}  // namespace

Connection::Connection() = default;
Connection::~Connection() {
    Close();
}

void Connection::Open(const QString& connectionText) {
    const QString name = valueOf(connectionText, u"DSN");
    const std::optional<QString> path = sys::dataSourcePath(name);
    if (!path) {
        throw detail::openError(u"No se encuentra el nombre del origen de datos «%1»."_s.arg(name));
    }
    OpenFile(*path);
}

void Connection::OpenFile(const QString& path, bool create) {
    Close();
    engine_ = std::make_shared<detail::Engine>(path, create);
}

void Connection::Close() {
    if (!engine_) return;
    engine_->close();
    engine_.reset();
}

void Connection::CloseAlone() {
    if (!engine_) return;
    const std::shared_ptr<detail::Engine> engine = std::exchange(engine_, nullptr);
    engine->closeAlone();
}

bool Connection::IsOpen() const {
    return engine_ != nullptr;
}

QByteArray Connection::changeMark() const {
    return mustBeOpen(engine_).changeMark();
}

int Connection::Execute(const QString& sql, const std::vector<basic::Variant>& parameters) {
    detail::Engine& engine = mustBeOpen(engine_);
    detail::Lease lease = engine.bound(sql, parameters);
    return engine.carryOut(lease);
}

void Connection::Define(const access_sql::Definition& definition) {
    mustBeOpen(engine_).define(definition);
}

void Connection::ExecutePlain(const QByteArray& sqlite) {
    mustBeOpen(engine_).runPlain(sqlite);
}

const access_sql::Schema& Connection::schema() const {
    return mustBeOpen(engine_).catalog();
}

std::vector<QString> Connection::tableNames() const {
    return mustBeOpen(engine_).catalog().names();
}

std::vector<access_sql::ForeignKey> Connection::foreignKeys() const {
    return mustBeOpen(engine_).catalog().foreignKeys();
}

Connection::Batch::Batch(Connection& connection) : connection_(connection) {
    mustBeOpen(connection_.engine_).begin();
}

Connection::Batch::~Batch() {
    if (!open_ || !connection_.engine_) return;
    // What cannot be rolled back any more was rolled back by the database.
    (void)basic::resumeNext([&] { connection_.engine_->rollback(); });
}

void Connection::Batch::commit() {
    mustBeOpen(connection_.engine_).commit();
    open_ = false;
}

Connection::Snapshot::Snapshot(Connection& connection) : engine_(connection.engine_) {
    if (engine_) engine_->holdSnapshot();
}

Connection::Snapshot::~Snapshot() {
    if (engine_ && engine_->isOpen()) engine_->letSnapshotGo();
}

Connection::Interlude::Interlude(Connection& connection, std::function<void()> turn)
    : engine_(connection.engine_), turn_(std::move(turn)) {
    if (!engine_ || !engine_->isOpen()) return;
    constexpr int kStepsBetween = 20000;  // of the statement's program: some milliseconds
    const auto onSteps = [](void* self) {
        static_cast<Interlude*>(self)->turn_();
        return 0;
    };
    sqlite3_progress_handler(engine_->handle(), kStepsBetween, onSteps, this);
}

Connection::Interlude::~Interlude() {
    if (engine_ && engine_->isOpen()) sqlite3_progress_handler(engine_->handle(), 0, nullptr, nullptr);
}

}  // namespace tarmel::ado
