#include "desktop/PageView.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>

#include "desktop/ReportPainter.h"

namespace tarmel::desktop {

namespace {

constexpr int kMargin = 18;  // pixels of the desk around the page
constexpr int kShadow = 3;
constexpr double kMillimetresPerInch = 25.4;
constexpr int kLeast = 25;
constexpr int kMost = 400;
constexpr std::array kSteps{25, 33, 50, 67, 75, 90, 100, 110, 125, 150, 175, 200, 300, 400};
constexpr int kWheelClick = 120;

}  // namespace

PageView::PageView(std::shared_ptr<report::Document> document, QWidget* parent)
    : QAbstractScrollArea(parent), document_(std::move(document)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("Página del informe"));
    viewport()->setBackgroundRole(QPalette::NoRole);
    verticalScrollBar()->setSingleStep(40);
    horizontalScrollBar()->setSingleStep(40);
}

// --- Page and zoom

void PageView::setPage(int page) {
    const int last = document_->pagesSoFar() - 1;
    const int wanted = std::clamp(page, 0, std::max(0, last));
    if (wanted == page_) return;
    page_ = wanted;
    picture_ = QPixmap();
    verticalScrollBar()->setValue(0);
    viewport()->update();
    Q_EMIT pageChanged(page_);
}

void PageView::setZoom(Zoom zoom) {
    if (zoom == Zoom::Percent) percent_ = percent();
    zoom_ = zoom;
    placeBars();
    Q_EMIT zoomChanged();
}

void PageView::setPercent(int percent) {
    percent_ = std::clamp(percent, kLeast, kMost);
    zoom_ = Zoom::Percent;
    placeBars();
    Q_EMIT zoomChanged();
}

int PageView::percent() const {
    return static_cast<int>(std::lround(100 * pixelsPerMillimetre() / pixelsAtFullSize()));
}

void PageView::zoomBy(int steps) {
    const int now = percent();
    if (steps > 0) {
        const auto next = std::upper_bound(kSteps.begin(), kSteps.end(), now);
        return setPercent(next == kSteps.end() ? kMost : *next);
    }
    const auto next = std::lower_bound(kSteps.begin(), kSteps.end(), now);
    setPercent(next == kSteps.begin() ? kLeast : *(next - 1));
}

void PageView::rowsArrived() {
    const int last = document_->pagesSoFar() - 1;
    if (page_ > last) return setPage(last);
    picture_ = QPixmap();
    viewport()->update();
}

double PageView::pixelsAtFullSize() const {
    return logicalDpiX() / kMillimetresPerInch;
}

double PageView::pixelsPerMillimetre() const {
    const report::Report& report = document_->report();
    // The bar's room is left free whether it shows or not: fitting must not make it come and go.
    const int bar = verticalScrollBar()->sizeHint().width();
    const double across = (width() - bar - 2 * kMargin) / report.paperWidth();
    const double down = (height() - 2 * kMargin) / report.paperHeight();
    const double least = pixelsAtFullSize() * kLeast / 100;
    switch (zoom_) {
        case Zoom::Width:
            return std::max(least, across);
        case Zoom::Whole:
            return std::max(least, std::min(across, down));
        case Zoom::Percent:
            break;
    }
    return pixelsAtFullSize() * percent_ / 100;
}

QSize PageView::pageSize() const {
    const double scale = pixelsPerMillimetre();
    const report::Report& report = document_->report();
    return {static_cast<int>(std::lround(report.paperWidth() * scale)),
            static_cast<int>(std::lround(report.paperHeight() * scale))};
}

/// In the viewport: in the middle where there is room.
QPoint PageView::pageCorner() const {
    const QSize page = pageSize();
    const int left = std::max(kMargin, (viewport()->width() - page.width()) / 2);
    const int top = std::max(kMargin, (viewport()->height() - page.height()) / 2);
    return {left - horizontalScrollBar()->value(), top - verticalScrollBar()->value()};
}

void PageView::placeBars() {
    picture_ = QPixmap();
    const QSize all = pageSize() + QSize(2 * kMargin, 2 * kMargin);
    const QSize seen = viewport()->size();
    horizontalScrollBar()->setPageStep(seen.width());
    horizontalScrollBar()->setRange(0, std::max(0, all.width() - seen.width()));
    verticalScrollBar()->setPageStep(seen.height());
    verticalScrollBar()->setRange(0, std::max(0, all.height() - seen.height()));
    viewport()->update();
}

// --- Painting

void PageView::draw() {
    const double ratio = devicePixelRatioF();
    picture_ = QPixmap(pageSize() * ratio);
    picture_.setDevicePixelRatio(ratio);
    picture_.fill(Qt::white);
    QPainter painter(&picture_);
    paintPage(painter, document_->page(page_), pixelsPerMillimetre());
}

void PageView::paintEvent(QPaintEvent*) {
    if (picture_.isNull()) draw();
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), QColor(0xD6, 0xDE, 0xE1));
    const QRect page(pageCorner(), pageSize());
    painter.fillRect(page.translated(kShadow, kShadow), QColor(0x9F, 0xAD, 0xB2));
    painter.drawPixmap(page.topLeft(), picture_);
    painter.setPen(QColor(hasFocus() ? 0x0F6E6E : 0x8FA0A6));
    painter.drawRect(page.adjusted(-1, -1, 0, 0));
}

void PageView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    placeBars();
    if (zoom_ != Zoom::Percent) Q_EMIT zoomChanged();
}

// --- Keys and wheel

/// Turns to another page, seen from its head or from its foot.
void PageView::turn(int pages, bool toTheFoot) {
    const int before = page_;
    setPage(page_ + pages);
    if (page_ != before && toTheFoot) verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void PageView::keyPressEvent(QKeyEvent* event) {
    QScrollBar& bar = *verticalScrollBar();
    const bool atFoot = bar.value() == bar.maximum();
    const bool atHead = bar.value() == bar.minimum();
    switch (event->key()) {
        case Qt::Key_PageDown:
        case Qt::Key_Space:
            return turn(1, false);
        case Qt::Key_PageUp:
        case Qt::Key_Backspace:
            return turn(-1, false);
        case Qt::Key_Home:
            return setPage(0);
        case Qt::Key_End:
            return setPage(document_->pagesSoFar() - 1);
        case Qt::Key_Down:
            return atFoot ? turn(1, false) : bar.triggerAction(QScrollBar::SliderSingleStepAdd);
        case Qt::Key_Up:
            return atHead ? turn(-1, true) : bar.triggerAction(QScrollBar::SliderSingleStepSub);
        case Qt::Key_Right:
            return horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
        case Qt::Key_Left:
            return horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
        default:
            QAbstractScrollArea::keyPressEvent(event);
    }
}

void PageView::wheelEvent(QWheelEvent* event) {
    const int delta = event->angleDelta().y();
    const QScrollBar& bar = *verticalScrollBar();
    const bool zooms = event->modifiers().testFlag(Qt::ControlModifier);
    const bool turns = delta < 0 ? bar.value() == bar.maximum() : bar.value() == bar.minimum();
    if (!zooms && !turns) {
        wheel_ = 0;
        return QAbstractScrollArea::wheelEvent(event);
    }
    // A fine wheel sends many small turns.
    wheel_ += delta;
    event->accept();
    if (std::abs(wheel_) < kWheelClick) return;
    const bool onwards = std::exchange(wheel_, 0) < 0;
    if (zooms) return zoomBy(onwards ? -1 : 1);
    turn(onwards ? 1 : -1, !onwards);
}

}  // namespace tarmel::desktop
