#pragma once

#include <QLabel>

namespace tarmel::desktop {

/// A value that may be longer than its place: what does not fit ends in dots and is told by the tool tip.
class DataLabel final : public QLabel {
 public:
    explicit DataLabel(QWidget* parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

 private:
    [[nodiscard]] QString shownText() const;
};

}  // namespace tarmel::desktop
