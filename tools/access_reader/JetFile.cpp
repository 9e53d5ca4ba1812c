#include "JetFile.h"

#include <cstring>
#include <set>

#include "Rows.h"
#include "Stream.h"
#include "Values.h"

namespace access_reader {

namespace {

constexpr int kLastNumberPlace = 20;
constexpr std::uint32_t kSystemFlags = 0x80000002;
constexpr int kTableType = 1;
const char* const kCatalogue = "MSysObjects";

[[noreturn]] void failCatalogue(const char* words) {
    throw Failure{kCatalogue, words};
}

/// What Access deleted stays under such a name until the file is compacted.
bool isDeleted(const std::string& name) {
    return name.starts_with("~TMPCLP");
}

long wholeOf(const Field& field) {
    const auto value = wholeNumber(field);
    if (!value) failCatalogue("El índice de objetos del archivo está dañado.");
    return *value;
}

}  // namespace

Table::Table(MdbHandle* file, MdbCatalogEntry* entry) : name_(entry->object_name) {
    if (mdb_read_pg(file, entry->table_pg) <= 0 || file->pg_buf[0] != MDB_PAGE_TABLE)
        throw Failure{name_, "La definición de la tabla no se puede leer: el archivo está dañado."};
    lastNumber_ = static_cast<std::int32_t>(mdb_pg_get_int32(file, kLastNumberPlace));
    definition_.reset(mdb_read_table(entry));
    const GPtrArray* read = definition_ ? mdb_read_columns(definition_.get()) : nullptr;
    if (!read || read->len != definition_->num_cols || read->len == 0)
        throw Failure{name_, "Las columnas de la tabla no se pueden leer: el archivo está dañado."};
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

/// The catalogue is a table like any other, and damage to its own pages would make tables vanish unseen: so
/// its rows are counted too.
std::vector<MdbCatalogEntry*> userTables(MdbHandle* file) {
    MdbCatalogEntry* catalogue = systemTable(file, kCatalogue);
    if (!catalogue) failCatalogue("El archivo no tiene índice de objetos.");
    const Table table(file, catalogue);
    const int id = table.indexOf("Id");
    const int type = table.indexOf("Type");
    const int flags = table.indexOf("Flags");
    if (id < 0 || type < 0 || flags < 0) failCatalogue("El índice de objetos del archivo está dañado.");
    std::set<unsigned long> pages;
    Rows rows(table);
    while (const auto* fields = rows.next()) {
        if (wholeOf((*fields)[static_cast<std::size_t>(type)]) != kTableType) continue;
        const Field& flag = (*fields)[static_cast<std::size_t>(flags)];
        if (!flag.isNull && (static_cast<std::uint32_t>(wholeOf(flag)) & kSystemFlags) != 0) continue;
        pages.insert(static_cast<unsigned long>(wholeOf((*fields)[static_cast<std::size_t>(id)])) &
                     0x00FFFFFF);
    }
    if (rows.count() != table.statedRows())
        failCatalogue("Faltan objetos en el índice del archivo: está dañado.");

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
