#include <algorithm>

#include "platform/forms/Controls.h"

namespace tarmel::forms {

TextBox::TextBox(Form& form, const QString& name) : Control(form, name, Kind::TextBox) {}

void TextBox::SetText(const QString& text) {
    const QString cut = maxLength_ > 0 ? text.left(maxLength_) : text;
    const bool differs = cut != text_;
    text_ = cut;
    selStart_ = static_cast<int>(text_.size());
    selLength_ = 0;
    if (!differs) return;
    changed(Property::Text);
    if (Change) Change();
}

void TextBox::SetMaxLength(int length) {
    if (length < 0) throw basic::RuntimeError(basic::error::InvalidCall);
    if (maxLength_ == length) return;
    maxLength_ = length;
    changed(Property::MaxLength);
}

void TextBox::Select(int start, int length) {
    const int size = static_cast<int>(text_.size());
    selStart_ = std::clamp(start, 0, size);
    selLength_ = std::clamp(length, 0, size - selStart_);
    changed(Property::Selection);
}

void TextBox::replaceSelection(const QString& text) {
    if (text.isEmpty() && selLength_ == 0) return;
    text_.replace(selStart_, selLength_, text);
    selStart_ += static_cast<int>(text.size());
    selLength_ = 0;
    changed(Property::Text);
    changed(Property::Selection);
    if (Change) Change();
}

void TextBox::HandleChar(int character) {
    if (locked_) return;
    if (character == key::Backspace) {
        if (selLength_ == 0 && selStart_ > 0) {
            --selStart_;
            selLength_ = 1;
        }
        replaceSelection({});
        return;
    }
    if (character < key::Blank || character > 0xFFFF) return;
    const QChar typed(static_cast<char16_t>(character));
    if (digitsOnly_ && (typed < u'0' || typed > u'9')) return;
    if (maxLength_ > 0 && text_.size() - selLength_ >= maxLength_) return;
    replaceSelection(typed);
}

bool TextBox::HandleKey(int code) {
    switch (code) {
        case key::Delete:
            if (locked_) return true;
            if (selLength_ == 0 && selStart_ < text_.size()) selLength_ = 1;
            replaceSelection({});
            return true;
        case key::Left:
            Select(selLength_ > 0 ? selStart_ : selStart_ - 1, 0);
            return true;
        case key::Right:
            Select(selLength_ > 0 ? selStart_ + selLength_ : selStart_ + 1, 0);
            return true;
        case key::Home:
            Select(0, 0);
            return true;
        case key::End:
            Select(static_cast<int>(text_.size()), 0);
            return true;
        default:
            return false;
    }
}

}  // namespace tarmel::forms
