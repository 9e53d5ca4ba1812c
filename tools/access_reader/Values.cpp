#include "Values.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>

#include "Stream.h"

namespace access_reader {

namespace {

constexpr int kMoneyDecimals = 4;
constexpr std::size_t kNumericBytes = 17;  // a sign and four numbers of 32 bits, the highest first
constexpr int kMostDecimals = 28;

template <typename Number>
std::optional<Number> numberOf(const Field& field) {
    static_assert(std::endian::native == std::endian::little, "the file's own order");
    if (field.size != sizeof(Number)) return std::nullopt;
    Number number{};
    std::memcpy(&number, field.bytes, sizeof number);
    return number;
}

bool isUnreadable(char32_t c) {
    return c >= 0xD800 && c <= 0xDFFF;
}

void appendUtf8(std::string& text, char32_t c) {
    const auto byte = [&text](char32_t value) { text += static_cast<char>(value); };
    if (c < 0x80) {
        byte(c);
    } else if (c < 0x800) {
        byte(0xC0 | c >> 6);
        byte(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        byte(0xE0 | c >> 12);
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    } else {
        byte(0xF0 | c >> 18);
        byte(0x80 | (c >> 12 & 0x3F));
        byte(0x80 | (c >> 6 & 0x3F));
        byte(0x80 | (c & 0x3F));
    }
}

/// The text as 16-bit units. A text that begins with the mark FF FE is packed: characters of one byte, and a
/// zero byte goes to characters of two bytes and back.
std::optional<std::u16string> unitsOf(const unsigned char* bytes, std::size_t size) {
    std::u16string units;
    units.reserve(size);
    const bool packed = size >= 2 && bytes[0] == 0xFF && bytes[1] == 0xFE;
    bool narrow = packed;
    for (std::size_t i = packed ? 2 : 0; i < size;) {
        if (packed && bytes[i] == 0) {
            narrow = !narrow;
            ++i;
        } else if (narrow) {
            units += static_cast<char16_t>(bytes[i++]);
        } else {
            if (size - i < 2) return std::nullopt;
            units += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
            i += 2;
        }
    }
    return units;
}

std::optional<std::string> textOf(const unsigned char* bytes, std::size_t size) {
    const auto units = unitsOf(bytes, size);
    if (!units) return std::nullopt;
    std::string text;
    text.reserve(size);
    for (std::size_t i = 0; i < units->size(); ++i) {
        char32_t c = (*units)[i];
        const bool leads = c >= 0xD800 && c < 0xDC00 && i + 1 < units->size();
        if (leads && (*units)[i + 1] >= 0xDC00 && (*units)[i + 1] < 0xE000)
            c = 0x10000 + ((c - 0xD800) << 10) + ((*units)[++i] - 0xDC00);
        if (isUnreadable(c)) return std::nullopt;  // half a character: no text can hold it
        appendUtf8(text, c);
    }
    return text;
}

/// Digits with the point put in, and the sign.
std::string decimalText(std::string digits, bool negative, int decimals) {
    if (decimals > 0) {
        const auto places = static_cast<std::size_t>(decimals);
        if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
        digits.insert(digits.size() - places, 1, '.');
    }
    return negative ? "-" + digits : digits;
}

std::optional<std::string> money(const Field& field) {
    const auto number = numberOf<std::int64_t>(field);
    if (!number) return std::nullopt;
    const auto size = static_cast<std::uint64_t>(*number);
    return decimalText(std::to_string(*number < 0 ? 0 - size : size), *number < 0, kMoneyDecimals);
}

std::optional<std::string> numeric(const Field& field) {
    const int decimals = decimalPlaces(*field.column);
    if (field.size != kNumericBytes || decimals < 0 || decimals > kMostDecimals) return std::nullopt;
    std::array<std::uint32_t, 4> words{};
    std::memcpy(words.data(), field.bytes + 1, sizeof words);
    std::string digits;
    for (bool left = true; left;) {
        std::uint64_t rest = 0;
        left = false;
        for (std::uint32_t& word : words) {
            const std::uint64_t whole = rest << 32 | word;
            word = static_cast<std::uint32_t>(whole / 10);
            rest = whole % 10;
            left = left || word != 0;
        }
        digits.insert(digits.begin(), static_cast<char>('0' + rest));
    }
    const bool zero = digits == "0";
    return decimalText(digits, (field.bytes[0] & 0x80) != 0 && !zero, decimals);
}

/// The shortest text that reads back as the same single: that is the number that its user typed.
std::optional<std::string> single(const Field& field) {
    const auto number = numberOf<float>(field);
    if (!number || !std::isfinite(*number)) return std::nullopt;
    std::array<char, 64> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), *number, std::chars_format::fixed);
    return end.ec == std::errc() ? std::optional(std::string(text.data(), end.ptr)) : std::nullopt;
}

std::string hexOf(const unsigned char* bytes, std::size_t size) {
    std::string hex;
    hex.reserve(2 * size);
    appendHex(hex, bytes, size);
    return hex;
}

/// The exact bits, the highest first.
std::optional<std::string> bitsOf(const Field& field) {
    const auto bits = numberOf<std::uint64_t>(field);
    if (!bits) return std::nullopt;
    std::array<unsigned char, 8> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(*bits >> (56 - 8 * i));
    return hexOf(bytes.data(), bytes.size());
}

template <typename Number>
std::optional<std::string> whole(const Field& field) {
    const auto number = numberOf<Number>(field);
    return number ? std::optional(std::to_string(*number)) : std::nullopt;
}

struct Value {
    char kind;
    std::optional<std::string> text;
};

Value valueOf(MdbHandle* file, const Field& field) {
    switch (field.column->col_type) {
        case MDB_BYTE:
            return {'#', whole<std::uint8_t>(field)};
        case MDB_INT:
            return {'#', whole<std::int16_t>(field)};
        case MDB_LONGINT:
            return {'#', whole<std::int32_t>(field)};
        case MDB_MONEY:
            return {'~', money(field)};
        case MDB_NUMERIC:
            return {'~', numeric(field)};
        case MDB_FLOAT:
            return {'~', single(field)};
        case MDB_DOUBLE:
        case MDB_DATETIME:
            return {'=', bitsOf(field)};
        case MDB_TEXT:
            return {'"', textOf(field.bytes, field.size)};
        case MDB_MEMO: {
            const auto bytes = longValue(file, field);
            if (!bytes) return {'"', std::nullopt};
            return {'"', textOf(reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size())};
        }
        case MDB_OLE: {
            const auto bytes = longValue(file, field);
            if (!bytes) return {'x', std::nullopt};
            return {'x', hexOf(reinterpret_cast<const unsigned char*>(bytes->data()), bytes->size())};
        }
        case MDB_REPID:
            if (field.size != 16) return {'x', std::nullopt};
            [[fallthrough]];
        default:
            return {'x', hexOf(field.bytes, field.size)};
    }
}

}  // namespace

