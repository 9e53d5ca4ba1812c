#include "platform/ado/RowBuffer.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>

#include "platform/basic/Text.h"

namespace tarmel::ado::detail {

using access_sql::Type;
using basic::Date;
using basic::Variant;

namespace {

enum Kind : std::uint8_t { kNull, kWhole, kDouble, kText, kBlob };

constexpr std::size_t kLargestBlock = 64 * 1024;
constexpr std::size_t kDayLength = 10;  // yyyy-mm-dd

/// Seven bits a byte, the lowest first; the high bit says that more follow.
void packNumber(std::vector<std::uint8_t>& out, std::uint64_t n) {
    while (n >= 0x80) {
        out.push_back(static_cast<std::uint8_t>(n | 0x80));
        n >>= 7;
    }
    out.push_back(static_cast<std::uint8_t>(n));
}

std::uint64_t unpackNumber(const std::uint8_t*& in) {
    std::uint64_t n = 0;
    for (int shift = 0;; shift += 7) {
        const std::uint8_t byte = *in++;
        n |= static_cast<std::uint64_t>(byte & 0x7f) << shift;
        if (byte < 0x80) return n;
    }
}

/// Small negative numbers stay short: the sign goes to the lowest bit.
std::uint64_t foldSign(std::int64_t n) {
    return (static_cast<std::uint64_t>(n) << 1) ^ static_cast<std::uint64_t>(n >> 63);
}
std::int64_t unfoldSign(std::uint64_t n) {
    return static_cast<std::int64_t>(n >> 1) ^ -static_cast<std::int64_t>(n & 1);
}

void packBytes(std::vector<std::uint8_t>& out, const void* data, int size) {
    packNumber(out, static_cast<std::uint64_t>(size));
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    out.insert(out.end(), bytes, bytes + size);
}

const std::uint8_t* behind(const std::uint8_t* field) {
    switch (*field++) {
        case kWhole:
            unpackNumber(field);
            return field;
        case kDouble:
            return field + sizeof(double);
        case kText:
        case kBlob: {
            const std::uint64_t size = unpackNumber(field);
            return field + size;
        }
        default:
            return field;
    }
}

Variant ofWhole(std::int64_t n, Type type) {
    switch (type) {
        case Type::Boolean:
            return n != 0;
        case Type::Single:
        case Type::Double:
        case Type::Currency:
            return static_cast<double>(n);
        case Type::Date:
            return Date(static_cast<double>(n));
        case Type::Text:
        case Type::Memo:
        case Type::Guid:
            return basic::CStr(static_cast<qint64>(n));
        default:
            return static_cast<qint64>(n);
    }
}

Variant ofDouble(double d, Type type) {
    switch (type) {
        case Type::Boolean:
            return d != 0;
        case Type::Date:
            return Date(d);
        case Type::Text:
        case Type::Memo:
        case Type::Guid:
            return basic::CStr(d);
        default:
            return d;
    }
}

Variant ofText(const char* utf8, std::size_t size, Type type) {
    const QString text = QString::fromUtf8(utf8, static_cast<qsizetype>(size));
    if (type != Type::Date) return text;
    // A column that another program filled may hold text that is no date: it is shown as it stands.
    Date date;
    const bool read = basic::resumeNext(
        [&] { date = Date::fromIso(size == kDayLength ? text + QStringLiteral(" 00:00:00") : text); });
    return read ? Variant(date) : Variant(text);
}

}  // namespace

void RowBuffer::grow(std::size_t size) {
    const std::size_t block = std::max(size, nextBlock_);
    nextBlock_ = std::min(nextBlock_ * 4, kLargestBlock);
    blocks_.push_back(std::make_unique<std::uint8_t[]>(block));
    bytes_ += block;
    free_ = blocks_.back().get();
    left_ = block;
}

void RowBuffer::append(sqlite3_stmt* statement) {
    packed_.clear();
    columns_ = sqlite3_column_count(statement);
    for (int c = 0; c < columns_; ++c) {
        switch (sqlite3_column_type(statement, c)) {
            case SQLITE_INTEGER:
                packed_.push_back(kWhole);
                packNumber(packed_, foldSign(sqlite3_column_int64(statement, c)));
                break;
            case SQLITE_FLOAT: {
                packed_.push_back(kDouble);
                const double d = sqlite3_column_double(statement, c);
                const std::size_t place = packed_.size();
                packed_.resize(place + sizeof d);
                std::memcpy(packed_.data() + place, &d, sizeof d);
                break;
            }
            case SQLITE_TEXT: {
                packed_.push_back(kText);
                const unsigned char* text = sqlite3_column_text(statement, c);
                packBytes(packed_, text, sqlite3_column_bytes(statement, c));
                break;
            }
            case SQLITE_BLOB: {
                packed_.push_back(kBlob);
                const void* data = sqlite3_column_blob(statement, c);
                packBytes(packed_, data, sqlite3_column_bytes(statement, c));
                break;
            }
            default:
                packed_.push_back(kNull);
        }
    }
    if (packed_.size() > left_) grow(packed_.size());
    std::memcpy(free_, packed_.data(), packed_.size());
    rows_.push_back(free_);
    free_ += packed_.size();
    left_ -= packed_.size();
}

const std::uint8_t* RowBuffer::field(std::size_t row, int column) const {
    const std::uint8_t* start = rows_[row];
    if (placedRow_ != row) {
        places_.assign(1, 0);
        places_.reserve(static_cast<std::size_t>(columns_));
        placedRow_ = row;
    }
    while (places_.size() <= static_cast<std::size_t>(column)) {
        places_.push_back(static_cast<std::uint32_t>(behind(start + places_.back()) - start));
    }
    return start + places_[static_cast<std::size_t>(column)];
}

Variant RowBuffer::value(std::size_t row, int column, Type type) const {
    const std::uint8_t* at = field(row, column);
    switch (*at++) {
        case kWhole:
            return ofWhole(unfoldSign(unpackNumber(at)), type);
        case kDouble: {
            double d = 0;
            std::memcpy(&d, at, sizeof d);
            return ofDouble(d, type);
        }
        case kText: {
            const std::uint64_t size = unpackNumber(at);
            return ofText(reinterpret_cast<const char*>(at), size, type);
        }
        case kBlob: {
            const std::uint64_t size = unpackNumber(at);
            return QString::fromLatin1(reinterpret_cast<const char*>(at), static_cast<qsizetype>(size));
        }
        default:
            return basic::Null{};
    }
}

}  // namespace tarmel::ado::detail
