#include "desktop/ChoiceBox.h"

#include <QStylePainter>

namespace tarmel::desktop {

void ChoiceBox::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect place =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    // A text that the list does not offer stands in the placeholder.
    const QString text = currentIndex() < 0 ? placeholderText() : option.currentText;
    option.currentText = fontMetrics().elidedText(text, Qt::ElideRight, place.width() - 4);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

}  // namespace tarmel::desktop
