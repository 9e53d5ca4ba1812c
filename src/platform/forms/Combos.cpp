#include <algorithm>

#include "platform/forms/Controls.h"

namespace tarmel::forms {

namespace {
const QString kNoText;
constexpr int kPage = 8;  // items that PageUp and PageDown step over
}  // namespace

ComboBox::ComboBox(Form& form, const QString& name) : ComboBox(form, name, Kind::ComboBox) {}

ComboBox::ComboBox(Form& form, const QString& name, Kind kind) : Control(form, name, kind) {}

void ComboBox::Clear() {
    items_.clear();
    listIndex_ = -1;
    prefix_.clear();
    changed(Property::Items);
}

void ComboBox::SetItems(std::vector<QString> texts) {
    items_.clear();
    items_.reserve(texts.size());
    for (QString& text : texts) {
        items_.push_back({std::move(text), 0});
    }
    listIndex_ = -1;
    prefix_.clear();
    changed(Property::Items);
}

int ComboBox::AddItem(const QString& text, int itemData) {
    items_.push_back({text, itemData});
    changed(Property::Items);
    return ListCount() - 1;
}

const QString& ComboBox::List(int index) const {
    if (index < 0 || index >= ListCount()) return kNoText;
    return items_[static_cast<size_t>(index)].text;
}

int ComboBox::ItemData(int index) const {
    if (index < 0 || index >= ListCount()) throw basic::RuntimeError(basic::error::InvalidCall);
    return items_[static_cast<size_t>(index)].data;
}

void ComboBox::SetItemData(int index, int data) {
    if (index < 0 || index >= ListCount()) throw basic::RuntimeError(basic::error::InvalidCall);
    items_[static_cast<size_t>(index)].data = data;
}

void ComboBox::SetListIndex(int index) {
    if (index < -1 || index >= ListCount()) throw basic::RuntimeError(basic::error::InvalidCall);
    if (index == listIndex_) return;
    listIndex_ = index;
    changed(Property::ListIndex);
    chosen();
}

QString ComboBox::Text() const {
    return List(listIndex_);
}

int ComboBox::Find(const QString& prefix) const {
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const Item& item) {
        return item.text.startsWith(prefix, Qt::CaseInsensitive);
    });
    return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

void ComboBox::chosen() {
    if (Click) Click();
}

void ComboBox::HandleChar(int character) {
    if (character == key::Backspace) {
        prefix_.chop(1);
    } else if (character >= key::Blank && character <= 0xFFFF) {
        const QChar typed(static_cast<char16_t>(character));
        prefix_ += typed;
        if (Find(prefix_) < 0) prefix_ = typed;
    }
    if (prefix_.isEmpty()) return;
    const int found = Find(prefix_);
    if (found >= 0) SetListIndex(found);
}

bool ComboBox::HandleKey(int code) {
    const int last = ListCount() - 1;
    const auto go = [&](int index) {
        prefix_.clear();
        if (last >= 0) SetListIndex(std::clamp(index, 0, last));
        return true;
    };
    switch (code) {
        case key::Up:
            return go(listIndex_ - 1);
        case key::Down:
            return go(listIndex_ + 1);
        case key::PageUp:
            return go(listIndex_ - kPage);
        case key::PageDown:
            return go(listIndex_ + kPage);
        case key::Home:
            return go(0);
        case key::End:
            return go(last);
        case key::Delete:  // the only way by hand to take a choice back
            prefix_.clear();
            SetListIndex(-1);
            return true;
        default:
            return false;
    }
}

void ComboBox::FocusChanged(bool) {
    prefix_.clear();
}

DataCombo::DataCombo(Form& form, const QString& name) : ComboBox(form, name, Kind::DataCombo) {}

void DataCombo::SetRows(std::vector<Row> rows) {
    const bool hadText = !Text().isEmpty();
    foreign_.clear();
    bound_.clear();
    bound_.reserve(rows.size());
    std::vector<QString> texts;
    texts.reserve(rows.size());
    for (Row& row : rows) {
        bound_.push_back(std::move(row.bound));
        texts.push_back(std::move(row.text));
    }
    SetItems(std::move(texts));
    if (hadText) chosen();
}

void DataCombo::SetText(const QString& text) {
    if (text == Text()) return;
    int index = -1;
    for (int i = 0; !text.isEmpty() && i < ListCount() && index < 0; ++i) {
        if (List(i) == text) index = i;
    }
    foreign_ = index < 0 ? text : QString();
    if (index != ListIndex()) return SetListIndex(index);
    changed(Property::Text);
    chosen();
}

QString DataCombo::Text() const {
    return ListIndex() < 0 ? foreign_ : ComboBox::Text();
}

QString DataCombo::BoundText() const {
    const int index = ListIndex();
    return index >= 0 && index < static_cast<int>(bound_.size()) ? bound_[static_cast<size_t>(index)]
                                                                 : QString();
}

void DataCombo::chosen() {
    if (ListIndex() >= 0) foreign_.clear();
    if (Change) Change();
}

}  // namespace tarmel::forms
