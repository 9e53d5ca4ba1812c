#pragma once

#include <QWidget>

namespace tarmel::desktop {

/// What fills the main window while no screen is open.
class Backdrop final : public QWidget {
 public:
    explicit Backdrop(QWidget* parent = nullptr);

 protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarmel::desktop
