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

constexpr std::array kWidths{
    Width{u" !'(),-./:;I[\\]fijlt|ªº·", 0.28},
    Width{u"r\"*°{}", 0.36},
    Width{u"Jcksvxyz?", 0.51},
    Width{u"mMw", 0.83},
    Width{u"W%@…", 1.0},
};

double em(QChar character) {
    if (character.unicode() > 127) {
        const QString parts = character.decomposition();
        if (!parts.isEmpty()) character = parts.front();
    }
    for (const Width& width : kWidths) {
        if (width.characters.contains(character)) return width.em;
    }
    return character.isUpper() ? 0.73 : 0.57;
}

}  // namespace

double TableMeasure::width(const QString& text, const Font& font) const {
    double sum = 0;
    for (const QChar character : text)
        sum += em(character);
    return sum * font.size * kMillimetresPerPoint * (font.isBold ? kBold : 1);
}

double TableMeasure::lineHeight(const Font& font) const {
    return font.size * kMillimetresPerPoint * kLineHeight;
}

}  // namespace tarmel::report
