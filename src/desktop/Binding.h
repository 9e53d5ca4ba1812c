#pragma once

#include <QObject>
#include <QWidget>
#include <memory>

#include "platform/forms/Controls.h"

class QAction;
class QInputMethodEvent;
class QKeyEvent;

namespace tarmel::desktop {

class FormView;

/// Joins one control of a screen to its widget. What the control reports is shown; what a hand does to the
/// widget is handed to the screen as an action of its user. A binding of a kind knows both; this base does
/// what all kinds share.
class Binding : public QObject {
 public:
    Binding(FormView& view, forms::Control& control, QWidget& widget);

    [[nodiscard]] forms::Control& control() const { return control_; }
    [[nodiscard]] QWidget& widget() const { return widget_; }

    /// Shows one property; `row` as the control told it.
    virtual void show(forms::Property property, int row);
    /// Shows everything, when the window is new.
    virtual void showAll();
    /// What is being edited in the widget becomes the control's value: before a key or a command leaves it.
    virtual void commit() {}

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// A key that is neither a key of the form nor a shortcut. True when nothing more is to happen with it.
    virtual bool keyPressed(QKeyEvent& event) = 0;
    /// Text from an input method, finished.
    virtual void composed(const QString& text);
    /// Buttons take the focus with the click, not with the press.
    [[nodiscard]] virtual bool goesOnPress() const { return true; }
    virtual bool mousePressed(QObject&, QEvent&) { return false; }

    /// Filters the events of a part of the widget too (a viewport).
    void watch(QObject& part) { part.installEventFilter(this); }
    void typeText(const QString& text);

    FormView& view_;

 private:
    void showVisible();
    void showTint();
    forms::Control& control_;
    QWidget& widget_;
};

/// The binding for a control and its widget; null when the widget is not of a class that can show the
/// control.
[[nodiscard]] std::unique_ptr<Binding> makeBinding(FormView& view, forms::Control& control, QWidget& widget);

}  // namespace tarmel::desktop
