#include "desktop/ListBinding.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <algorithm>

#include "desktop/FormView.h"
#include "desktop/Keys.h"

namespace tarmel::desktop {

using forms::Property;

namespace {
// The widths were made for smaller letters, of fifteen twips a pixel.
constexpr int kTwipsPerPixel = 12;

/// A row is one line high: remarks of several lines stand behind each other.
QString inOneLine(const QString& text) {
    const auto isBreak = [](QChar c) { return c == u'\n' || c == u'\r'; };
    if (std::ranges::none_of(text, isBreak)) return text;
    QString line = text;
    line.replace(QLatin1String("\r\n"), QLatin1String(" "));
    std::ranges::replace_if(line, isBreak, u' ');
    return line;
}
}  // namespace

// --- Rows

int ListRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int ListRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : columns_;
}

QVariant ListRows::data(const QModelIndex& index, int role) const {
    if (!list_ || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    if (index.row() >= list_->Count() || index.column() >= list_->ColumnCount()) return {};
    // The blanks in front, which make numbers sort, are not for the eye.
    const QString text = list_->Cell(index.row(), index.column()).trimmed();
    return role == Qt::DisplayRole ? inOneLine(text) : text;
}

QVariant ListRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (!list_ || orientation != Qt::Horizontal || section >= list_->ColumnCount()) return {};
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return list_->ColumnAt(section).title;
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

void ListRows::appended() {
    const int now = list_ ? list_->Count() : 0;
    if (now <= rows_) return;
    beginInsertRows({}, rows_, now - 1);
    rows_ = now;
    endInsertRows();
}

void ListRows::reload() {
    beginResetModel();
    rows_ = list_ ? list_->Count() : 0;
    columns_ = list_ ? list_->ColumnCount() : 0;
    endResetModel();
}

void ListRows::rowChanged(int row) {
    if (row >= 0 && row < rows_) Q_EMIT dataChanged(index(row, 0), index(row, columns_ - 1));
}

// --- Binding

ListBinding::ListBinding(FormView& view, forms::ListView& list, QTreeView& tree)
    : Binding(view, list, tree), list_(list), tree_(tree), rows_(list) {
    tree.setRootIsDecorated(false);
    tree.setItemsExpandable(false);
    tree.setUniformRowHeights(true);
    tree.setAlternatingRowColors(true);
    tree.setSelectionMode(QAbstractItemView::SingleSelection);
    tree.setSelectionBehavior(QAbstractItemView::SelectRows);
    tree.setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tree.setExpandsOnDoubleClick(false);
    tree.setModel(&rows_);
    tree.header()->setSectionsClickable(true);
    tree.header()->setSectionsMovable(true);
    tree.header()->setFirstSectionMovable(true);
    tree.header()->setStretchLastSection(false);
    tree.header()->setSortIndicatorShown(false);
    watch(*tree.viewport());
    connect(tree.header(), &QHeaderView::sectionClicked, this, [this](int section) {
        view_.act([&](forms::Form& form) { form.UserColumnClick(list_, section + 1); });
    });
    timer_.setSingleShot(true);
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &ListBinding::flush);
}

ListBinding::~ListBinding() {
    rows_.forget();
}

void ListBinding::showAll() {
    Binding::showAll();
    allStale_ = columnsStale_ = selectionStale_ = true;
    flush();
}

void ListBinding::show(Property property, int row) {
    switch (property) {
        case Property::Columns:
            columnsStale_ = allStale_ = true;
            later();
            break;
        case Property::RowAdded:
            // Thousands come one by one while a list fills; what is inserted among the others moves them.
            if (row >= 0 && row != list_.Count() - 1) allStale_ = true;
            later();
            break;
        case Property::Rows:
        case Property::RowRemoved:
            allStale_ = true;
            later();
            break;
        case Property::RowChanged:
            rows_.rowChanged(row);
            break;
        case Property::SelectedRow:
            selectionStale_ = true;
            later();
            break;
        default:
            Binding::show(property, row);
    }
}

void ListBinding::later() {
    if (!timer_.isActive()) timer_.start();
}

