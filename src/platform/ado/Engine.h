#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>
#include <vector>

#include "platform/access_sql/Translator.h"
#include "platform/ado/Catalog.h"
#include "platform/ado/Sqlite.h"
#include "platform/basic/Variant.h"

namespace tarmel::ado::detail {

using Parameters = std::vector<basic::Variant>;

/// What recordsets of one shape share: the columns and where each name was found.
class Columns {
 public:
    explicit Columns(const std::vector<access_sql::OutputColumn>& columns);
    [[nodiscard]] const std::vector<access_sql::OutputColumn>& all() const { return columns_; }
    /// -1 when there is none.
    [[nodiscard]] int indexOf(const QString& name) const;

 private:
    [[nodiscard]] int search(const QString& name) const;
    std::vector<access_sql::OutputColumn> columns_;
    mutable QHash<QString, int> found_;  // by the name as it was asked for
};

/// A statement shape: translated once, prepared once, bound as often as it comes.
struct CachedShape {
    access_sql::Translation translation;
    std::shared_ptr<const Columns> columns;
    Statement idle;  ///< none while a reader uses it
    quint64 lastUse = 0;
    bool current = true;  ///< false once the schema changed or the cache dropped it
};

/// A prepared statement out of the cache. It goes back when the lease ends, unless its shape is gone or
/// another one took its place.
class Lease {
 public:
    Lease() = default;
    Lease(std::shared_ptr<CachedShape> shape, Statement statement);
    Lease(Lease&&) noexcept = default;
    Lease& operator=(Lease&& other) noexcept;
    ~Lease() { release(); }
    /// One value for each parameter. The lease keeps the texts for as long as the statement may read them.
    void bind(const std::vector<basic::Variant>& values);
    void release();
    [[nodiscard]] sqlite3_stmt* statement() const { return statement_.get(); }
    [[nodiscard]] const CachedShape& shape() const { return *shape_; }
    explicit operator bool() const { return statement_ != nullptr; }

 private:
    std::shared_ptr<CachedShape> shape_;
    std::unique_ptr<char[]> texts_;
    Statement statement_;
};

/// A recordset that still reads from the database.
class Reader {
 public:
    virtual ~Reader() = default;
    /// Takes in the rows that are left and gives its statement back. Does not throw.
    virtual void drain() noexcept = 0;
};

/// What goes on beside the statements for as long as the file is open.
class Follower {
 public:
    virtual ~Follower() = default;
    /// The handle is about to go. Does not throw.
    virtual void sourceCloses() noexcept = 0;
};

/// The open file: handle, catalog, statement cache, live readers, transactions.
class Engine {
 public:
    /// See Connection::OpenFile.
    Engine(const QString& path, bool create);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    /// Leaves no side file behind. RuntimeError when the file could not be written out.
    void close();
    /// See Connection::CloseAlone.
    void closeAlone();
    [[nodiscard]] bool isOpen() const { return db_ != nullptr; }

    /// The statement, translated, prepared and bound; ready for its first step.
    [[nodiscard]] Lease bound(const QString& sql, const Parameters& parameters);
    /// Carries out what is no query. The rows changed.
    int carryOut(Lease& lease);
    /// One step of a query: true when a row stands ready.
    bool next(Lease& lease);

    void define(const access_sql::Definition& definition);
    /// SQLite text that the dialect has no words for: indexes and triggers.
    void runPlain(const QByteArray& sqlite);

    /// Transactions may stand in each other; the outermost one counts.
    void begin();
    void commit();
    void rollback();

    /// One read transaction for the searches that follow, until it is let go or something is written.
    void holdSnapshot();
    void letSnapshotGo() noexcept;

    void enter(Reader* reader) { readers_.push_back(reader); }
    void leave(Reader* reader) { std::erase(readers_, reader); }
    void attach(Follower* follower) { followers_.push_back(follower); }
    void detach(Follower* follower) { std::erase(followers_, follower); }

    /// See Connection::changeMark.
    [[nodiscard]] QByteArray changeMark() const;

    [[nodiscard]] const Catalog& catalog() const { return catalog_; }
    [[nodiscard]] sqlite3* handle() const { return db_.get(); }

 private:
    [[nodiscard]] std::shared_ptr<CachedShape> shapeOf(const QString& sql, const QByteArray& key);
    void endAll();
    void writeLogBack();
    void drainReaders();
    void forgetStatements();
    void beforeDefining();
    void makeRoom();
    /// A failed step as an error; for a missing partner, says which.
    [[nodiscard]] basic::RuntimeError failure(sqlite3_stmt* statement);

    Handle db_;
    bool inFile_ = false;
    Catalog catalog_;
    QHash<QByteArray, std::shared_ptr<CachedShape>> shapes_;
    quint64 uses_ = 0;
    std::vector<Reader*> readers_;
    std::vector<Follower*> followers_;
    quint64 opening_ = 0;  // which of the process
    int depth_ = 0;        // of transactions
    bool snapshot_ = false;
    Statement beginSnapshot_;
    Statement endSnapshot_;
    bool definedInTransaction_ = false;  // the catalog goes back with it
};

}  // namespace tarmel::ado::detail
