#include "JetFile.h"

#include <sys/stat.h>

#include <cstdio>
#include <set>

#include "Rows.h"
#include "Stream.h"
#include "Values.h"

namespace access_reader {

namespace {

// Of a table's definition.
constexpr int kLastNumberPlace = 20;
constexpr int kKindPlace = 40;
constexpr int kMostColumnsPlace = 41;
constexpr int kMostVariablePlace = 43;
constexpr unsigned char kUserKind = 'N';

constexpr std::uint32_t kSystemFlags = 0x80000002;
constexpr int kTableType = 1;
constexpr std::uint32_t kPageOfId = 0x00FFFFFF;
const char* const kCatalogue = "MSysObjects";
constexpr const char* kCatalogueDamaged = "El índice de objetos del archivo está dañado.";

[[noreturn]] void failCatalogue(const char* words) {
    throw Failure{kCatalogue, words};
}

bool isSystemName(const std::string& name) {
    return g_ascii_strncasecmp(name.c_str(), "MSys", 4) == 0;
}

/// Pages of the file.
unsigned long pagesOf(MdbHandle* file) {
    struct stat data {};
    if (::fstat(::fileno(file->f->stream), &data) != 0) return 0;
    return static_cast<unsigned long>(data.st_size / file->fmt->pg_size);
}

/// Reads the page that defines a table; false when it does not.
bool readDefinition(MdbHandle* file, unsigned long page) {
    return mdb_read_pg(file, page) > 0 && file->pg_buf[0] == MDB_PAGE_TABLE;
}

/// A number of its own for each, none beyond what the definition allows.
class Places {
 public:
    explicit Places(unsigned most) : most_(most) {}
    [[nodiscard]] bool take(unsigned place) { return place < most_ && taken_.insert(place).second; }

 private:
    unsigned most_;
    std::set<unsigned> taken_;
};

/// The bytes of a row's fixed part, each of one column.
class FixedPart {
 public:
    [[nodiscard]] bool take(int from, int size) {
        if (from < 0 || size < 0) return false;
        for (int i = from; i < from + size; ++i) {
            if (!taken_.insert(i).second) return false;
        }
        return true;
    }

 private:
    std::set<int> taken_;
};

/// Bytes of a value of the type; 0 where that is the column's own.
int sizeOf(int type) {
    switch (type) {
        case MDB_BYTE:
            return 1;
        case MDB_INT:
            return 2;
        case MDB_LONGINT:
        case MDB_FLOAT:
            return 4;
        case MDB_MONEY:
        case MDB_DOUBLE:
        case MDB_DATETIME:
            return 8;
        default:
            return 0;
    }
}

/// A wrong number in a column's description would read another column's bytes, or nothing, in all rows.
bool columnsFit(const GPtrArray& columns, unsigned mostColumns, unsigned mostVariable) {
    Places numbers(mostColumns);
    Places rowNumbers(mostColumns);
    Places variable(mostVariable);
    FixedPart fixed;
    for (guint i = 0; i < columns.len; ++i) {
        const auto& column = *static_cast<const MdbColumn*>(g_ptr_array_index(&columns, i));
        if (!numbers.take(static_cast<unsigned>(column.col_num)) ||
            !rowNumbers.take(static_cast<unsigned>(column.row_col_num)))
            return false;
        if (column.col_type == MDB_BOOL) continue;  // a bit among the marks of Null
        const int size = sizeOf(column.col_type);
        if (column.is_fixed && size > 0 && column.col_size != size) return false;
        const bool fits = column.is_fixed ? fixed.take(column.fixed_offset, column.col_size)
                                          : variable.take(column.var_col_num);
        if (!fits) return false;
    }
    return true;
}

/// What Access deleted stays under such a name until the file is compacted.
bool isDeleted(const std::string& name) {
    return name.starts_with("~TMPCLP");
}

long wholeOf(const Field& field) {
    const auto value = wholeNumber(field);
    if (!value) failCatalogue(kCatalogueDamaged);
    return *value;
}

}  // namespace

Table::Table(MdbHandle* file, MdbCatalogEntry* entry) : name_(entry->object_name) {
    if (!readDefinition(file, entry->table_pg))
        throw Failure{name_, "La definición de la tabla no se puede leer: el archivo está dañado."};
    const auto mostColumns = static_cast<unsigned>(mdb_pg_get_int16(file, kMostColumnsPlace));
    const auto mostVariable = static_cast<unsigned>(mdb_pg_get_int16(file, kMostVariablePlace));
    lastNumber_ = static_cast<std::int32_t>(mdb_pg_get_int32(file, kLastNumberPlace));
    definition_.reset(mdb_read_table(entry));
    const GPtrArray* read = definition_ ? mdb_read_columns(definition_.get()) : nullptr;
    if (!read || read->len != definition_->num_cols || read->len == 0)
        throw Failure{name_, "Las columnas de la tabla no se pueden leer: el archivo está dañado."};
    // The system's own tables do not number their columns.
    if (!isSystemName(name_) && !columnsFit(*read, mostColumns, mostVariable))
        throw Failure{name_, "La descripción de las columnas de la tabla está dañada."};
}

std::vector<const MdbColumn*> Table::columns() const {
    std::vector<const MdbColumn*> all;
    for (guint i = 0; i < definition_->columns->len; ++i)
        all.push_back(static_cast<const MdbColumn*>(g_ptr_array_index(definition_->columns, i)));
    return all;
}

int Table::indexOf(const char* column) const {
    const auto all = columns();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (g_ascii_strcasecmp(all[i]->name, column) == 0) return static_cast<int>(i);
    }
    return -1;
}

