#pragma once

#include <QChar>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include "desktop/Binding.h"
#include "platform/forms/Form.h"

class QKeyEvent;
class QStackedWidget;
class QWidget;

namespace tarmel::desktop {

class Escritorio;

/// Where a screen stands: inside the main window as a page, as a window of its own, or as the main window
/// itself.
enum class Place { Page, Dialog, Splash, Frame };

/// A screen's window: its widgets joined to the screen's controls by name, kind by kind.
class FormView final : public QObject, public forms::Observer {
 public:
    /// RuntimeError when a control has no widget that can show it, or a widget no control.
    FormView(Escritorio& escritorio, forms::Form& form, std::unique_ptr<QWidget> surface, Place where);
    ~FormView() override;

    /// What does not fit between the controls and the widgets: empty when all is well. Widgets whose name
    /// begins with "deco" are decoration.
    [[nodiscard]] static QStringList mismatches(const forms::Form& form, const QWidget& surface);

    [[nodiscard]] QWidget& surface() const { return *surface_; }
    [[nodiscard]] Place where() const { return place_; }
    [[nodiscard]] forms::Form* form() const { return form_; }
    [[nodiscard]] bool isLive() const { return form_ != nullptr; }
    [[nodiscard]] Escritorio& escritorio() const { return escritorio_; }
    [[nodiscard]] QWidget* widgetOf(const forms::Control& control) const;
    [[nodiscard]] Binding* bindingOf(const forms::Control* control) const;

    /// Forgets the screen, which is gone: from here on the window is only a picture.
    void detach();

    /// An action of the user: makes the screen the active one, runs it guarded. Nothing when the screen is
    /// gone.
    void act(const std::function<void(forms::Form&)>& action);
    /// The user goes to a control; false when the focus ended elsewhere or a box came up on the way.
    bool goTo(forms::Control& control);
    /// Function keys, Enter, Esc, Tab, and Alt with a letter of this screen. True when it was one of them.
    bool formKey(QKeyEvent& event);
    /// Whether formKey would take it: then no shortcut of the window may.
    [[nodiscard]] bool claims(const QKeyEvent& event) const;
    /// A key that reached the window itself: it goes to the control that has the focus.
    bool keyFromWindow(QKeyEvent& event);
    /// The widget of the control that has the focus takes the toolkit's.
    void showFocus();
    /// The focus is moving by Tab or Enter: a text that gets it is selected whole.
    [[nodiscard]] bool isTabbing() const { return tabbing_; }
    /// Brings the page of a stack in front that is visible and came forward last.
    void arrange(QStackedWidget& stack);
    void broughtForward(QWidget& page);

    // --- forms::Observer
    void controlChanged(forms::Control& control, forms::Property property, int row) override;
    void captionChanged() override;
    void refreshed() override;

 private:
    void bindAll();
    void orderTabs();
    void nameForReaders();
    [[nodiscard]] forms::Control* shortcutTarget(QChar letter) const;

    Escritorio& escritorio_;
    forms::Form* form_;
    Place place_;
    std::unique_ptr<QWidget> surface_;
    std::vector<std::unique_ptr<Binding>> bindings_;
    std::unordered_map<const forms::Control*, Binding*> byControl_;
    std::unordered_map<const QWidget*, int> cameForward_;
    int forwardCount_ = 0;
    bool tabbing_ = false;
};

}  // namespace tarmel::desktop
