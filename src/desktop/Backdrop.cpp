#include "desktop/Backdrop.h"

#include <QLinearGradient>
#include <QPainter>
#include <QSvgRenderer>

namespace tarmel::desktop {

Backdrop::Backdrop(QWidget* parent) : QWidget(parent) {}

void Backdrop::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, height());
    sky.setColorAt(0, QColor(0xE8, 0xF0, 0xF2));
    sky.setColorAt(1, QColor(0xC9, 0xDC, 0xDC));
    painter.fillRect(rect(), sky);
    // The picture keeps its shape and stands on the lower edge.
    QSvgRenderer picture(QStringLiteral(":/iconos/fondo.svg"));
    const QSizeF size = picture.defaultSize();
    const double scale = std::max(width() / size.width(), height() * 0.6 / size.height());
    const QSizeF drawn = size * scale;
    picture.render(&painter, QRectF((width() - drawn.width()) / 2, height() - drawn.height(), drawn.width(),
                                    drawn.height()));
}

}  // namespace tarmel::desktop
