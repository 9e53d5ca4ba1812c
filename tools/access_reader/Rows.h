#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "JetFile.h"

namespace access_reader {

/// A field as the row holds it. The bytes live until the next row is asked for.
struct Field {
    const MdbColumn* column = nullptr;
    bool isNull = true;
    const unsigned char* bytes = nullptr;
    std::size_t size = 0;
};

/// The rows of a table, page by page: deleted slots are passed over, moved rows are read where they lie now,
/// once.
class Rows {
 public:
    explicit Rows(const Table& table);
    /// The fields of the next row in the order of the columns; null when there is none left. Throws Failure
    /// for a row that cannot be read.
    [[nodiscard]] const std::vector<Field>* next();
    /// How many have been read.
    [[nodiscard]] unsigned long long count() const { return count_; }

 private:
    bool nextPage();
    bool readSlot(unsigned slot);
    void crack(int start, std::size_t size);
    [[noreturn]] void fail(const char* words) const;

    const Table& table_;
    MdbHandle* file_;
    std::vector<Field> fields_;
    std::array<unsigned char, MDB_PGSIZE>
        home_{};  ///< the page that is walked, while a moved row is looked up
    bool away_ = false;
    unsigned slots_ = 0;
    unsigned slot_ = 0;
    unsigned long long count_ = 0;
};

/// A long value (memo, picture) whole; nothing when it cannot be read. It may lie in the row, on a page of
/// its own, or on a chain of pages.
[[nodiscard]] std::optional<std::string> longValue(MdbHandle* file, const Field& field);

}  // namespace access_reader
