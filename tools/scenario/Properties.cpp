#include "scenario/Properties.h"

#include "platform/basic/Text.h"

using namespace Qt::StringLiterals;

namespace tarmel::scenario {

using forms::Kind;

namespace {

QString yesNo(bool value) {
    return value ? u"True"_s : u"False"_s;
}

template <typename T>
const T& as(const forms::Control& control) {
    return static_cast<const T&>(control);
}

/// The page of a strip that this control is, with the strip.
HiddenPage pageOf(const forms::Control& control) {
    const forms::Control* container = control.Container();
    if (!container || container->kind() != Kind::TabStrip) return {};
    for (forms::Control* other : control.form().Controls()) {
        if (other != container) continue;
        auto& strip = static_cast<forms::TabStrip&>(*other);
        for (int i = 0; i < strip.PageCount(); ++i) {
            if (&strip.Page(i) == &control) return {&strip, i};
        }
    }
    return {};
}

/// What the user can get to see: its containers count, but for a page that only lies behind.
bool isVisible(const forms::Control& control) {
    for (const forms::Control* c = &control; c; c = c->Container()) {
        if (!c->Visible() && !pageOf(*c).strip) return false;
    }
    return true;
}

bool isEnabled(const forms::Control& control) {
    for (const forms::Control* c = &control; c; c = c->Container()) {
        if (!c->Enabled()) return false;
    }
    return true;
}

std::optional<QString> captionOf(const forms::Control& control);

std::optional<QString> textOf(const forms::Control& control) {
    switch (control.kind()) {
        case Kind::TextBox:
            return as<forms::TextBox>(control).Text();
        case Kind::ComboBox:
        case Kind::DataCombo:
            return as<forms::ComboBox>(control).Text();
        case Kind::DatePicker:
            return as<forms::DatePicker>(control).Text();
        case Kind::ListView:
            return as<forms::ListView>(control).SelectedText();
        default:
            return captionOf(control);
    }
}

std::optional<QString> captionOf(const forms::Control& control) {
    switch (control.kind()) {
        case Kind::Label:
            return as<forms::Label>(control).Caption();
        case Kind::Frame:
            return as<forms::Frame>(control).Caption();
        case Kind::CommandButton:
            return as<forms::CommandButton>(control).Caption();
        case Kind::OptionButton:
            return as<forms::OptionButton>(control).Caption();
        case Kind::CheckBox:
            return as<forms::CheckBox>(control).Caption();
        case Kind::MenuItem:
            return as<forms::MenuItem>(control).Caption();
        default:
            return std::nullopt;
    }
}

std::optional<QString> valueOf(const forms::Control& control) {
    switch (control.kind()) {
        case Kind::DatePicker:
            return basic::CStr(as<forms::DatePicker>(control).Value());
        case Kind::CheckBox:
            return basic::CStr(as<forms::CheckBox>(control).Value());
        case Kind::OptionButton:
            return yesNo(as<forms::OptionButton>(control).Value());
        case Kind::ProgressBar:
            return basic::CStr(as<forms::ProgressBar>(control).Value());
        default:
            return textOf(control);
    }
}

std::optional<QString> indexOf(const forms::Control& control) {
    switch (control.kind()) {
        case Kind::ComboBox:
        case Kind::DataCombo:
            return basic::CStr(as<forms::ComboBox>(control).ListIndex());
        case Kind::TabStrip:
            return basic::CStr(as<forms::TabStrip>(control).Tab());
        default:
            return std::nullopt;
    }
}

std::optional<QString> countOf(const forms::Control& control) {
    switch (control.kind()) {
        case Kind::ComboBox:
        case Kind::DataCombo:
            return basic::CStr(as<forms::ComboBox>(control).ListCount());
        case Kind::ListView:
            return basic::CStr(as<forms::ListView>(control).Count());
        case Kind::TabStrip:
            return basic::CStr(as<forms::TabStrip>(control).PageCount());
        default:
            return std::nullopt;
    }
}

std::optional<QString> cellOf(const forms::Control& control, int row, int column) {
    if (control.kind() != Kind::ListView) return std::nullopt;
    const auto& list = as<forms::ListView>(control);
    if (row < 1 || row > list.Count() || column < 1) return std::nullopt;
    return list.Cell(row - 1, column - 1);
}

std::optional<QString> itemOf(const forms::Control& control, int index) {
    if (control.kind() != Kind::ComboBox && control.kind() != Kind::DataCombo) return std::nullopt;
    const auto& combo = as<forms::ComboBox>(control);
    if (index >= combo.ListCount()) return std::nullopt;
    return combo.List(index);
}

std::optional<QString> columnOf(const forms::Control& control, int column) {
    if (control.kind() != Kind::ListView) return std::nullopt;
    const auto& list = as<forms::ListView>(control);
    if (column < 1 || column > list.ColumnCount()) return std::nullopt;
    return list.ColumnAt(column - 1).title;
}

std::optional<QString> checkedOf(const forms::Control& control) {
    switch (control.kind()) {
        case Kind::CheckBox:
            return yesNo(as<forms::CheckBox>(control).Value() == 1);
        case Kind::OptionButton:
            return yesNo(as<forms::OptionButton>(control).Value());
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<QString> propertyOf(const forms::Control& control, const QString& name,
                                  const std::vector<int>& indexes) {
    if (name == "Text"_L1) return textOf(control);
    if (name == "Caption"_L1) return captionOf(control);
    if (name == "Value"_L1) return valueOf(control);
    if (name == "ListIndex"_L1) return indexOf(control);
    if (name == "Count"_L1) return countOf(control);
    if (name == "Enabled"_L1) return yesNo(isEnabled(control));
    if (name == "Visible"_L1) return yesNo(isVisible(control));
    if (name == "Checked"_L1) return checkedOf(control);
    if (name == "Cell"_L1) return cellOf(control, indexes.at(0), indexes.at(1));
    if (name == "Item"_L1) return itemOf(control, indexes.at(0));
    if (name == "Column"_L1) return columnOf(control, indexes.at(0));
    if (name == "ToolTip"_L1) return control.ToolTip();
    if (name == "Selected"_L1 && control.kind() == Kind::ListView) {
        return basic::CStr(as<forms::ListView>(control).Selected() + 1);
    }
    return std::nullopt;
}

std::optional<QString> propertyOf(const forms::Form& form, const QString& name) {
    if (name == "Caption"_L1) return form.Caption();
    if (name == "Visible"_L1) return yesNo(form.IsShown());
    return std::nullopt;
}

HiddenPage hiddenPageOf(const forms::Control& control) {
    HiddenPage outermost;
    for (const forms::Control* c = &control; c; c = c->Container()) {
        if (c->Visible()) continue;
        if (const HiddenPage page = pageOf(*c); page.strip) outermost = page;
    }
    return outermost;
}

}  // namespace tarmel::scenario
