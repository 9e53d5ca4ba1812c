#include "platform/forms/Form.h"

#include <algorithm>
#include <utility>

#include "platform/forms/Guards.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

namespace tarmel::forms {

namespace {
/// GotFocus handlers that send the focus on to each other for ever are cut off here.
constexpr int kMaxFocusDepth = 32;
}  // namespace

Form::Form(QString name, QString caption) : name_(std::move(name)), caption_(std::move(caption)) {}

Form::~Form() {
    pantallas().forget(*this);
}

void Form::SetCaption(const QString& caption) {
    if (caption_ == caption) return;
    caption_ = caption;
    if (observer_) observer_->captionChanged();
}

void Form::Refresh() {
    if (observer_) observer_->refreshed();
}

void Form::add(Control& control) {
    controls_.push_back(&control);
    byName_.insert(control.Name(), &control);
}

Control* Form::Find(const QString& name) const {
    return byName_.value(name);
}

void Form::notify(Control& control, Property property, int row) {
    if (observer_) observer_->controlChanged(control, property, row);
}

// --- Life
// ---------------------------------------------------------------------------------------------------------

void Form::load() {
    if (loaded_ || gone_) return;
    loaded_ = true;
    const SetWhile<bool> loading(loading_, true);
    Load();
}

void Form::Show(Modality modality) {
    load();
    if (gone_) return;
    if (shown_) {
        pantallas().activate(*this);
        giveFirstFocus();
        return;
    }
    shown_ = true;
    modal_ = modality == Modality::Modal;
    pantallas().toFront(*this);
    host().FormShown(*this);
    pantallas().activate(*this);
    giveFirstFocus();
    if (modality == Modality::Modal && shown_) pantallas().runModal(*this);
}

void Form::Hide() {
    if (!shown_) return;
    shown_ = false;
    pantallas().noLongerShown(*this);
    host().FormHidden(*this);
}

void Form::Unload() {
    if (gone_ || unloading_) return;
    const SetWhile<bool> unloading(unloading_, true);
    if (loaded_) {
        if (QueryUnload()) return;
        UnloadEvent();
    }
    const bool wasLoaded = std::exchange(loaded_, false);
    gone_ = true;
    shown_ = false;
    pantallas().letGo(*this);
    if (wasLoaded) host().FormUnloaded(*this);
    observer_ = nullptr;
}

// --- Focus
// --------------------------------------------------------------------------------------------------------

void Form::setFocus(Control* control) {
    if (gone_ || !control || !control->IsFocusable() || !control->CanAct()) return;
    if (leaving_) {
        diverted_ = control;
        return;
    }
    if (control == active_) return;
    if (loading_) {
        active_ = control;
        focusUntold_ = true;
        return;
    }
    moveFocus(control);
}

void Form::moveFocus(Control* target) {
    if (focusDepth_ >= kMaxFocusDepth) return;
    const SetWhile<int> depth(focusDepth_, focusDepth_ + 1);
    Control* const old = std::exchange(active_, target);
    if (old && !std::exchange(focusUntold_, false)) {
        leave(*old);
        if (gone_) return;
    }
    if (active_ && !active_->CanAct()) active_ = nextStop(active_, false);
    if (!active_) return;
    Control& got = *active_;
    notify(got, Property::Focus, -1);
    got.FocusChanged(true);
    if (got.GotFocus) got.GotFocus();
}

/// Raises LostFocus. Where its handler sets the focus, that is where it goes.
void Form::leave(Control& old) {
    old.FocusChanged(false);
    if (!old.LostFocus) return;
    diverted_.reset();
    {
        const SetWhile<bool> leaving(leaving_, true);
        old.LostFocus();
    }
    if (const auto diverted = std::exchange(diverted_, std::nullopt)) active_ = *diverted;
}

void Form::giveFirstFocus() {
    if (gone_ || !shown_ || loading_) return;
    if (!active_) return setFocus(nextStop(nullptr, false));
    if (!std::exchange(focusUntold_, false)) return;
    if (!active_->CanAct()) return moveFocus(nextStop(active_, false));
    Control& got = *active_;
    notify(got, Property::Focus, -1);
    got.FocusChanged(true);
    if (got.GotFocus) got.GotFocus();
}

/// Where the control that has the focus was hidden or disabled, the focus goes on to the next that can act.
/// That waits for the end of the action, so that the focus does not hop over fields which are all being
/// disabled one by one.
void Form::settleFocus() {
    if (gone_ || leaving_ || loading_ || !active_ || active_->CanAct()) return;
    moveFocus(nextStop(active_, false));
}

/// The control that Tab goes to from there, in the order of registration; options of one container are one
/// stop.
Control* Form::nextStop(const Control* from, bool backwards) const {
    const auto isStop = [&](const Control& control) {
        if (!control.TabStop() || !control.IsFocusable() || !control.CanAct()) return false;
        if (control.kind() != Kind::OptionButton) return true;
        if (static_cast<const OptionButton&>(control).Value()) return true;
        for (const Control* other : controls_) {
            if (other->kind() != Kind::OptionButton || other->Container() != control.Container()) continue;
            if (static_cast<const OptionButton*>(other)->Value() && other->CanAct()) return false;
        }
        // None is chosen: the first of them stands for all.
        for (const Control* other : controls_) {
            if (other->kind() != Kind::OptionButton || other->Container() != control.Container()) continue;
            if (other->CanAct()) return other == &control;
        }
        return false;
    };
    const auto count = static_cast<std::ptrdiff_t>(controls_.size());
    const auto start = std::find(controls_.begin(), controls_.end(), from);
    const std::ptrdiff_t begin =
        start == controls_.end() ? (backwards ? count : -1) : start - controls_.begin();
    for (std::ptrdiff_t step = 1; step <= count; ++step) {
        const std::ptrdiff_t at = (begin + (backwards ? -step : step) + 2 * count) % count;
        Control* const control = controls_[static_cast<size_t>(at)];
        if (control != from && isStop(*control)) return control;
    }
    return nullptr;
}

}  // namespace tarmel::forms
