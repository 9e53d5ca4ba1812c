#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "platform/ado/Connection.h"
#include "platform/basic/Variant.h"

namespace tarmel::ado {

enum class Cursor { Unspecified = -1, ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class Lock { Unspecified = -1, ReadOnly = 1, Pessimistic = 2, Optimistic = 3 };

/// The rows of a statement. Rows are read as they are asked for; before the connection writes, defines or
/// closes, open readers take in what is left, so that a recordset always shows the rows as they were when it
/// was opened.
class Recordset {
 public:
    Recordset();
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    /// Runs the statement. For a command (no rows) the recordset stays closed. Errors as Connection::Execute.
    void Open(const QString& sql, Connection& connection, Cursor cursor = Cursor::Unspecified,
              Lock lock = Lock::Unspecified, int options = -1,
              const std::vector<basic::Variant>& parameters = {});
    void Requery();
    void Close();
    [[nodiscard]] bool IsOpen() const;
    /// Rows that the command changed with which the recordset was last opened; 0 after a query.
    [[nodiscard]] int RecordsAffected() const { return affected_; }

    /// Behind the last row, in front of the first one. (The plain names are macros of the C library.)
    [[nodiscard]] bool Eof() const;
    [[nodiscard]] bool Bof() const;
    void MoveFirst();
    void MoveNext();
    /// Goes to a row by its number from 0, forwards or back; false, and behind the last row, when there are
    /// fewer.
    bool Seek(int row);
    /// Exact for keyset and static cursors (reads to the end); -1 for the others.
    [[nodiscard]] int RecordCount() const;

    struct FieldInfo {
        QString name;
        QString table;
        access_sql::Type type;
    };
    [[nodiscard]] int FieldCount() const;
    [[nodiscard]] const FieldInfo& FieldAt(int index) const;
    /// Position of a field: no regard to case, first match; "TABLE.COLUMN" too, which falls back to COLUMN
    /// where the rows know no such table. Unknown: RuntimeError 3265.
    [[nodiscard]] int FieldIndex(const QString& name) const;

    /// The value in the current row: Null, text, whole number, double, Boolean or date. Without a row:
    /// RuntimeError 3021.
    [[nodiscard]] basic::Variant Value(const QString& name) const;
    [[nodiscard]] basic::Variant Value(int index) const;
    /// Value(...).joined(), without the detour over a Variant.
    [[nodiscard]] QString Text(const QString& name) const { return Value(name).joined(); }
    [[nodiscard]] QString Text(int index) const { return Value(index).joined(); }

 private:
    struct State;
    std::unique_ptr<State> state_;
    int affected_ = 0;
};

}  // namespace tarmel::ado
