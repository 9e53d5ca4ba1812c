#include "desktop/DataLabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>

namespace tarmel::desktop {

DataLabel::DataLabel(QWidget* parent) : QLabel(parent) {}

QSize DataLabel::sizeHint() const {
    return {fontMetrics().horizontalAdvance(text()) + 4, QLabel::sizeHint().height()};
}

QSize DataLabel::minimumSizeHint() const {
    return {std::min(sizeHint().width(), fontMetrics().averageCharWidth() * 6), sizeHint().height()};
}

QString DataLabel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
}

void DataLabel::paintEvent(QPaintEvent*) {
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft),
                          palette(), isEnabled(), shownText(), foregroundRole());
}

bool DataLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        const bool cut = shownText() != text();
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), cut ? text() : QString(), this);
        return true;
    }
    return QLabel::event(event);
}

}  // namespace tarmel::desktop