File openFile(const std::string& path) {
    File file(mdb_open(path.c_str(), MDB_NOFLAGS));
    if (!file) throw Failure{"", "El archivo no se puede leer como una base de datos de Access."};
    if (!mdb_read_catalog(file.get(), MDB_ANY))
        failCatalogue("El índice de objetos del archivo no se puede leer.");
    return file;
}

MdbCatalogEntry* systemTable(MdbHandle* file, const char* name) {
    for (guint i = 0; i < file->catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(file->catalog, i));
        if (entry->object_type == kTableType && g_ascii_strcasecmp(entry->object_name, name) == 0)
            return entry;
    }
    return nullptr;
}

namespace {

struct CatalogueRow {
    std::uint32_t id = 0;
    long type = 0;
    bool isSystem = false;
    std::string name;
};

/// The catalogue is a table like any other, and damage to its own pages would make tables vanish unseen: so
/// its rows are counted too.
std::vector<CatalogueRow> catalogueRows(MdbHandle* file) {
    MdbCatalogEntry* catalogue = systemTable(file, kCatalogue);
    if (!catalogue) failCatalogue("El archivo no tiene índice de objetos.");
    const Table table(file, catalogue);
    std::vector<std::size_t> places;
    for (const char* column : {"Id", "Type", "Flags", "Name"}) {
        const int place = table.indexOf(column);
        if (place < 0) failCatalogue(kCatalogueDamaged);
        places.push_back(static_cast<std::size_t>(place));
    }
    std::vector<CatalogueRow> all;
    Rows rows(table);
    while (const auto* fields = rows.next()) {
        const Field& flags = (*fields)[places[2]];
        const bool isSystem =
            !flags.isNull && (static_cast<std::uint32_t>(wholeOf(flags)) & kSystemFlags) != 0;
        all.push_back({static_cast<std::uint32_t>(wholeOf((*fields)[places[0]])),
                       wholeOf((*fields)[places[1]]), isSystem,
                       shortText((*fields)[places[3]]).value_or(std::string())});
    }
    if (rows.count() != table.statedRows())
        failCatalogue("Faltan objetos en el índice del archivo: está dañado.");
    return all;
}

}  // namespace

/// A row's kind can be damaged as well as its page: what looks like the definition of a user's table has to
/// be one.
std::vector<MdbCatalogEntry*> userTables(MdbHandle* file) {
    std::set<unsigned long> pages;
    std::set<std::uint32_t> ids;
    for (const CatalogueRow& row : catalogueRows(file)) {
        if (!ids.insert(row.id).second) failCatalogue(kCatalogueDamaged);
        const bool isTable = row.type == kTableType;
        const unsigned long page = isTable ? row.id & kPageOfId : row.id;
        const bool isUsers = page < pagesOf(file) && readDefinition(file, page) &&
                             file->pg_buf[kKindPlace] == kUserKind && !isSystemName(row.name);
        if (isUsers && !isTable) failCatalogue(kCatalogueDamaged);
        if (!isTable || (row.isSystem && !isUsers)) continue;
        if (!pages.insert(page).second) failCatalogue(kCatalogueDamaged);
    }

    std::vector<MdbCatalogEntry*> tables;
    for (guint i = 0; i < file->catalog->len; ++i) {
        auto* entry = static_cast<MdbCatalogEntry*>(g_ptr_array_index(file->catalog, i));
        if (entry->object_type != kTableType || pages.erase(entry->table_pg) == 0) continue;
        if (!isDeleted(entry->object_name)) tables.push_back(entry);
    }
    if (!pages.empty()) failCatalogue("Faltan tablas en el índice del archivo: está dañado.");
    return tables;
}

}  // namespace access_reader
