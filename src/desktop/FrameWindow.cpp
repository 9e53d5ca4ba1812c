#include "desktop/FrameWindow.h"

#include <QStackedWidget>
#include <QTabBar>
#include <QToolBar>

#include "desktop/FormView.h"
#include "ui_frm03_Principal.h"

namespace tarmel::desktop {

namespace {

/// The tab's text: a caption's "&" is no shortcut there.
QString tabText(const FormView& view) {
    return view.surface().windowTitle().replace(u'&', QLatin1String("&&"));
}

}  // namespace

FrameWindow::FrameWindow() {
    Ui::frm03_Principal ui;
    ui.setupUi(this);
    pages_ = ui.decoPestanas;
    centre_ = ui.decoCentro;
    // The version's button stands at the far end of the bar.
    auto* space = new QWidget(ui.tlbBarraHerramientas);
    space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    ui.tlbBarraHerramientas->addWidget(space);
    ui.tlbBarraHerramientas->addWidget(ui.pbVersion);

    pages_->setDocumentMode(true);
    pages_->setTabsClosable(true);
    pages_->setMovable(true);
    pages_->tabBar()->setFocusPolicy(Qt::NoFocus);
    pages_->setFocusPolicy(Qt::NoFocus);
    pages_->tabBar()->setExpanding(false);
    QObject::connect(pages_, &QTabWidget::currentChanged, this, [this](int index) {
        FormView* view = viewAt(index);
        if (!quiet_ && view && pageChosen) pageChosen(*view);
    });
    QObject::connect(pages_, &QTabWidget::tabCloseRequested, this, [this](int index) {
        FormView* view = viewAt(index);
        if (view && pageClosed) pageClosed(*view);
    });
    showPagesOrPicture();
}

FrameWindow::~FrameWindow() {
    // Its tabs tell of changes while they are taken down.
    pages_->disconnect(this);
}

FormView* FrameWindow::viewAt(int index) const {
    const auto found = views_.find(pages_->widget(index));
    return found == views_.end() ? nullptr : found->second;
}

void FrameWindow::addPage(FormView& view) {
    if (holds(view)) return raisePage(view);
    quiet_ = true;
    views_[&view.surface()] = &view;
    const int index = pages_->addTab(&view.surface(), tabText(view));
    QObject::connect(&view.surface(), &QWidget::windowTitleChanged, pages_, [this, &view] {
        const int at = pages_->indexOf(&view.surface());
        if (at >= 0) pages_->setTabText(at, tabText(view));
    });
    if (auto* close = pages_->tabBar()->tabButton(index, QTabBar::RightSide)) {
        close->setToolTip(QStringLiteral("Cerrar"));
        close->setFocusPolicy(Qt::NoFocus);
    }
    pages_->setCurrentIndex(index);
    quiet_ = false;
    showPagesOrPicture();
}

void FrameWindow::removePage(FormView& view) {
    quiet_ = true;
    const int index = pages_->indexOf(&view.surface());
    if (index >= 0) pages_->removeTab(index);
    view.surface().setParent(nullptr);
    QObject::disconnect(&view.surface(), nullptr, pages_, nullptr);
    views_.erase(&view.surface());
    quiet_ = false;
    showPagesOrPicture();
}

void FrameWindow::raisePage(FormView& view) {
    quiet_ = true;
    pages_->setCurrentWidget(&view.surface());
    quiet_ = false;
}

bool FrameWindow::holds(const FormView& view) const {
    return views_.contains(&view.surface());
}

FormView* FrameWindow::pageInFront() const {
    return viewAt(pages_->currentIndex());
}

void FrameWindow::showPagesOrPicture() {
    centre_->setCurrentIndex(pages_->count() > 0 ? 1 : 0);
}

}  // namespace tarmel::desktop
