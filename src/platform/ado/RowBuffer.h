#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/access_sql/Translator.h"
#include "platform/basic/Variant.h"

struct sqlite3_stmt;

namespace tarmel::ado::detail {

/// Rows as they came from the database, packed: a byte for the kind of each value and as few as it needs for
/// its content, in large blocks. A capture of some 45 columns takes a few hundred bytes.
class RowBuffer {
 public:
    /// Takes in the row at which the statement stands.
    void append(sqlite3_stmt* statement);
    [[nodiscard]] std::size_t size() const { return rows_.size(); }
    /// The value, as the column's type has it.
    [[nodiscard]] basic::Variant value(std::size_t row, int column, access_sql::Type type) const;
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

 private:
    const std::uint8_t* field(std::size_t row, int column) const;
    void grow(std::size_t size);

    std::vector<std::unique_ptr<std::uint8_t[]>> blocks_;
    std::uint8_t* free_ = nullptr;
    std::size_t left_ = 0;
    std::size_t bytes_ = 0;
    std::size_t nextBlock_ = 512;
    std::vector<const std::uint8_t*> rows_;
    std::vector<std::uint8_t> packed_;  // the row being taken in

    // The places of the fields of the row last read: lists read a row's fields one after the other.
    mutable std::vector<std::uint32_t> places_;
    mutable std::size_t placedRow_ = SIZE_MAX;
    int columns_ = 0;
};

}  // namespace tarmel::ado::detail
