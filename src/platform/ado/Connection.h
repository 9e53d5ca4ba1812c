#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "platform/access_sql/Translator.h"

namespace tarmel::ado {

namespace detail {
class Engine;
}

/// The one open database, in the Access dialect. A statement runs through Recordset::Open or Execute.
class Connection {
 public:
    Connection();
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// "DSN=AccessDSN;UID=admin;PWD=": the path comes from the data source of that name. RuntimeError when
    /// there is no such source, or the file is missing, locked, damaged, read-only or no database; the file
    /// is then untouched.
    void Open(const QString& connectionText);
    /// The same, by path; ":memory:" serves tests and tools. With `create` a missing file is made.
    void OpenFile(const QString& path, bool create = false);
    /// Ends every reader, finalises all statements, leaves no side file (-wal, -shm) behind. Only while
    /// another program reads the file does its log stay, complete, so whoever moves the file looks for it
    /// first.
    void Close();
    /// The same for whoever is going to move or replace the file: raises the error of Open when another
    /// program has the file open or the log could not be written back into it. The connection is closed even
    /// then, and the log stays, complete.
    void CloseAlone();
    [[nodiscard]] bool IsOpen() const;
    /// Differs as soon as anything has been written since, by whatever program.
    [[nodiscard]] QByteArray changeMark() const;

    /// Runs one statement that returns no rows; the number of rows that it changed. `parameters` are the
    /// values of its "?" marks by position. Any refusal raises RuntimeError -2147217900 with the source
    /// "Motor de base de datos"; a closed connection 3709.
    int Execute(const QString& sql, const std::vector<basic::Variant>& parameters = {});

    /// The same for a definition that is there as data, without a statement's text: tables that a program
    /// lays out.
    void Define(const access_sql::Definition& definition);
    /// SQLite text for what the dialect has no words for: indexes and triggers. Plain SQLite only, since
    /// other programs open the file too.
    void ExecutePlain(const QByteArray& sqlite);

    /// Tables and views with their columns in their fixed order.
    [[nodiscard]] const access_sql::Schema& schema() const;
    [[nodiscard]] std::vector<QString> tableNames() const;
    [[nodiscard]] std::vector<access_sql::ForeignKey> foreignKeys() const;

    /// Groups statements into one transaction of the platform's own, for bulk work; rolls back unless
    /// committed.
    class Batch {
     public:
        explicit Batch(Connection& connection);
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;
        void commit();

     private:
        Connection& connection_;
        bool open_ = true;
    };

    /// Searches that belong together: they see one state of the file and take its lock once. The first
    /// change, definition or batch ends it, so nothing that is written ever waits for it.
    class Snapshot {
     public:
        explicit Snapshot(Connection& connection);
        ~Snapshot();
        Snapshot(const Snapshot&) = delete;
        Snapshot& operator=(const Snapshot&) = delete;

     private:
        std::shared_ptr<detail::Engine> engine_;
    };

    /// While it lives, statements that take long call `turn` many times a second, so that windows can be
    /// painted meanwhile. `turn` leaves the connection alone and throws nothing. One at a time.
    class Interlude {
     public:
        Interlude(Connection& connection, std::function<void()> turn);
        ~Interlude();
        Interlude(const Interlude&) = delete;
        Interlude& operator=(const Interlude&) = delete;

     private:
        std::shared_ptr<detail::Engine> engine_;
        std::function<void()> turn_;
    };

 private:
    friend class Recordset;
    friend class Backup;
    std::shared_ptr<detail::Engine> engine_;
};

}  // namespace tarmel::ado
