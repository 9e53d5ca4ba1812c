#include "desktop/PlainBindings.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTabBar>

#include "desktop/FormView.h"
#include "desktop/Keys.h"

namespace tarmel::desktop {

using forms::Property;

void CaptionBinding::showAll() {
    Binding::showAll();
    showCaption();
}

void CaptionBinding::show(Property property, int row) {
    if (property == Property::Caption) return showCaption();
    Binding::show(property, row);
}

LabelBinding::LabelBinding(FormView& view, forms::Label& label, QLabel& widget)
    : CaptionBinding(view, label, widget), label_(label), text_(widget) {
    widget.setTextFormat(Qt::PlainText);
}

void LabelBinding::showCaption() {
    // A label that bears its own name waits for its first value. Lines end as the toolkit ends them.
    QString caption = label_.Caption() == label_.Name() ? QString() : label_.Caption();
    text_.setText(caption.replace(u'\r', u'\n'));
}

FrameBinding::FrameBinding(FormView& view, forms::Frame& frame, QWidget& widget)
    : CaptionBinding(view, frame, widget), frame_(frame) {}

void FrameBinding::showCaption() {
    if (auto* group = qobject_cast<QGroupBox*>(&widget())) group->setTitle(frame_.Caption());
}

TabBinding::TabBinding(FormView& view, forms::TabStrip& strip, QTabWidget& widget)
    : Binding(view, strip, widget), strip_(strip), tabs_(widget) {
    widget.tabBar()->setFocusPolicy(Qt::NoFocus);
    connect(&widget, &QTabWidget::currentChanged, this, [this](int index) {
        view_.act([&](forms::Form& form) { form.UserSelectTab(strip_, index); });
        if (view_.isLive()) showTabs();
    });
}

void TabBinding::showAll() {
    Binding::showAll();
    showTabs();
}

void TabBinding::show(Property property, int row) {
    if (property == Property::ListIndex || property == Property::Items) return showTabs();
    Binding::show(property, row);
}

void TabBinding::showTabs() {
    const QSignalBlocker quiet(&tabs_);
    for (int i = 0; i < std::min(strip_.PageCount(), tabs_.count()); ++i) {
        tabs_.setTabText(i, strip_.PageCaption(i));
    }
    tabs_.setCurrentIndex(strip_.Tab());
}

bool TabBinding::keyPressed(QKeyEvent& event) {
    const int code = keyCode(event);
    if (code != forms::key::Left && code != forms::key::Right) return false;
    view_.act([code](forms::Form& form) { form.UserKey(code); });
    return true;
}

ProgressBinding::ProgressBinding(FormView& view, forms::ProgressBar& bar, QProgressBar& widget)
    : SilentBinding(view, bar, widget), bar_(bar), progress_(widget) {}

void ProgressBinding::showAll() {
    Binding::showAll();
    show(Property::Value, -1);
}

void ProgressBinding::show(Property property, int row) {
    if (property != Property::Value) return Binding::show(property, row);
    progress_.setMaximum(bar_.Max());
    progress_.setValue(bar_.Value());
}

}  // namespace tarmel::desktop
