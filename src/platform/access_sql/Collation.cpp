#include "platform/access_sql/Collation.h"

#include <QString>
#include <algorithm>
#include <array>
#include <cstdint>

namespace tarmel::access_sql {

namespace {

/// What a character counts in the order: first the letters, then, where all are the same, their accents.
struct Weight {
    std::uint32_t letter;
    std::uint32_t accent;
};

constexpr std::uint32_t kLettersApart = 4;    // leaves room for ñ behind n
constexpr std::uint32_t kFirstDigit = 0x100;  // behind all signs
constexpr std::uint32_t kFirstLetter = 0x200;
constexpr std::uint32_t kFirstOther = 0x1000;  // characters that are no Latin letters

constexpr std::uint32_t asciiLetter(unsigned char c) {
    if (c >= '0' && c <= '9') return kFirstDigit + (c - '0');
    if (c >= 'A' && c <= 'Z') c = static_cast<unsigned char>(c - 'A' + 'a');
    if (c >= 'a' && c <= 'z') return kFirstLetter + kLettersApart * (c - 'a');
    return c;
}

constexpr std::array<std::uint32_t, 128> kAsciiWeights = [] {
    std::array<std::uint32_t, 128> weights{};
    for (unsigned c = 0; c < weights.size(); ++c)
        weights[c] = asciiLetter(static_cast<unsigned char>(c));
    return weights;
}();

Weight weightOfLatin(char16_t c) {
    const QChar folded = QChar(c).toCaseFolded();
    if (folded == u'ñ') return {asciiLetter('n') + 1, 0};
    const QString parts = folded.decomposition();
    const bool accented = parts.size() > 1 && folded.decompositionTag() == QChar::Canonical;
    if (accented) {
        // Vietnamese and the like carry two accents: the letter is the first of the first part.
        QChar base = parts[0];
        const QString deeper = base.decomposition();
        if (!deeper.isEmpty()) base = deeper[0];
        if (base.unicode() < 128) return {kAsciiWeights[base.unicode()], folded.unicode()};
    }
    return {kFirstOther + folded.unicode(), 0};
}

constexpr std::size_t kLatinCharacters = 0x250;

const std::array<Weight, kLatinCharacters>& latinWeights() {
    static const auto weights = [] {
        std::array<Weight, kLatinCharacters> table{};
        for (std::size_t c = 0; c < table.size(); ++c) {
            table[c] = c < 128 ? Weight{kAsciiWeights[c], 0} : weightOfLatin(static_cast<char16_t>(c));
        }
        return table;
    }();
    return weights;
}

/// Reads UTF-8. A byte that is none of it counts as a character of its own, so that the order stays one.
class Characters {
 public:
    explicit Characters(std::string_view text) : text_(text) {}
    [[nodiscard]] bool atEnd() const { return place_ >= text_.size(); }
    char32_t next() {
        const auto first = static_cast<unsigned char>(text_[place_++]);
        if (first < 0x80) return first;
        const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
        if (first < 0xc2 || first > 0xf4) return kBadByte + first;
        char32_t c = first & (0x3f >> more);
        const std::size_t start = place_;
        for (int i = 0; i < more; ++i) {
            if (atEnd() || (static_cast<unsigned char>(text_[place_]) & 0xc0) != 0x80) {
                place_ = start;
                return kBadByte + first;
            }
            c = (c << 6) | (static_cast<unsigned char>(text_[place_++]) & 0x3f);
        }
        return c;
    }

 private:
    static constexpr char32_t kBadByte = 0x200000;
    std::string_view text_;
    std::size_t place_ = 0;
};

Weight weightOf(char32_t c) {
    if (c < kLatinCharacters) return latinWeights()[c];
    return {kFirstOther + static_cast<std::uint32_t>(c > 0x10ffff ? c : QChar::toCaseFolded(c)), 0};
}

char32_t folded(char32_t c) {
    if (c < 0x80) return c >= 'A' && c <= 'Z' ? c + 0x20 : c;
    return c > 0x10ffff ? c : QChar::toCaseFolded(c);
}

/// The two texts from the first place where one is not plain ASCII; `sofar` is the order of what stood
/// before.
int compareBeyondAscii(std::string_view a, std::string_view b) {
    Characters left(a), right(b);
    int accents = 0;
    while (!left.atEnd() && !right.atEnd()) {
        const Weight l = weightOf(left.next());
        const Weight r = weightOf(right.next());
        if (l.letter != r.letter) return l.letter < r.letter ? -1 : 1;
        if (accents == 0 && l.accent != r.accent) accents = l.accent < r.accent ? -1 : 1;
    }
    if (left.atEnd() != right.atEnd()) return left.atEnd() ? -1 : 1;
    return accents;
}

}  // namespace

int compareSpanish(std::string_view a, std::string_view b) {
    const std::size_t shared = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < shared; ++i) {
        const auto l = static_cast<unsigned char>(a[i]);
        const auto r = static_cast<unsigned char>(b[i]);
        if ((l | r) >= 0x80) return compareBeyondAscii(a.substr(i), b.substr(i));
        if (kAsciiWeights[l] != kAsciiWeights[r]) return kAsciiWeights[l] < kAsciiWeights[r] ? -1 : 1;
    }
    // What stands behind the shared part counts as a whole, accents or not.
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

bool matchesLike(std::string_view text, std::string_view pattern) {
    std::size_t t = 0, p = 0;
    std::size_t resumePattern = std::string_view::npos, resumeText = 0;
    const auto characterAt = [](std::string_view from, std::size_t& place) {
        Characters characters(from.substr(place));
        const char32_t c = characters.next();
        std::size_t length = 1;
        while (place + length < from.size() && c >= 0x80 && c <= 0x10ffff &&
               (static_cast<unsigned char>(from[place + length]) & 0xc0) == 0x80) {
            ++length;
        }
        place += length;
        return c;
    };
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '%') {
            resumePattern = ++p;
            resumeText = t;
            continue;
        }
        std::size_t nextText = t, nextPattern = p;
        const char32_t c = characterAt(text, nextText);
        const bool fits = p < pattern.size() &&
                          (pattern[p] == '_' ? (nextPattern = p + 1, true)
                                             : folded(characterAt(pattern, nextPattern)) == folded(c));
        if (fits) {
            t = nextText;
            p = nextPattern;
            continue;
        }
        if (resumePattern == std::string_view::npos) return false;
        p = resumePattern;
        characterAt(text, resumeText);
        t = resumeText;
    }
    while (p < pattern.size() && pattern[p] == '%')
        ++p;
    return p == pattern.size();
}

}  // namespace tarmel::access_sql
