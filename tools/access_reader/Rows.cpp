#include "Rows.h"

#include <algorithm>
#include <cstring>

#include "Stream.h"

namespace access_reader {

namespace {

constexpr unsigned kDeleted = 0x8000;
constexpr unsigned kMoved = 0x4000;
constexpr unsigned kPlaceMask = 0x1FFF;
constexpr int kMostMoves = 16;  // a row moves when it has grown; a longer way is a circle
constexpr std::size_t kPointerBytes = 4;

constexpr std::size_t kLongHead = 12;  // length with its kind, page and slot, something unknown
constexpr std::uint32_t kInRow = 0x80000000;
constexpr std::uint32_t kOnOnePage = 0x40000000;
constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
constexpr std::uint32_t kLongest = 64u << 20;
constexpr char kLongPage[] = "LVAL";

struct Slot {
    unsigned flags = 0;
    int start = 0;
    std::size_t size = 0;
};

unsigned number16(const unsigned char* page, std::size_t place) {
    return page[place] | static_cast<unsigned>(page[place + 1]) << 8;
}
std::uint32_t number32(const unsigned char* bytes) {
    return bytes[0] | bytes[1] << 8 | bytes[2] << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

unsigned slotsOf(const MdbHandle* file, const unsigned char* page) {
    return number16(page, file->fmt->row_count_offset);
}

/// Rows are laid from the end of the page, each ends where the one before it begins. Nothing when the page
/// contradicts itself.
std::optional<Slot> slotOf(const MdbHandle* file, const unsigned char* page, unsigned slot) {
    const std::size_t table = file->fmt->row_count_offset + 2u;
    const auto pageSize = static_cast<std::size_t>(file->fmt->pg_size);
    const unsigned slots = slotsOf(file, page);
    const std::size_t heads = table + std::size_t{2} * slots;
    if (slot >= slots || heads > pageSize) return std::nullopt;
    const unsigned value = number16(page, table + std::size_t{2} * slot);
    const std::size_t start = value & kPlaceMask;
    const std::size_t end =
        slot == 0 ? pageSize : number16(page, table + std::size_t{2} * (slot - 1)) & kPlaceMask;
    if (start < heads || start > end || end > pageSize) return std::nullopt;
    return Slot{value & ~kPlaceMask, static_cast<int>(start), end - start};
}

/// A slot on another page, which lies in the second buffer afterwards.
std::optional<Slot> slotElsewhere(MdbHandle* file, std::uint32_t pointer) {
    if (mdb_read_alt_pg(file, pointer >> 8) <= 0 || file->alt_pg_buf[0] != MDB_PAGE_DATA) return std::nullopt;
    return slotOf(file, file->alt_pg_buf, pointer & 0xFF);
}

}  // namespace

Rows::Rows(const Table& table) : table_(table), file_(table.definition()->entry->mdb) {
    mdb_rewind_table(table.definition());
    for (const MdbColumn* column : table.columns())
        fields_.push_back({column, true, nullptr, 0});
}

void Rows::fail(const char* words) const {
    throw Failure{table_.name(), "fila " + std::to_string(count_ + 1) + ": " + words};
}

const std::vector<Field>* Rows::next() {
    if (away_) std::copy(home_.begin(), home_.end(), file_->pg_buf);
    away_ = false;
    for (;;) {
        while (slot_ < slots_) {
            if (!readSlot(slot_++)) continue;
            ++count_;
            return &fields_;
        }
        if (!nextPage()) return nullptr;
    }
}

bool Rows::nextPage() {
    if (mdb_read_next_dpg(table_.definition()) == 0) return false;
    slot_ = 0;
    slots_ = slotsOf(file_, file_->pg_buf);
    return true;
}

/// False for a slot whose row is gone, or is read where it was before it moved.
bool Rows::readSlot(unsigned slot) {
    std::optional<Slot> place = slotOf(file_, file_->pg_buf, slot);
    if (!place) fail("la página en la que está la fila está dañada.");
    if ((place->flags & kDeleted) != 0) return false;
    if ((place->flags & kMoved) == 0) {
        crack(place->start, place->size);
        return true;
    }
    const unsigned char* page = file_->pg_buf;
    for (int moves = 0; (place->flags & kMoved) != 0; ++moves) {
        if (moves == kMostMoves || place->size < kPointerBytes)
            fail("no se encuentra la fila, que se movió.");
        place = slotElsewhere(file_, number32(page + place->start));
        // Where a moved row lies is marked as deleted, or it would come twice: as itself and as the moved
        // one.
        if (!place || (place->flags & kDeleted) == 0) fail("no se encuentra la fila, que se movió.");
        page = file_->alt_pg_buf;
    }
    if (static_cast<unsigned long>(mdb_get_int32(file_->alt_pg_buf, 4)) !=
        table_.definition()->entry->table_pg)
        fail("la fila se movió a una página que no es de su tabla.");
    // The library reads rows off its first buffer; long values are then looked up through the second.
    std::copy(file_->pg_buf, file_->pg_buf + home_.size(), home_.begin());
    away_ = true;
    mdb_swap_pgbuf(file_);
    crack(place->start, place->size);
    return true;
}

void Rows::crack(int start, std::size_t size) {
    std::array<MdbField, MDB_MAX_COLS> raw{};
    if (size < 2 || mdb_crack_row(table_.definition(), start, size, raw.data()) < 0)
        fail("no se puede leer.");
    const unsigned char* from = file_->pg_buf + start;
    const unsigned char* to = from + size;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        Field& field = fields_[i];
        field.isNull = raw[i].is_null != 0;
        field.bytes = static_cast<const unsigned char*>(raw[i].value);
        field.size = raw[i].siz > 0 ? static_cast<std::size_t>(raw[i].siz) : 0;
        if (field.isNull || field.size == 0) continue;
        const bool inside = field.bytes >= from && field.bytes <= to &&
                            field.size <= static_cast<std::size_t>(to - field.bytes);
        if (raw[i].siz < 0 || !inside) fail("no se puede leer.");
    }
}

std::optional<std::string> longValue(MdbHandle* file, const Field& field) {
    if (field.size == 0) return std::string();
    if (field.size < kLongHead) return std::nullopt;
    const std::uint32_t head = number32(field.bytes);
    const std::uint32_t length = head & kLengthMask;
    if (length > kLongest) return std::nullopt;
    if ((head & kInRow) != 0) {
        if (length > field.size - kLongHead) return std::nullopt;
        return std::string(reinterpret_cast<const char*>(field.bytes) + kLongHead, length);
    }
    const bool alone = (head & kOnOnePage) != 0;
    std::string whole;
    for (std::uint32_t pointer = number32(field.bytes + 4); pointer != 0;) {
        const std::optional<Slot> place = slotElsewhere(file, pointer);
        if (!place || (place->flags & (kDeleted | kMoved)) != 0) return std::nullopt;
        if (std::memcmp(file->alt_pg_buf + 4, kLongPage, 4) != 0) return std::nullopt;
        const unsigned char* piece = file->alt_pg_buf + place->start;
        const std::size_t lead = alone ? 0 : kPointerBytes;
        if (place->size <= lead) return std::nullopt;
        pointer = alone ? 0 : number32(piece);
        whole.append(reinterpret_cast<const char*>(piece) + lead, place->size - lead);
        if (whole.size() >= length) break;
    }
    if (whole.size() < length) return std::nullopt;
    whole.resize(length);
    return whole;
}

}  // namespace access_reader
