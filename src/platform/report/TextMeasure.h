#pragma once

#include <QString>

namespace tarmel::report {

struct Font {
    double size = 9;  ///< points
    bool isBold = false;
    bool isItalic = false;
};

/// How much room a text takes on the paper, in millimetres.
class TextMeasure {
 public:
    virtual ~TextMeasure() = default;
    /// Of one line.
    [[nodiscard]] virtual double width(const QString& text, const Font& font) const = 0;
    [[nodiscard]] virtual double lineHeight(const Font& font) const = 0;
};

/// For reports that nobody paints: the widths of a common face of print, without any font at hand.
class TableMeasure final : public TextMeasure {
 public:
    [[nodiscard]] double width(const QString& text, const Font& font) const override;
    [[nodiscard]] double lineHeight(const Font& font) const override;
};

}  // namespace tarmel::report
