#include "platform/report/TextMeasure.h"

#include <array>

namespace tarmel::report {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
constexpr double kLineHeight = 1.2;  // times the size
constexpr double kBold = 1.07;

struct Width {
    QStringView characters;
    double em;
};

constexpr double kCapital = 0.73;
constexpr double kOther = 0.57;
constexpr std::array kWidths{
    Width{u" !'(),-./:;I[\\]fijlt|ªº·", 0.28},
    Width{u"r\"*°{}", 0.36},
    Width{u"Jcksvxyz?", 0.51},
    Width{u"mMw", 0.83},
    Width{u"W%@…", 1.0},
};

double searched(QChar character) {
    for (const Width& width : kWidths) {
        if (width.characters.contains(character)) return width.em;
    }
    return character.isUpper() ? kCapital : kOther;
}

/// Nearly every letter of a report is one of these.
constexpr ushort kAscii = 128;
const std::array<double, kAscii>& asciiWidths() {
    static const std::array<double, kAscii> widths = [] {
        std::array<double, kAscii> all{};
        for (ushort i = 0; i < kAscii; ++i)
            all.at(i) = searched(QChar(i));
        return all;
    }();
    return widths;
}

double em(QChar character, const std::array<double, kAscii>& ascii) {
    if (character.unicode() >= kAscii) {
        const QString parts = character.decomposition();
        if (!parts.isEmpty()) character = parts.front();
    }
    return character.unicode() < kAscii ? ascii[character.unicode()] : searched(character);
}

}  // namespace

double TableMeasure::width(const QString& text, const Font& font) const {
    const auto& ascii = asciiWidths();
    double sum = 0;
    for (const QChar character : text)
        sum += em(character, ascii);
    return sum * font.size * kMillimetresPerPoint * (font.isBold ? kBold : 1);
}

double TableMeasure::lineHeight(const Font& font) const {
    return font.size * kMillimetresPerPoint * kLineHeight;
}

}  // namespace tarmel::report
