#include <utility>

#include "platform/forms/Form.h"
#include "platform/forms/Pantallas.h"

// The actions of a form's user.
namespace tarmel::forms {

template <typename Action>
void Form::act(Action&& action) {
    runAction([&] {
        if (gone_ || pantallas().IsBlocked(*this)) return;
        action();
        settleFocus();
    });
}

/// Goes to a control as a hand does before it clicks. False when the control that was to be left kept the
/// focus.
bool Form::reach(Control& control) {
    Control* const old = active_;
    if (!control.IsFocusable() || old == &control) return true;
    setFocus(&control);
    return !gone_ && (!old || active_ != old);
}

bool Form::UserGoTo(Control& control) {
    bool there = false;
    act([&] {
        setFocus(&control);
        there = !gone_ && active_ == &control;
    });
    return there;
}

// --- Keys
// ---------------------------------------------------------------------------------------------------------

/// KeyPress of the form, then of the control, then what the control makes of it. `character` is a code as
/// KeyPress sees it. The control that had the focus when the key went down gets it, wherever a handler sends
/// the focus meanwhile.
void Form::sendCharacter(int character, Control* target) {
    FormKeyPress(character);
    if (character == 0 || gone_ || !target || !target->CanAct()) return;
    if (target->KeyPress) target->KeyPress(character);
    if (character == 0 || gone_ || !target->CanAct()) return;
    if (character < key::Blank && character != key::Backspace) {
        target->HandleKey(character);
    } else if (character != key::Blank || !target->HandleKey(character)) {
        target->HandleChar(character);
    }
}

void Form::SendChar(QChar character) {
    sendCharacter(character.unicode(), active_);
}

void Form::UserChar(QChar character) {
    act([&] { sendCharacter(character.unicode(), active_); });
}

void Form::SendTab() {
    if (Control* next = nextStop(active_, false)) setFocus(next);
}

bool Form::clickButton(bool CommandButton::*role) {
    for (Control* control : controls_) {
        if (control->kind() != Kind::CommandButton || !control->CanAct()) continue;
        auto& button = static_cast<CommandButton&>(*control);
        if (!(button.*role)) continue;
        if (button.Click) button.Click();
        return true;
    }
    return false;
}

void Form::enterKey() {
    if (active_ && active_->CanAct()) {
        if (active_->kind() == Kind::CommandButton) {
            active_->HandleKey(key::Enter);
            return;
        }
        // On a list Enter has the list's own meaning: a form that makes Enter a Tab does not see it.
        if (active_->kind() == Kind::ListView) {
            int character = key::Enter;
            if (active_->KeyPress) active_->KeyPress(character);
            return;
        }
    }
    if (!clickButton(&CommandButton::Default)) sendCharacter(key::Enter, active_);
}

void Form::UserKey(int keyCode, bool shift) {
    act([&] {
        if (keyCode == key::Tab) {
            if (Control* next = nextStop(active_, shift)) setFocus(next);
            return;
        }
        Control* const target = active_;
        int code = keyCode;
        FormKeyDown(code);
        if (code == 0 || gone_) return;
        if (target && target == active_ && target->CanAct() && target->KeyDown) target->KeyDown(code);
        if (code == 0 || gone_ || target != active_) return;
        switch (code) {
            case key::Enter:
                return enterKey();
            case key::Esc:
                if (clickButton(&CommandButton::Cancel)) return;
                [[fallthrough]];
            case key::Backspace:
            case key::Blank:
                return sendCharacter(code, target);
            default:
                if (target && target->CanAct()) target->HandleKey(code);
        }
    });
}

void Form::UserPaste(TextBox& box, const QString& text) {
    act([&] {
        for (const QChar character : text) {
            if (gone_ || !box.HasFocus()) return;
            if (character.unicode() >= key::Blank) sendCharacter(character.unicode(), &box);
        }
    });
}

void Form::UserSelectText(TextBox& box, int start, int length) {
    box.Select(start, length);
}

// --- The mouse
// ----------------------------------------------------------------------------------------------------

void Form::click(Control& control) {
    switch (control.kind()) {
        case Kind::OptionButton:
            return static_cast<OptionButton&>(control).SetValue(true);
        case Kind::CheckBox: {
            auto& box = static_cast<CheckBox&>(control);
            return box.SetValue(1 - box.Value());
        }
        case Kind::ComboBox:
        case Kind::DataCombo:  // their Click tells of a choice
        case Kind::DatePicker:
        case Kind::TabStrip:
            return;
        default:
            if (control.Click) control.Click();
    }
}

void Form::UserClick(Control& control) {
    act([&] {
        if (control.CanAct() && reach(control) && control.CanAct()) click(control);
    });
}

void Form::UserChoose(ComboBox& combo, int index) {
    act([&] {
        if (!combo.CanAct() || !reach(combo) || !combo.CanAct()) return;
        combo.FocusChanged(true);  // a choice by hand ends the prefix typed so far
        combo.SetListIndex(index);
    });
}

void Form::UserSetDate(DatePicker& picker, basic::Date value) {
    act([&] {
        if (picker.CanAct() && reach(picker) && picker.CanAct()) picker.SetValue(value);
    });
}

void Form::UserSelectRow(ListView& list, int row) {
    act([&] {
        if (!list.CanAct() || !reach(list) || !list.CanAct() || row < 0 || row >= list.Count()) return;
        list.Select(row);
        if (list.Click) list.Click();
    });
}

void Form::UserDoubleClickRow(ListView& list, int row) {
    act([&] {
        if (!list.CanAct() || !reach(list) || !list.CanAct() || row < 0 || row >= list.Count()) return;
        list.Select(row);
        if (list.Click) list.Click();
        if (!gone_ && list.CanAct() && list.DblClick) list.DblClick();
    });
}

void Form::UserColumnClick(ListView& list, int columnFrom1) {
    act([&] {
        if (!list.CanAct() || !reach(list) || !list.CanAct()) return;
        if (columnFrom1 < 1 || columnFrom1 > list.ColumnCount()) return;
        if (list.ColumnClick) list.ColumnClick(columnFrom1);
    });
}

void Form::UserSelectTab(TabStrip& strip, int index) {
    act([&] {
        if (strip.CanAct() && reach(strip) && strip.CanAct()) strip.SetTab(index);
    });
}

void Form::UserToolbar(Toolbar& toolbar, const QString& key) {
    act([&] {
        if (toolbar.CanAct() && toolbar.ButtonClick) toolbar.ButtonClick(key);
    });
}

void Form::UserPanel(StatusBar& bar, const QString& key) {
    act([&] {
        if (bar.CanAct() && bar.PanelClick) bar.PanelClick(key);
    });
}

void Form::UserClose() {
    act([&] { Unload(); });
}

void Form::UserActivate() {
    act([&] {
        // Its Activate follows when the running command has ended: a window that comes up because another one
        // has just closed must not be told in the middle of that.
        if (shown_) pantallas().toFront(*this);
    });
}

}  // namespace tarmel::forms
