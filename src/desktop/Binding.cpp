#include "desktop/Binding.h"

#include <QAbstractButton>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QStyle>

#include "desktop/FormView.h"
#include "desktop/Keys.h"

namespace tarmel::desktop {

using forms::Property;

Binding::Binding(FormView& view, forms::Control& control, QWidget& widget)
    : view_(view), control_(control), widget_(widget) {
    if (!control.IsFocusable()) return;
    // Only the model moves the focus: a press of the mouse asks it first (eventFilter), Tab goes to it as a
    // key.
    widget.setFocusPolicy(Qt::TabFocus);
    watch(widget);
}

void Binding::show(Property property, int) {
    switch (property) {
        case Property::Enabled:
            widget_.setEnabled(control_.Enabled());
            break;
        case Property::Visible:
            showVisible();
            break;
        case Property::Tint:
            showTint();
            break;
        case Property::ToolTip:
            widget_.setToolTip(control_.ToolTip());
            break;
        case Property::Front:
            view_.broughtForward(widget_);
            break;
        case Property::Focus:
            view_.showFocus();
            break;
        default:
            break;
    }
}

void Binding::showAll() {
    for (const Property property : {Property::Enabled, Property::Visible, Property::Tint}) {
        show(property, -1);
    }
    if (!control_.ToolTip().isEmpty()) show(Property::ToolTip, -1);
    if (control_.HasFocus()) show(Property::Focus, -1);
}

void Binding::showVisible() {
    if (auto* stack = qobject_cast<QStackedWidget*>(widget_.parentWidget())) {
        view_.arrange(*stack);
        return;
    }
    if (widget_.property("guardaSitio").toBool()) {
        // What stands beside it must not jump when it comes and goes.
        QSizePolicy policy = widget_.sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget_.setSizePolicy(policy);
    }
    widget_.setVisible(control_.Visible());
}

void Binding::showTint() {
    static const char* const kNames[] = {"", "obligatorio", "gris"};
    widget_.setProperty("tinte", QString::fromLatin1(kNames[static_cast<int>(control_.tint())]));
    // A style sheet looks at properties only when it is told to.
    widget_.style()->unpolish(&widget_);
    widget_.style()->polish(&widget_);
}

bool Binding::eventFilter(QObject* watched, QEvent* event) {
    if (!view_.isLive()) return false;
    switch (event->type()) {
        case QEvent::ShortcutOverride: {
            auto& key = static_cast<QKeyEvent&>(*event);
            if (!view_.claims(key)) return false;
            event->accept();
            return true;
        }
        case QEvent::KeyPress: {
            auto& key = static_cast<QKeyEvent&>(*event);
            // The toolkit may have put the focus elsewhere, when it hid a page: keys go where the model's is.
            if (!control_.HasFocus()) return view_.keyFromWindow(key);
            return view_.formKey(key) || keyPressed(key);
        }
        case QEvent::InputMethod: {
            const auto& input = static_cast<const QInputMethodEvent&>(*event);
            const QString text = input.commitString();
            if (text.isEmpty()) return false;
            // The widget only forgets what was being composed; the characters go the way of typed ones.
            QInputMethodEvent nothing;
            QApplication::sendEvent(watched, &nothing);
            composed(text);
            return true;
        }
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
            if (!widget_.isEnabled()) return false;
            if (goesOnPress() && !view_.goTo(control_)) return true;
            return mousePressed(*watched, *event);
        default:
            return false;
    }
}

void Binding::composed(const QString& text) {
    typeText(text);
}

void Binding::typeText(const QString& text) {
    for (const QChar character : text) {
        view_.act([&](forms::Form& form) { form.UserChar(character); });
    }
}

}  // namespace tarmel::desktop
