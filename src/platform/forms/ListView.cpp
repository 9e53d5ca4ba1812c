#include <algorithm>
#include <numeric>

#include "platform/forms/Controls.h"

namespace tarmel::forms {

namespace {

constexpr int kPage = 15;  // rows that PageUp and PageDown step over

/// The bytes of one text within a packed row; empty when the row is shorter.
QByteArrayView field(const QByteArray& row, int subItem) {
    qsizetype begin = 0;
    for (int i = 0; i < subItem; ++i) {
        const qsizetype end = row.indexOf('\0', begin);
        if (end < 0) return {};
        begin = end + 1;
    }
    const qsizetype end = row.indexOf('\0', begin);
    if (end < 0) return {};
    return QByteArrayView(row).sliced(begin, end - begin);
}

void pack(QByteArray& row, QString text) {
    text.remove(QChar(u'\0'));  // the mark between texts
    row += text.toUtf8();
    row += '\0';
}

QString sortText(const QByteArray& row, int key) {
    return QString::fromUtf8(field(row, key)).toCaseFolded();
}

}  // namespace

ListView::ListView(Form& form, const QString& name) : Control(form, name, Kind::ListView) {}

void ListView::ClearColumns() {
    columns_.clear();
    changed(Property::Columns);
}

void ListView::AddColumn(const QString& title, int width, const QString& tag) {
    columns_.push_back({title, width, tag});
    changed(Property::Columns);
}

const ListView::Column& ListView::ColumnAt(int index) const {
    if (index < 0 || index >= ColumnCount()) throw basic::RuntimeError(basic::error::Subscript);
    return columns_[static_cast<size_t>(index)];
}

void ListView::Clear() {
    rows_.clear();
    selected_ = -1;
    changed(Property::Rows);
}

void ListView::checkRow(int row) const {
    if (row < 0 || row >= Count()) throw basic::RuntimeError(basic::error::Subscript);
}

int ListView::Add(std::span<const QString> texts) {
    PackedRow packed;
    for (const QString& text : texts) {
        pack(packed, text);
    }
    if (texts.empty()) pack(packed, {});
    auto place = rows_.end();
    if (sorted_) {
        const QString key = sortText(packed, sortKey_);
        place = std::upper_bound(rows_.begin(), rows_.end(), key, [&](const QString& a, const PackedRow& b) {
            const int order = a.compare(sortText(b, sortKey_));
            return descending_ ? order > 0 : order < 0;
        });
    }
    const int row = static_cast<int>(place - rows_.begin());
    rows_.insert(place, std::move(packed));
    if (selected_ >= row) ++selected_;
    changed(Property::RowAdded, row);
    return row;
}

QString ListView::Cell(int row, int subItem) const {
    checkRow(row);
    return QString::fromUtf8(field(rows_[static_cast<size_t>(row)], subItem));
}

void ListView::SetCell(int row, int subItem, const QString& text) {
    checkRow(row);
    if (subItem < 0) throw basic::RuntimeError(basic::error::Subscript);
    PackedRow& old = rows_[static_cast<size_t>(row)];
    const int texts = std::max(static_cast<int>(old.count('\0')), subItem + 1);
    PackedRow packed;
    for (int i = 0; i < texts; ++i) {
        pack(packed, i == subItem ? text : QString::fromUtf8(field(old, i)));
    }
    old = packed;
    changed(Property::RowChanged, row);
}

void ListView::Remove(int row) {
    checkRow(row);
    rows_.erase(rows_.begin() + row);
    // Nothing is selected in its place: a second press of a delete button must not take the neighbour.
    if (selected_ == row) selected_ = -1;
    if (selected_ > row) --selected_;
    changed(Property::RowRemoved, row);
}

int ListView::FindItem(const QString& text) const {
    const QByteArray wanted = text.toUtf8();
    const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const PackedRow& row) {
        return field(row, 0) == QByteArrayView(wanted);
    });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

void ListView::Select(int row) {
    if (row != -1) checkRow(row);
    selected_ = row;
    changed(Property::SelectedRow, row);
}

QString ListView::SelectedText(int subItem) const {
    return selected_ < 0 ? QString() : Cell(selected_, subItem);
}

void ListView::SetSortKey(int subItem) {
    if (subItem < 0) throw basic::RuntimeError(basic::error::Subscript);
    sortKey_ = subItem;
    sortRows();
}

void ListView::SetSortOrder(int order) {
    descending_ = order == 1;
    sortRows();
}

void ListView::SetSorted(bool sorted) {
    sorted_ = sorted;
    sortRows();
}

void ListView::sortRows() {
    if (!sorted_ || rows_.empty()) return;
    // The keys are made once; the rows move once, when their order is known.
    std::vector<QString> keys;
    keys.reserve(rows_.size());
    for (const PackedRow& row : rows_) {
        keys.push_back(sortText(row, sortKey_));
    }
    std::vector<size_t> order(rows_.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return descending_ ? keys[b] < keys[a] : keys[a] < keys[b]; });
    std::vector<PackedRow> sorted;
    sorted.reserve(rows_.size());
    int selected = -1;
    for (const size_t from : order) {
        if (static_cast<int>(from) == selected_) selected = static_cast<int>(sorted.size());
        sorted.push_back(std::move(rows_[from]));
    }
    rows_ = std::move(sorted);
    selected_ = selected;
    changed(Property::Rows);
}

bool ListView::HandleKey(int code) {
    const int last = Count() - 1;
    const auto go = [&](int row) {
        row = std::clamp(row, 0, std::max(last, 0));
        if (last < 0 || row == selected_) return true;
        Select(row);
        if (Click) Click();
        return true;
    };
    switch (code) {
        case key::Up:
            return go(selected_ - 1);
        case key::Down:
            return go(selected_ + 1);
        case key::PageUp:
            return go(selected_ - kPage);
        case key::PageDown:
            return go(selected_ + kPage);
        case key::Home:
            return go(0);
        case key::End:
            return go(last);
        default:
            return false;
    }
}

}  // namespace tarmel::forms
