#pragma once

#include <QAbstractTableModel>
#include <QTimer>
#include <QTreeView>

#include "desktop/Binding.h"

namespace tarmel::desktop {

/// The rows of a list as they stand in its model: only what is on the screen is ever asked for.
class ListRows final : public QAbstractTableModel {
 public:
    explicit ListRows(const forms::ListView& list) : list_(&list) {}
    /// Rows were appended since the last look.
    void appended();
    /// Anything may have changed.
    void reload();
    void rowChanged(int row);
    void forget() { list_ = nullptr; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    const forms::ListView* list_;
    int rows_ = 0;
    int columns_ = 0;
};

class ListBinding final : public Binding {
 public:
    ListBinding(FormView& view, forms::ListView& list, QTreeView& tree);
    ~ListBinding() override;
    void show(forms::Property property, int row) override;
    void showAll() override;
    /// What has been reported is on the screen now, and not with the next turn of the event loop.
    void flush();

 protected:
    bool keyPressed(QKeyEvent& event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool mousePressed(QObject& watched, QEvent& event) override;

 private:
    void later();
    void showColumns();
    void showSelection();
    void showSortMark();

    forms::ListView& list_;
    QTreeView& tree_;
    ListRows rows_;
    QTimer timer_;
    bool allStale_ = true;
    bool columnsStale_ = true;
    bool selectionStale_ = true;
};

}  // namespace tarmel::desktop