void ListBinding::flush() {
    timer_.stop();
    if (!view_.isLive()) return;
    if (allStale_) {
        rows_.reload();
        selectionStale_ = true;
    } else {
        rows_.appended();
    }
    allStale_ = false;
    if (std::exchange(columnsStale_, false)) showColumns();
    showSortMark();
    if (std::exchange(selectionStale_, false)) showSelection();
}

void ListBinding::showColumns() {
    QHeaderView& header = *tree_.header();
    constexpr int kSortMark = 18;
    const int padding = header.fontMetrics().averageCharWidth() * 3 + kSortMark;
    int visible = 0;
    for (int i = 0; i < list_.ColumnCount(); ++i) {
        const auto& column = list_.ColumnAt(i);
        header.setSectionHidden(i, column.width == 0);
        if (column.width == 0) continue;
        ++visible;
        // Narrower than its title no column is of use.
        const int title = header.fontMetrics().horizontalAdvance(column.title) + padding;
        header.resizeSection(i, std::max(column.width / kTwipsPerPixel, title));
    }
    header.setStretchLastSection(visible == 1);  // a column alone has the list to itself
}

void ListBinding::showSelection() {
    const int row = list_.Selected();
    QItemSelectionModel& selection = *tree_.selectionModel();
    if (row < 0 || row >= rows_.rowCount()) {
        selection.clear();
        return;
    }
    const QModelIndex index = rows_.index(row, 0);
    if (selection.currentIndex().row() == row && selection.isRowSelected(row, {})) return;
    selection.setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    // In view, but not moved sideways.
    for (int column = 0; column < list_.ColumnCount(); ++column) {
        const QModelIndex seen = rows_.index(row, column);
        if (tree_.isColumnHidden(column)) continue;
        const QRect place = tree_.visualRect(seen);
        if (place.right() < 0) continue;
        tree_.scrollTo(seen);
        break;
    }
}

void ListBinding::showSortMark() {
    QHeaderView& header = *tree_.header();
    header.setSortIndicatorShown(list_.Sorted());
    if (!list_.Sorted()) return;
    // A hidden key stands right of the column that was clicked.
    int column = list_.SortKey();
    while (column > 0 && header.isSectionHidden(column))
        --column;
    header.setSortIndicator(column, list_.Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

bool ListBinding::mousePressed(QObject& watched, QEvent& event) {
    if (&watched != tree_.viewport()) return false;
    flush();
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const QModelIndex index = tree_.indexAt(mouse.position().toPoint());
    if (!index.isValid() || mouse.button() != Qt::LeftButton) return true;
    const int row = index.row();
    const bool twice = event.type() == QEvent::MouseButtonDblClick;
    view_.act([&](forms::Form& form) {
        twice ? form.UserDoubleClickRow(list_, row) : form.UserSelectRow(list_, row);
    });
    return true;
}

bool ListBinding::keyPressed(QKeyEvent& event) {
    const int code = keyCode(event);
    if (code == forms::key::PageUp || code == forms::key::PageDown) {
        flush();
        const int height =
            std::max(1, tree_.visualRect(rows_.index(std::max(0, list_.Selected()), 0)).height());
        const int page = std::max(1, tree_.viewport()->height() / height - 1);
        const int step = code == forms::key::PageUp ? -page : page;
        const int row = std::clamp(list_.Selected() + step, 0, list_.Count() - 1);
        if (list_.Count() > 0) view_.act([&](forms::Form& form) { form.UserSelectRow(list_, row); });
        return true;
    }
    if (code == forms::key::Left || code == forms::key::Right) return false;  // scrolls sideways
    if (code) {
        view_.act([code](forms::Form& form) { form.UserKey(code); });
        return true;
    }
    if (isTyping(event)) {
        typeText(event.text());
        return true;
    }
    event.ignore();
    return true;
}

bool ListBinding::eventFilter(QObject* watched, QEvent* event) {
    // The widget would select on its own as the mouse moves and is let go; the model does that.
    if (view_.isLive() && watched == tree_.viewport() &&
        (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonRelease)) {
        return static_cast<QMouseEvent*>(event)->buttons() != Qt::NoButton ||
               event->type() == QEvent::MouseButtonRelease;
    }
    return Binding::eventFilter(watched, event);
}

}  // namespace tarmel::desktop
