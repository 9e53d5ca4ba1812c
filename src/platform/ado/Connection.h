#pragma once

#include <QString>
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
    [[nodiscard]] bool IsOpen() const;

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

 private:
    friend class Recordset;
    std::shared_ptr<detail::Engine> engine_;
};

}  // namespace tarmel::ado
