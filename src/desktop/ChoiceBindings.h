#pragma once

#include <QAbstractButton>
#include <QAbstractListModel>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QListView>

#include "desktop/Binding.h"

namespace tarmel::desktop {

/// The items of a combo as they stand in its model; nothing is copied, so that thousands of places cost
/// nothing.
class ComboItems final : public QAbstractListModel {
 public:
    explicit ComboItems(const forms::ComboBox& combo) : combo_(&combo) {}
    /// The combo's items have changed.
    void reload();
    void forget();
    [[nodiscard]] int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
    const forms::ComboBox* combo_;
    int count_ = 0;
};

/// A combo of the list-only kind. Keys go to the model, which finds by prefix; the list that drops down is
/// the widget's.
class ComboBinding final : public Binding {
 public:
    ComboBinding(FormView& view, forms::ComboBox& combo, QComboBox& widget);
    ~ComboBinding() override;
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent& event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void itemsChanged();
    void loadItems();
    void showIndex();
    void dropDown();
    bool listKeyPressed(QKeyEvent& event);

    forms::ComboBox& combo_;
    QComboBox& box_;
    bool stale_ = true;  // stands before the list, whose making already sends the box events
    QListView* list_;    // what drops down; the combo owns it
    ComboItems items_;
};

class DateBinding final : public Binding {
 public:
    DateBinding(FormView& view, forms::DatePicker& picker, QDateTimeEdit& edit);
    void show(forms::Property property, int row) override;
    void showAll() override;
    void commit() override;

 protected:
    bool keyPressed(QKeyEvent& event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void showValue();
    void edited(const QDateTime& value);

    forms::DatePicker& picker_;
    QDateTimeEdit& edit_;
    bool showing_ = false;
};

/// Command buttons, options and check boxes: a click asks the model; what is shown is what the model says.
class ButtonBinding final : public Binding {
 public:
    ButtonBinding(FormView& view, forms::Control& control, QAbstractButton& button);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent& event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool goesOnPress() const override { return false; }

 private:
    void showState();
    QAbstractButton& button_;
};

}  // namespace tarmel::desktop
