#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/forms/Control.h"
#include "platform/forms/Controls.h"

namespace tarmel::forms {

/// Sees every change of a form's properties: the view.
class Observer {
 public:
    virtual ~Observer() = default;
    virtual void controlChanged(Control& control, Property property, int row) = 0;
    virtual void captionChanged() = 0;
    virtual void refreshed() = 0;  ///< a repaint by force
};

enum class Modality { Modeless, Modal };

/// A screen: its controls, its events, and the actions of its user. Forms live in the registry (Pantallas),
/// which makes them when they are first named and forgets them when they are unloaded.
class Form {
 public:
    explicit Form(QString name, QString caption = QString());
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] const QString& Name() const { return name_; }
    [[nodiscard]] const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);

    /// Modeless: comes to the front, activated at once. Modal: returns when it has been hidden or unloaded.
    void Show(Modality modality = Modality::Modeless);
    void Hide();
    /// Runs the unload event and takes the form from the registry. The object lives on until the running
    /// action ends.
    void Unload();
    [[nodiscard]] bool IsShown() const { return shown_; }
    [[nodiscard]] bool IsLoaded() const { return loaded_; }
    [[nodiscard]] bool IsModal() const { return modal_; }
    void Refresh();

    [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }
    /// By name, exactly; null when there is none.
    [[nodiscard]] Control* Find(const QString& name) const;
    [[nodiscard]] Control* ActiveControl() const { return active_; }
    /// A key sent by a handler: acts at once, before the handler's next line.
    void SendTab();
    void SendChar(QChar character);

    /// The window that holds the others: it counts as the active one only while nothing else is shown.
    bool IsFrameWindow = false;

    // --- Actions of the user. Each runs its handlers to the end; a RuntimeError that no handler catches is
    // shown in a box and ends the program (ProgramEnd).
    // -----------------------------------------------------------------------------
    /// Moves the focus there: the control that is left loses it first. False when the focus ended elsewhere.
    bool UserGoTo(Control& control);
    /// A character key into the control that has the focus.
    void UserChar(QChar character);
    /// Another key: F1..F12, Enter, Esc, Tab, Backspace, arrows.
    void UserKey(int keyCode, bool shift = false);
    /// Goes there, then clicks. The click is lost when the control that was left kept the focus.
    void UserClick(Control& control);
    /// Chooses an item of a combo, sets a picker, selects a row, as a hand does on the control that has the
    /// focus.
    void UserChoose(ComboBox& combo, int index);
    void UserSetDate(DatePicker& picker, basic::Date value);
    void UserSelectRow(ListView& list, int row);
    void UserDoubleClickRow(ListView& list, int row);
    void UserColumnClick(ListView& list, int columnFrom1);
    void UserSelectTab(TabStrip& strip, int index);
    /// Text that arrives at once (clipboard): filtered character by character through KeyPress.
    void UserPaste(TextBox& box, const QString& text);
    void UserSelectText(TextBox& box, int start, int length);  ///< cursor and selection moved in the view
    void UserToolbar(Toolbar& toolbar, const QString& key);
    void UserPanel(StatusBar& bar, const QString& key);
    void UserClose();     ///< the window's own close box
    void UserActivate();  ///< the window has come to the front

    void setObserver(Observer* observer) { observer_ = observer; }

 protected:
    // Events, in the order of a form's life.
    virtual void Load() {}
    virtual void Activate() {}
    virtual void FormKeyDown(int& /*key*/) {}
    virtual void FormKeyPress(int& /*character*/) {}
    /// Before a form closes; true keeps it open.
    virtual bool QueryUnload() { return false; }
    virtual void UnloadEvent() {}

 private:
    friend class Control;
    friend class Pantallas;
    void add(Control& control);
    void notify(Control& control, Property property, int row);
    void load();
    void setFocus(Control* control);
    void moveFocus(Control* target);
    void leave(Control& old);
    void giveFirstFocus();
    void settleFocus();
    [[nodiscard]] Control* nextStop(const Control* from, bool backwards) const;
    template <typename Action>
    void act(Action&& action);
    bool reach(Control& control);
    void click(Control& control);
    void sendCharacter(int character, Control* target);
    void enterKey();
    bool clickButton(bool CommandButton::*role);

    QString name_;
    QString caption_;
    std::vector<Control*> controls_;
    QHash<QString, Control*> byName_;
    Observer* observer_ = nullptr;
    Control* active_ = nullptr;
    bool loaded_ = false;
    bool loading_ = false;
    bool unloading_ = false;
    bool gone_ = false;  ///< unloaded for good; the object only waits for the running action to end
    bool shown_ = false;
    bool modal_ = false;
    bool focusUntold_ = false;  ///< set while loading: its GotFocus comes when the form is shown
    int focusDepth_ = 0;
    bool leaving_ = false;  ///< a LostFocus is running
    std::optional<Control*> diverted_;
};

}  // namespace tarmel::forms