// Some versions of the library give the two in each other's place; there are never more decimals than digits.
int digits(const MdbColumn& column) {
    return std::max(column.col_prec, column.col_scale);
}
int decimalPlaces(const MdbColumn& column) {
    return std::min(column.col_prec, column.col_scale);
}

std::optional<long> wholeNumber(const Field& field) {
    if (field.isNull) return std::nullopt;
    if (const auto number = numberOf<std::int32_t>(field)) return *number;
    if (const auto number = numberOf<std::int16_t>(field)) return *number;
    return std::nullopt;
}

std::optional<std::string> shortText(const Field& field) {
    return field.isNull ? std::string() : textOf(field.bytes, field.size);
}

const char* typeName(const MdbColumn& column) {
    switch (column.col_type) {
        case MDB_BOOL:
            return "bool";
        case MDB_BYTE:
            return "byte";
        case MDB_INT:
            return "int";
        case MDB_LONGINT:
            return "long";
        case MDB_MONEY:
            return "money";
        case MDB_FLOAT:
            return "single";
        case MDB_DOUBLE:
            return "double";
        case MDB_DATETIME:
            return "date";
        case MDB_BINARY:
            return "binary";
        case MDB_TEXT:
            return "text";
        case MDB_OLE:
            return "ole";
        case MDB_MEMO:
            return "memo";
        case MDB_REPID:
            return "guid";
        case MDB_NUMERIC:
            return "numeric";
        default:
            return nullptr;
    }
}

void appendValue(std::string& line, MdbHandle* file, const Field& field) {
    line += '\t';
    if (field.column->col_type == MDB_BOOL) {  // its value is the very mark of Null
        line += field.isNull ? "#0" : "#-1";
        return;
    }
    if (field.isNull) {
        line += '-';
        return;
    }
    const Value value = valueOf(file, field);
    if (!value.text) {
        line += '!';
        return;
    }
    line += value.kind;
    if (value.kind == '"')
        appendEscaped(line, *value.text);
    else
        line += *value.text;
}

}  // namespace access_reader
