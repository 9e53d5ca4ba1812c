#pragma once

#include <QComboBox>

namespace tarmel::desktop {

/// A combo whose text ends in dots where it is cut, instead of in half a letter.
class ChoiceBox final : public QComboBox {
 public:
    using QComboBox::QComboBox;

 protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarmel::desktop
