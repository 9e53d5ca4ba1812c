#pragma once

#include <QByteArray>
#include <QFont>
#include <QFontMetricsF>
#include <QPointF>
#include <map>
#include <tuple>

#include "platform/report/Document.h"
#include "platform/report/TextMeasure.h"

class QPainter;

namespace tarmel::desktop {

/// Measures with the face in which reports are painted.
class FontMeasure final : public report::TextMeasure {
 public:
    [[nodiscard]] double width(const QString& text, const report::Font& font) const override;
    [[nodiscard]] double lineHeight(const report::Font& font) const override;

 private:
    const QFontMetricsF& metrics(const report::Font& font) const;
    mutable std::map<std::tuple<double, bool, bool>, QFontMetricsF> metrics_;
};

/// Paints a page on a window, a printer or a PDF: so many of the device's units to the millimetre, from the
/// paper's corner at `origin`.
void paintPage(QPainter& painter, const report::Page& page, double unitsPerMillimetre, QPointF origin = {});

/// The SVG of a picture's key; empty when there is none.
[[nodiscard]] QByteArray reportPicture(const QString& key);

}  // namespace tarmel::desktop
