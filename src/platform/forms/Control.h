#pragma once

#include <QString>
#include <functional>

namespace tarmel::forms {

class Form;
class Control;

enum class Kind {
    TextBox,
    ComboBox,
    DataCombo,
    DatePicker,
    Label,
    CommandButton,
    OptionButton,
    CheckBox,
    ListView,
    Frame,
    TabStrip,
    MenuItem,
    Toolbar,
    StatusBar,
    ProgressBar,
};

/// What of a control has changed, for the one observer of its form.
enum class Property {
    Text,       ///< text of a box or combo
    Selection,  ///< cursor and selection of a text
    Items,      ///< items of a combo
    ListIndex,
    Value,
    Caption,
    Enabled,
    Visible,
    MaxLength,
    Tint,
    ToolTip,
    Columns,   ///< heads of a list
    Rows,      ///< all rows of a list may have changed: cleared, sorted
    RowAdded,  ///< appended, or inserted when the list is sorted
    RowChanged,
    RowRemoved,
    SelectedRow,  ///< selection of a list; its row is to be in view
    Front,        ///< the control comes in front of its siblings
    Focus,        ///< the control has got the focus
};

/// How a control is coloured; carries no logic.
enum class Tint { Normal, Mandatory, Greyed };

using Event = std::function<void()>;

/// What all controls of a form have in common. A control registers itself with its form under its name; the
/// order of registration is the tab order.
class Control {
 public:
    Control(Form& form, QString name, Kind kind);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] const QString& Name() const { return name_; }
    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] Form& form() const { return form_; }

    [[nodiscard]] bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    /// The control's own property; it is seen only if its containers are visible too.
    [[nodiscard]] bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    [[nodiscard]] bool IsShown() const;
    /// Shown, enabled, and its containers enabled too: it can be clicked or take the focus.
    [[nodiscard]] bool CanAct() const;
    [[nodiscard]] Tint tint() const { return tint_; }
    void SetTint(Tint tint);
    [[nodiscard]] const QString& ToolTip() const { return toolTip_; }
    void SetToolTip(const QString& tip);
    [[nodiscard]] const QString& Tag() const { return tag_; }
    void SetTag(const QString& tag) { tag_ = tag; }
    [[nodiscard]] bool TabStop() const { return tabStop_; }
    void SetTabStop(bool stop) { tabStop_ = stop; }
    /// What a screen reader says; the text of the label in front of the field.
    [[nodiscard]] const QString& AccessibleName() const { return accessibleName_; }
    void SetAccessibleName(const QString& name) { accessibleName_ = name; }

    /// Ignored when the control cannot act. Within a LostFocus it decides where the focus goes instead.
    void SetFocus();
    [[nodiscard]] bool HasFocus() const;
    /// A kind that the focus can go to at all: no label, frame, menu or bar.
    [[nodiscard]] bool IsFocusable() const;
    /// In front of its siblings.
    void BringToFront();

    [[nodiscard]] const Control* Container() const { return container_; }
    void SetContainer(Control& frame) { container_ = &frame; }

    Event Click;
    Event DblClick;
    Event GotFocus;
    Event LostFocus;
    std::function<void(int& key)> KeyPress;  ///< character code; 0 swallows it
    std::function<void(int& key)> KeyDown;   ///< key::... code; 0 swallows it

    /// A key that is no character and that the form let through: arrows in a list or combo, Enter on a
    /// button. True when the control used it.
    virtual bool HandleKey(int key);
    /// A character that KeyPress let through (8 is Backspace).
    virtual void HandleChar(int character);
    /// Called when the focus comes or goes, before the event.
    virtual void FocusChanged(bool) {}

 protected:
    void changed(Property property, int row = -1);

 private:
    Form& form_;
    QString name_;
    Kind kind_;
    bool enabled_ = true;
    bool visible_ = true;
    bool tabStop_ = true;
    Tint tint_ = Tint::Normal;
    QString toolTip_;
    QString tag_;
    QString accessibleName_;
    const Control* container_ = nullptr;
};

/// Key codes of KeyDown.
namespace key {
inline constexpr int Backspace = 8, Tab = 9, Enter = 13, Esc = 27, Blank = 32, PageUp = 33, PageDown = 34,
                     End = 35, Home = 36, Left = 37, Up = 38, Right = 39, Down = 40, Delete = 46, F1 = 112,
                     F2 = 113, F3 = 114, F4 = 115, F5 = 116, F6 = 117, F7 = 118, F8 = 119, F9 = 120,
                     F10 = 121, F11 = 122, F12 = 123;
}  // namespace key

}  // namespace tarmel::forms
