#pragma once

// The library's header would give GLib's templates the linkage of C.
#include <glib.h>

#include <mdbtools.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// The file as libmdb opens it, with what the library leaves to its callers.
namespace access_reader {

struct CloseFile {
    void operator()(MdbHandle* file) const { mdb_close(file); }
};
struct FreeTable {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
};
using File = std::unique_ptr<MdbHandle, CloseFile>;

/// A table of the user's with its columns in the order of their numbers, the deleted ones left out.
class Table {
 public:
    /// Throws Failure for a definition that cannot be read.
    Table(MdbHandle* file, MdbCatalogEntry* entry);

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] MdbTableDef* definition() const { return definition_.get(); }
    [[nodiscard]] std::vector<const MdbColumn*> columns() const;
    /// -1 when there is none.
    [[nodiscard]] int indexOf(const char* column) const;
    /// How many rows the definition says that there are.
    [[nodiscard]] std::uint32_t statedRows() const { return definition_->num_rows; }
    /// What its counter gave last.
    [[nodiscard]] std::int32_t lastNumber() const { return lastNumber_; }

 private:
    std::string name_;
    std::unique_ptr<MdbTableDef, FreeTable> definition_;
    std::int32_t lastNumber_ = 0;
};

[[nodiscard]] File openFile(const std::string& path);
/// The entry of a system table; null when there is none.
[[nodiscard]] MdbCatalogEntry* systemTable(MdbHandle* file, const char* name);
/// The user's own tables, those kept in this file, as the catalogue lists them. Throws Failure when the
/// catalogue holds less than it says.
[[nodiscard]] std::vector<MdbCatalogEntry*> userTables(MdbHandle* file);

}  // namespace access_reader
