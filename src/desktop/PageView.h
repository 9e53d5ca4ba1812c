#pragma once

#include <QAbstractScrollArea>
#include <QPixmap>
#include <memory>

#include "platform/report/Document.h"

namespace tarmel::desktop {

/// The page of a report that is looked at, on a desk: turned, zoomed and scrolled with the keyboard or the
/// mouse.
class PageView final : public QAbstractScrollArea {
    Q_OBJECT
 public:
    enum class Zoom { Width, Whole, Percent };

    explicit PageView(std::shared_ptr<report::Document> document, QWidget* parent = nullptr);

    [[nodiscard]] int page() const { return page_; }
    /// From 0; beyond the last one it is the last.
    void setPage(int page);
    [[nodiscard]] Zoom zoom() const { return zoom_; }
    /// What is in force, also when it follows from the window's size.
    [[nodiscard]] int percent() const;
    void setZoom(Zoom zoom);
    void setPercent(int percent);
    void zoomBy(int steps);
    /// More rows are there: the page may look otherwise.
    void rowsArrived();

 Q_SIGNALS:
    void pageChanged(int page);
    void zoomChanged();

 protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    [[nodiscard]] double pixelsPerMillimetre() const;
    [[nodiscard]] double pixelsAtFullSize() const;
    [[nodiscard]] QSize pageSize() const;
    [[nodiscard]] QPoint pageCorner() const;
    void placeBars();
    void draw();
    void turn(int pages, bool toTheFoot);

    std::shared_ptr<report::Document> document_;
    int page_ = 0;
    Zoom zoom_ = Zoom::Width;
    int percent_ = 100;
    QPixmap picture_;  // of the page as it stands; empty when it must be drawn anew
    int wheel_ = 0;
};

}  // namespace tarmel::desktop
