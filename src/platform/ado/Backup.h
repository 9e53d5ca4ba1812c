#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

#include "platform/ado/Connection.h"
#include "platform/ado/Sqlite.h"

namespace tarmel::ado {

/// A copy of an open database in the making, some pages at a time. What its connection writes meanwhile goes
/// into the copy too, so the copy never has to begin again, holds no lock between two steps, and is the
/// database as it stands when the last step is done. A connection that closes gives up its copies.
class Backup {
 public:
    /// Begins the file, which must not be there yet. RuntimeError when it cannot be made.
    Backup(Connection& source, const QString& file);
    /// An unfinished file is left to the caller.
    ~Backup();
    Backup(const Backup&) = delete;
    Backup& operator=(const Backup&) = delete;

    enum class Step {
        More,
        Busy,  ///< a transaction is open: later
        Done   ///< the file is whole, closed and by itself, but not yet synced
    };
    /// Copies so many pages. RuntimeError when the disk refuses, or the connection was closed.
    Step step(int pages);
    /// Connection::changeMark of what the finished copy holds.
    [[nodiscard]] const QByteArray& mark() const { return mark_; }

 private:
    class Run;
    std::unique_ptr<Run> run_;
    QByteArray mark_;
};

}  // namespace tarmel::ado
