#include "platform/forms/Control.h"

#include <utility>

#include "platform/forms/Form.h"

namespace tarmel::forms {

Control::Control(Form& form, QString name, Kind kind) : form_(form), name_(std::move(name)), kind_(kind) {
    form.add(*this);
}

void Control::changed(Property property, int row) {
    form_.notify(*this, property, row);
}

void Control::SetEnabled(bool enabled) {
    if (enabled_ == enabled) return;
    enabled_ = enabled;
    changed(Property::Enabled);
}

void Control::SetVisible(bool visible) {
    if (visible_ == visible) return;
    visible_ = visible;
    changed(Property::Visible);
}

bool Control::IsShown() const {
    for (const Control* c = this; c; c = c->container_) {
        if (!c->visible_) return false;
    }
    return true;
}

bool Control::CanAct() const {
    for (const Control* c = this; c; c = c->container_) {
        if (!c->visible_ || !c->enabled_) return false;
    }
    return true;
}

bool Control::IsFocusable() const {
    switch (kind_) {
        case Kind::Label:
        case Kind::Frame:
        case Kind::MenuItem:
        case Kind::Toolbar:
        case Kind::StatusBar:
        case Kind::ProgressBar:
            return false;
        default:
            return true;
    }
}

void Control::SetTint(Tint tint) {
    if (tint_ == tint) return;
    tint_ = tint;
    changed(Property::Tint);
}

void Control::SetToolTip(const QString& tip) {
    if (toolTip_ == tip) return;
    toolTip_ = tip;
    changed(Property::ToolTip);
}

void Control::SetFocus() {
    form_.setFocus(this);
}

bool Control::HasFocus() const {
    return form_.ActiveControl() == this;
}

void Control::BringToFront() {
    changed(Property::Front);
}

bool Control::HandleKey(int) {
    return false;
}

void Control::HandleChar(int) {}

}  // namespace tarmel::forms
