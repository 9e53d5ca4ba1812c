#pragma once

#include <QString>

#include "platform/ado/Recordset.h"
#include "platform/basic/Variant.h"

namespace tarmel::report {

/// The rows that a report shows. They stay where they are: a report asks for a value when it lays out the
/// page that shows it, in any order.
class Rows {
 public:
    virtual ~Rows() = default;
    /// -1 where the rows have no such column: its elements stay empty.
    [[nodiscard]] virtual int columnIndex(const QString& name) const = 0;
    /// Reads on until so many rows are there or they are at their end; gives how many are there.
    virtual int read(int rows) = 0;
    [[nodiscard]] virtual basic::Variant value(int row, int column) const = 0;
};

/// The rows of a recordset, in its own buffer. Columns by name as the recordset finds them ("TABLE.COLUMN"
/// too).
class RecordsetRows final : public Rows {
 public:
    /// A closed recordset has no rows.
    explicit RecordsetRows(ado::Recordset recordset) : recordset_(std::move(recordset)) {}
    [[nodiscard]] int columnIndex(const QString& name) const override;
    int read(int rows) override;
    [[nodiscard]] basic::Variant value(int row, int column) const override;

 private:
    mutable ado::Recordset recordset_;
    int read_ = 0;
};

}  // namespace tarmel::report
