#include "platform/forms/Controls.h"

#include <algorithm>

#include "platform/basic/Text.h"
#include "platform/forms/Form.h"

namespace tarmel::forms {

namespace {

/// The options that exclude each other: those of the same container.
std::vector<OptionButton*> optionsBeside(const OptionButton& option) {
    std::vector<OptionButton*> options;
    for (Control* control : option.form().Controls()) {
        if (control->kind() == Kind::OptionButton && control->Container() == option.Container()) {
            options.push_back(static_cast<OptionButton*>(control));
        }
    }
    return options;
}

}  // namespace

Label::Label(Form& form, const QString& name, const QString& caption)
    : Control(form, name, Kind::Label), caption_(caption) {}

void Label::SetCaption(const QString& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    changed(Property::Caption);
}

Frame::Frame(Form& form, const QString& name, const QString& caption)
    : Control(form, name, Kind::Frame), caption_(caption) {}

void Frame::SetCaption(const QString& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    changed(Property::Caption);
}

void Frame::Holds(std::initializer_list<Control*> controls) {
    for (Control* control : controls) {
        control->SetContainer(*this);
    }
}

DatePicker::DatePicker(Form& form, const QString& name, const QString& customFormat)
    : Control(form, name, Kind::DatePicker),
      style_(customFormat.isEmpty() ? Style::ShortDate : Style::Custom),
      customFormat_(customFormat),
      value_(basic::Date::today()) {}

void DatePicker::SetValue(basic::Date value) {
    if (value_ == value) return;
    value_ = value;
    changed(Property::Value);
    if (Change) Change();
}

void DatePicker::SetValue(const QString& text) {
    SetValue(basic::CDate(text));
}

QString DatePicker::Text() const {
    return basic::Format(value_, style_ == Style::Custom ? customFormat_ : QStringLiteral("dd/mm/yyyy"));
}

CommandButton::CommandButton(Form& form, const QString& name, const QString& caption)
    : Control(form, name, Kind::CommandButton), caption_(caption) {}

void CommandButton::SetCaption(const QString& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    changed(Property::Caption);
}

bool CommandButton::HandleKey(int code) {
    if (code != key::Enter && code != key::Blank) return false;
    if (Click) Click();
    return true;
}

OptionButton::OptionButton(Form& form, const QString& name, const QString& caption)
    : Control(form, name, Kind::OptionButton), caption_(caption) {}

void OptionButton::SetValue(bool value) {
    if (value_ == value) return;
    value_ = value;
    if (value) {
        for (OptionButton* other : optionsBeside(*this)) {
            if (other == this || !other->value_) continue;
            other->value_ = false;
            other->changed(Property::Value);
        }
    }
    changed(Property::Value);
    if (value && Click) Click();
}

bool OptionButton::HandleKey(int code) {
    if (code == key::Blank) {
        SetValue(true);
        return true;
    }
    const bool back = code == key::Up || code == key::Left;
    if (!back && code != key::Down && code != key::Right) return false;
    // The arrows go round the options of the group and choose as they go.
    std::vector<OptionButton*> options = optionsBeside(*this);
    if (back) std::reverse(options.begin(), options.end());
    std::rotate(options.begin(), std::find(options.begin(), options.end(), this), options.end());
    const auto next =
        std::find_if(options.begin() + 1, options.end(), [](const OptionButton* o) { return o->CanAct(); });
    if (next == options.end()) return true;
    (*next)->SetFocus();
    if ((*next)->HasFocus()) (*next)->SetValue(true);
    return true;
}

CheckBox::CheckBox(Form& form, const QString& name, const QString& caption)
    : Control(form, name, Kind::CheckBox), caption_(caption) {}

void CheckBox::SetCaption(const QString& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    changed(Property::Caption);
}

void CheckBox::SetValue(int value) {
    if (value < 0 || value > 1) throw basic::RuntimeError(basic::error::InvalidCall);
    if (value_ == value) return;
    value_ = value;
    changed(Property::Value);
    if (Click) Click();
}

bool CheckBox::HandleKey(int code) {
    if (code != key::Blank) return false;
    SetValue(1 - value_);
    return true;
}

ProgressBar::ProgressBar(Form& form, const QString& name) : Control(form, name, Kind::ProgressBar) {}

void ProgressBar::SetMax(int max) {
    if (max < 1) throw basic::RuntimeError(basic::error::InvalidCall);
    max_ = max;
    value_ = std::min(value_, max_);
    changed(Property::Value);
}

void ProgressBar::SetValue(int value) {
    if (value < 0 || value > max_) throw basic::RuntimeError(basic::error::InvalidCall);
    if (value_ == value) return;
    value_ = value;
    changed(Property::Value);
}

TabStrip::TabStrip(Form& form, const QString& name) : Control(form, name, Kind::TabStrip) {}

void TabStrip::AddPage(const QString& caption, Frame& page) {
    page.SetContainer(*this);
    pages_.push_back({caption, &page});
    page.SetVisible(PageCount() - 1 == tab_);
    changed(Property::Items);
}

const QString& TabStrip::PageCaption(int index) const {
    if (index < 0 || index >= PageCount()) throw basic::RuntimeError(basic::error::Subscript);
    return pages_[static_cast<size_t>(index)].caption;
}

Frame& TabStrip::Page(int index) const {
    if (index < 0 || index >= PageCount()) throw basic::RuntimeError(basic::error::Subscript);
    return *pages_[static_cast<size_t>(index)].frame;
}

void TabStrip::SetTab(int index) {
    if (index < 0 || index >= PageCount()) throw basic::RuntimeError(basic::error::InvalidCall);
    if (index == tab_) return;
    Page(tab_).SetVisible(false);
    tab_ = index;
    Page(tab_).SetVisible(true);
    changed(Property::ListIndex);
    if (Click) Click();
}

bool TabStrip::HandleKey(int code) {
    if (code != key::Left && code != key::Right) return false;
    const int next = tab_ + (code == key::Left ? -1 : 1);
    if (next >= 0 && next < PageCount()) SetTab(next);
    return true;
}

MenuItem::MenuItem(Form& form, const QString& name, const QString& caption, MenuItem* parent)
    : Control(form, name, Kind::MenuItem), caption_(caption), parent_(parent) {
    if (parent) SetContainer(*parent);
}

Toolbar::Toolbar(Form& form, const QString& name) : Control(form, name, Kind::Toolbar) {}

StatusBar::StatusBar(Form& form, const QString& name) : Control(form, name, Kind::StatusBar) {}

namespace {
template <typename Panels>
auto& panelOf(Panels& panels, const QString& key) {
    const auto found =
        std::find_if(panels.begin(), panels.end(), [&](const auto& p) { return p.key == key; });
    if (found == panels.end()) throw basic::RuntimeError(basic::error::Subscript);
    return *found;
}
}  // namespace

const QString& StatusBar::PanelText(const QString& key) const {
    return panelOf(panels_, key).text;
}

void StatusBar::SetPanelText(const QString& key, const QString& text) {
    Panel& panel = panelOf(panels_, key);
    if (panel.text == text) return;
    panel.text = text;
    changed(Property::Text);
}

}  // namespace tarmel::forms
