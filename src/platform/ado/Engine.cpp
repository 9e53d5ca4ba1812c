#include "platform/ado/Engine.h"

#include <QFileInfo>
#include <QStringEncoder>
#include <algorithm>
#include <utility>

#include "platform/access_sql/Functions.h"
#include "platform/ado/Definitions.h"
#include "platform/ado/Errors.h"
#include "platform/ado/Opening.h"

namespace tarmel::ado::detail {

using access_sql::Binding;
using access_sql::Translation;
using access_sql::Type;
using basic::Variant;
using namespace Qt::StringLiterals;

namespace {

/// Shapes kept: a program has some hundreds of statements; queries joined from choices add more without end.
constexpr qsizetype kMostShapes = 400;

/// The texts of one binding, in UTF-8. They stand where they are until the statement is let go, so that the
/// database need not copy them.
class TextRoom {
 public:
    explicit TextRoom(const std::vector<Variant>& values) {
        qsizetype size = 0;
        for (const Variant& value : values) {
            if (const auto* text = std::get_if<QString>(&value.raw()))
                size += kLongestCharacter * text->size();
            if (value.isDate()) size += kDateLength;
        }
        room_ = std::make_unique_for_overwrite<char[]>(static_cast<std::size_t>(size));
        free_ = room_.get();
    }
    void bind(sqlite3_stmt* statement, int place, QStringView text) {
        char* const start = free_;
        for (const QChar c : text) {
            if (c.unicode() >= 0x80) {
                QStringEncoder utf8(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
                free_ = utf8.appendToBuffer(start, text);
                break;
            }
            *free_++ = static_cast<char>(c.unicode());
        }
        sqlite3_bind_text(statement, place, start, static_cast<int>(free_ - start), SQLITE_STATIC);
    }
    [[nodiscard]] std::unique_ptr<char[]> take() { return std::move(room_); }

 private:
    static constexpr qsizetype kLongestCharacter = 3;  // bytes of UTF-8 for a unit of UTF-16
    static constexpr qsizetype kDateLength = 19;
    std::unique_ptr<char[]> room_;
    char* free_ = nullptr;
};

void bindValue(sqlite3_stmt* statement, int place, const Variant& value, TextRoom& texts) {
    const auto& raw = value.raw();
    if (const auto* text = std::get_if<QString>(&raw)) {
        texts.bind(statement, place, *text);
    } else if (const auto* whole = std::get_if<qint64>(&raw)) {
        sqlite3_bind_int64(statement, place, *whole);
    } else if (const auto* number = std::get_if<double>(&raw)) {
        sqlite3_bind_double(statement, place, *number);
    } else if (const auto* yes = std::get_if<bool>(&raw)) {
        sqlite3_bind_int(statement, place, *yes ? -1 : 0);
    } else if (const auto* date = std::get_if<basic::Date>(&raw)) {
        texts.bind(statement, place, date->iso());
    } else {
        sqlite3_bind_null(statement, place);
    }
}

const Variant& source(const Binding& binding, const std::vector<Variant>& literals,
                      const Parameters& parameters) {
    const std::vector<Variant>& from = binding.source == Binding::Source::Literal ? literals : parameters;
    const auto index = static_cast<std::size_t>(binding.index);
    if (index < from.size()) return from[index];
    throw access_sql::statementError(
        u"Pocos parámetros. Se esperaba %1."_s.arg(binding.index + 1 - static_cast<int>(from.size())));
}

Variant converted(const Binding& b, const Variant& value) {
    if (b.convertTo == Type::Unknown) return value;
    return b.storing ? access_sql::convertForStoring(value, b.convertTo, b.width, b.scale, b.column)
                     : access_sql::convertForComparing(value, b.convertTo);
}

std::vector<Variant> valuesOf(const Translation& translation, const std::vector<Variant>& literals,
                              const Parameters& parameters) {
    std::vector<Variant> values;
    values.reserve(translation.bindings.size());
    for (const Binding& b : translation.bindings)
        values.push_back(converted(b, source(b, literals, parameters)));
    return values;
}

}  // namespace

Columns::Columns(const std::vector<access_sql::OutputColumn>& columns) : columns_(columns) {}

int Columns::indexOf(const QString& name) const {
    if (const auto known = found_.constFind(name); known != found_.cend()) return *known;
    const int index = search(name);
    found_.insert(name, index);
    return index;
}

int Columns::search(const QString& name) const {
    const auto same = [](QStringView a, QStringView b) { return a.compare(b, Qt::CaseInsensitive) == 0; };
    const auto place = [&](auto fits) {
        const auto found = std::ranges::find_if(columns_, fits);
        return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
    };
    if (const int plain = place([&](const auto& c) { return same(c.name, name); }); plain >= 0) return plain;
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot < 0) return -1;
    const QStringView table = QStringView(name).left(dot);
    const QStringView column = QStringView(name).mid(dot + 1);
    if (const int exact = place([&](const auto& c) { return same(c.table, table) && same(c.name, column); });
        exact >= 0) {
        return exact;
    }
    const bool knowsTable = place([&](const auto& c) { return same(c.table, table); }) >= 0;
    return knowsTable ? -1 : place([&](const auto& c) { return same(c.name, column); });
}

Lease::Lease(std::shared_ptr<CachedShape> shape, Statement statement)
    : shape_(std::move(shape)), statement_(std::move(statement)) {}

Lease& Lease::operator=(Lease&& other) noexcept {
    if (this == &other) return *this;
    release();
    shape_ = std::move(other.shape_);
    statement_ = std::move(other.statement_);
    texts_ = std::move(other.texts_);
    return *this;
}

void Lease::bind(const std::vector<Variant>& values) {
    TextRoom texts(values);
    int place = 0;
    for (const Variant& value : values)
        bindValue(statement_.get(), ++place, value, texts);
    texts_ = texts.take();
}

void Lease::release() {
    if (!statement_) return;
    sqlite3_reset(statement_.get());
    sqlite3_clear_bindings(statement_.get());
    if (shape_->current && !shape_->idle) {
        shape_->idle = std::move(statement_);
    } else {
        statement_.reset();
    }
}

Engine::Engine(const QString& path, bool create)
    : db_(openDatabase(path, create)), inFile_(path != u":memory:") {
    static quint64 openings = 0;
    opening_ = ++openings;
    access_sql::registerFunctions(handle());
    try {
        catalog_.load(handle());
    } catch (const basic::RuntimeError& error) {
        throw openError(error.description());
    }
}

Engine::~Engine() {
    close();
}

void Engine::close() {
    if (!db_) return;
    endAll();
    // Another program that still reads the file keeps its log; nothing is lost by that.
    if (inFile_) (void)basic::resumeNext([this] { writeLogBack(); });
    db_.reset();
}

void Engine::closeAlone() {
    if (!db_) return;
    const QString path = QString::fromUtf8(sqlite3_db_filename(handle(), "main"));
    endAll();
    try {
        writeLogBack();
    } catch (const basic::RuntimeError& error) {
        db_.reset();
        throw openError(error.description());
    }
    // A handle with something left alive would go on holding the file.
    const bool closed = sqlite3_close(handle()) == SQLITE_OK;
    if (closed) (void)db_.release();
    db_.reset();
    if (!closed || QFileInfo::exists(path + u"-wal"_s)) throw openError(troubleOfFile(SQLITE_BUSY));
}

/// Nothing of this connection is left that reads or writes.
void Engine::endAll() {
    for (Follower* follower : std::exchange(followers_, {}))
        follower->sourceCloses();
    drainReaders();
    forgetStatements();
    beginSnapshot_.reset();
    endSnapshot_.reset();
    if (sqlite3_get_autocommit(handle()) == 0) sqlite3_exec(handle(), "ROLLBACK", nullptr, nullptr, nullptr);
    depth_ = 0;
    while (sqlite3_stmt* left = sqlite3_next_stmt(handle(), nullptr))
        sqlite3_finalize(left);
}

/// All that the log holds goes into the file, and the log away.
void Engine::writeLogBack() {
    // A setting is written only when its statement ends, behind the row that tells the new state.
    const auto answer = [this](const char* pragma) {
        const Statement statement = prepare(handle(), pragma);
        QString text;
        while (step(handle(), statement.get()))
            text = columnText(statement.get(), 0);
        return text;
    };
    const bool done = answer("PRAGMA wal_checkpoint(TRUNCATE)") == u"0";
    if (!done || answer("PRAGMA journal_mode=DELETE") != u"delete")
        throw openError(troubleOfFile(SQLITE_BUSY));
}

QByteArray Engine::changeMark() const {
    const auto number = [this](const char* pragma) { return firstText(handle(), pragma); };
    return QByteArray::number(opening_) + ' ' + QByteArray::number(sqlite3_total_changes64(handle())) + ' ' +
           number("PRAGMA data_version") + ' ' + number("PRAGMA schema_version");
}

void Engine::drainReaders() {
    // A drained reader leaves the list.
    for (Reader* reader : std::exchange(readers_, {}))
        reader->drain();
}

void Engine::forgetStatements() {
    letSnapshotGo();
    for (const auto& shape : std::as_const(shapes_)) {
        shape->current = false;
        shape->idle.reset();
    }
    shapes_.clear();
}

void Engine::makeRoom() {
    if (shapes_.size() < kMostShapes) return;
    std::vector<quint64> uses;
    for (const auto& shape : std::as_const(shapes_))
        uses.push_back(shape->lastUse);
    const auto quarter = uses.begin() + static_cast<std::ptrdiff_t>(uses.size() / 4);
    std::ranges::nth_element(uses, quarter);
    for (auto it = shapes_.begin(); it != shapes_.end();) {
        if ((*it)->lastUse > *quarter) {
            ++it;
            continue;
        }
        (*it)->current = false;
        (*it)->idle.reset();
        it = shapes_.erase(it);
    }
}

std::shared_ptr<CachedShape> Engine::shapeOf(const QString& sql, const QByteArray& key) {
    if (const auto known = shapes_.constFind(key); known != shapes_.cend()) return *known;
    auto shape = std::make_shared<CachedShape>();
    shape->translation = access_sql::translate(sql, catalog_);
    if (shape->translation.kind == Translation::Kind::Define) return shape;
    shape->columns = std::make_shared<const Columns>(shape->translation.columns);
    shape->idle = prepare(handle(), shape->translation.text, SQLITE_PREPARE_PERSISTENT);
    makeRoom();
    shapes_.insert(key, shape);
    return shape;
}

Lease Engine::bound(const QString& sql, const Parameters& parameters) {
    const access_sql::Shape text = access_sql::lift(sql);
    std::shared_ptr<CachedShape> shape = shapeOf(sql, text.key);
    if (shape->translation.kind == Translation::Kind::Define) return {std::move(shape), nullptr};
    shape->lastUse = ++uses_;
    Statement statement = shape->idle ? std::move(shape->idle)
                                      : prepare(handle(), shape->translation.text, SQLITE_PREPARE_PERSISTENT);
    Lease lease(std::move(shape), std::move(statement));
    lease.bind(valuesOf(lease.shape().translation, text.literals, parameters));
    return lease;
}

int Engine::carryOut(Lease& lease) {
    if (lease.shape().translation.kind == Translation::Kind::Define) {
        define(lease.shape().translation.definition);
        return 0;
    }
    const bool changes = lease.shape().translation.kind == Translation::Kind::Change;
    if (changes) {
        drainReaders();
        letSnapshotGo();
    }
    (void)next(lease);
    lease.release();
    return changes ? sqlite3_changes(handle()) : 0;
}

bool Engine::next(Lease& lease) {
    switch (sqlite3_step(lease.statement())) {
        case SQLITE_ROW:
            return true;
        case SQLITE_DONE:
            return false;
        default:
            throw failure(lease.statement());
    }
}

basic::RuntimeError Engine::failure(sqlite3_stmt* statement) {
    const basic::RuntimeError plain = lastError(handle());
    if (sqlite3_extended_errcode(handle()) != SQLITE_CONSTRAINT_FOREIGNKEY) return plain;
    // SQLite does not say which relation refused. Carried out again with the check put off, the check tells.
    sqlite3_reset(statement);
    sqlite3_exec(handle(), "SAVEPOINT pareja; PRAGMA defer_foreign_keys=ON", nullptr, nullptr, nullptr);
    sqlite3_step(statement);
    QString child;
    QString parent;
    int id = -1;
    QString column;
    (void)basic::resumeNext([&] {
        const Statement check = prepare(handle(), "PRAGMA foreign_key_check");
        if (!step(handle(), check.get())) return;
        child = columnText(check.get(), 0);
        parent = columnText(check.get(), 2);
        id = sqlite3_column_int(check.get(), 3);
        const Statement list =
            prepare(handle(), "SELECT \"from\" FROM pragma_foreign_key_list(" + literal(child) +
                                  ") WHERE id = " + QByteArray::number(id));
        if (step(handle(), list.get())) column = columnText(list.get(), 0);
    });
    sqlite3_reset(statement);
    sqlite3_exec(handle(), "ROLLBACK TO pareja; RELEASE pareja; PRAGMA defer_foreign_keys=OFF", nullptr,
                 nullptr, nullptr);
    if (child.isEmpty()) return plain;
    return access_sql::statementError(
        u"Una fila de %1 quedaría sin pareja en %2 (%3): se necesita una fila relacionada en esa tabla."_s
            .arg(child, parent, column));
}

void Engine::beforeDefining() {
    drainReaders();
    forgetStatements();
    definedInTransaction_ = depth_ > 0;
}

void Engine::define(const access_sql::Definition& definition) {
    beforeDefining();
    DefinitionRunner(handle(), catalog_).run(definition);
}

void Engine::runPlain(const QByteArray& sqlite) {
    beforeDefining();
    run(handle(), sqlite);
    catalog_.load(handle());
}

void Engine::holdSnapshot() {
    if (snapshot_ || depth_ > 0 || sqlite3_get_autocommit(handle()) == 0) return;
    if (!beginSnapshot_) {
        beginSnapshot_ = prepare(handle(), "BEGIN", SQLITE_PREPARE_PERSISTENT);
        endSnapshot_ = prepare(handle(), "COMMIT", SQLITE_PREPARE_PERSISTENT);
    }
    step(handle(), beginSnapshot_.get());
    sqlite3_reset(beginSnapshot_.get());
    snapshot_ = true;
}

/// Nothing was written under it, so there is nothing that its end could fail to keep.
void Engine::letSnapshotGo() noexcept {
    if (!std::exchange(snapshot_, false)) return;
    sqlite3_step(endSnapshot_.get());
    sqlite3_reset(endSnapshot_.get());
}

void Engine::begin() {
    drainReaders();
    letSnapshotGo();
    run(handle(),
        depth_ == 0 ? QByteArray("BEGIN IMMEDIATE") : "SAVEPOINT nivel" + QByteArray::number(depth_));
    ++depth_;
}

void Engine::commit() {
    drainReaders();
    run(handle(), depth_ == 1 ? QByteArray("COMMIT") : "RELEASE nivel" + QByteArray::number(depth_ - 1));
    --depth_;
}

void Engine::rollback() {
    drainReaders();
    --depth_;
    // Where the transaction is gone already, the database gave it up by itself.
    if (sqlite3_get_autocommit(handle()) == 0) {
        const QByteArray level = "nivel" + QByteArray::number(depth_);
        run(handle(), depth_ == 0 ? QByteArray("ROLLBACK") : "ROLLBACK TO " + level + "; RELEASE " + level);
    }
    if (!definedInTransaction_) return;
    forgetStatements();
    catalog_.load(handle());
    definedInTransaction_ = depth_ > 0;
}

}  // namespace tarmel::ado::detail
