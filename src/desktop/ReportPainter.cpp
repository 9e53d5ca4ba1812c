#include "desktop/ReportPainter.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>

namespace tarmel::desktop {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
constexpr double kLineHeight = 1.2;      // times the size
constexpr double kMeasuredPixels = 100;  // to the point, so that no width is rounded

/// Narrow enough for many columns, and on every desktop under one of these names.
QFont face(const report::Font& font) {
    QFont made;
    made.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial"), QStringLiteral("Helvetica"),
                      QStringLiteral("DejaVu Sans")});
    made.setBold(font.isBold);
    made.setItalic(font.isItalic);
    made.setHintingPreference(QFont::PreferNoHinting);
    made.setKerning(false);
    return made;
}

QColor ink(double darkness) {
    return QColor::fromRgbF(1 - static_cast<float>(darkness), 1 - static_cast<float>(darkness),
                            1 - static_cast<float>(darkness));
}

class Brush {
 public:
    Brush(QPainter& painter, double unitsPerMillimetre, QPointF origin)
        : painter_(painter), scale_(unitsPerMillimetre), origin_(origin) {}

    void paint(const report::Item& item) {
        switch (item.kind) {
            case report::Element::Kind::Frame:
                return frame(item);
            case report::Element::Kind::Line:
                return line(item);
            case report::Element::Kind::Image:
                return picture(item);
            default:
                return text(item);
        }
    }

 private:
    [[nodiscard]] QRectF rect(const report::Box& box) const {
        return {origin_.x() + box.left * scale_, origin_.y() + box.top * scale_, box.width * scale_,
                box.height * scale_};
    }

    [[nodiscard]] QPen pen(double millimetres) const {
        QPen made(Qt::black, std::max(1.0, millimetres * scale_));
        made.setJoinStyle(Qt::MiterJoin);
        made.setCapStyle(Qt::FlatCap);
        return made;
    }

    void frame(const report::Item& item) {
        if (item.fill > 0) painter_.fillRect(rect(item.place), ink(item.fill));
        if (item.stroke <= 0) return;
        painter_.setPen(pen(item.stroke));
        painter_.setBrush(Qt::NoBrush);
        painter_.drawRect(rect(item.place));
    }

    void line(const report::Item& item) {
        const QRectF place = rect(item.place);
        painter_.setPen(pen(item.stroke));
        painter_.drawLine(place.topLeft(),
                          place.width() >= place.height() ? place.topRight() : place.bottomLeft());
    }

    void picture(const report::Item& item) {
        QSvgRenderer renderer(reportPicture(item.lines.value(0)));
        if (!renderer.isValid()) return;
        QRectF place(QPointF(),
                     QSizeF(renderer.defaultSize()).scaled(rect(item.place).size(), Qt::KeepAspectRatio));
        place.moveCenter(rect(item.place).center());
        renderer.render(&painter_, place);
    }

    void text(const report::Item& item) {
        const QFont font = fontOf(item.font);
        painter_.setFont(font);
        painter_.setPen(Qt::black);
        const QFontMetricsF metrics(font, painter_.device());
        const QRectF place = rect(item.place);
        const double height = item.font.size * kMillimetresPerPoint * kLineHeight * scale_;
        double baseline =
            place.top() + (height - metrics.ascent() - metrics.descent()) / 2 + metrics.ascent();
        for (const QString& line : item.lines) {
            const double room = place.width() - metrics.horizontalAdvance(line);
            double left = place.left();
            if (item.align == report::Align::Right) left += room;
            if (item.align == report::Align::Centre) left += room / 2;
            painter_.drawText(QPointF(left, baseline), line);
            baseline += height;
        }
    }

    /// In the device's own points, whatever these are: what counts is the height in millimetres.
    [[nodiscard]] QFont fontOf(const report::Font& wanted) const {
        QFont font = face(wanted);
        const double pixels = wanted.size * kMillimetresPerPoint * scale_;
        font.setPointSizeF(pixels * 72 / painter_.device()->logicalDpiY());
        return font;
    }

    QPainter& painter_;
    double scale_;
    QPointF origin_;
};

}  // namespace

const QFontMetricsF& FontMeasure::metrics(const report::Font& font) const {
    const auto key = std::tuple(font.size, font.isBold, font.isItalic);
    const auto known = metrics_.find(key);
    if (known != metrics_.end()) return known->second;
    QFont measured = face(font);
    measured.setPixelSize(static_cast<int>(font.size * kMeasuredPixels));
    return metrics_.emplace(key, QFontMetricsF(measured)).first->second;
}

double FontMeasure::width(const QString& text, const report::Font& font) const {
    return metrics(font).horizontalAdvance(text) / kMeasuredPixels * kMillimetresPerPoint;
}

double FontMeasure::lineHeight(const report::Font& font) const {
    return font.size * kMillimetresPerPoint * kLineHeight;
}

void paintPage(QPainter& painter, const report::Page& page, double unitsPerMillimetre, QPointF origin) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    Brush brush(painter, unitsPerMillimetre, origin);
    for (const report::Item& item : page.items)
        brush.paint(item);
    painter.restore();
}

QByteArray reportPicture(const QString& key) {
    QFile file(QStringLiteral(":/iconos/informe/%1.svg").arg(key));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace tarmel::desktop
