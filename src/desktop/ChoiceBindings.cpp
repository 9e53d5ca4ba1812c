#include "desktop/ChoiceBindings.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QListView>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>

#include "desktop/FormView.h"
#include "desktop/Keys.h"

namespace tarmel::desktop {

using forms::Kind;
using forms::Property;

// --- Combos

void ComboItems::reload() {
    beginResetModel();
    count_ = combo_ ? combo_->ListCount() : 0;
    endResetModel();
}

void ComboItems::forget() {
    combo_ = nullptr;
}

int ComboItems::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

QVariant ComboItems::data(const QModelIndex& index, int role) const {
    if (!combo_ || role != Qt::DisplayRole || index.row() >= combo_->ListCount()) return {};
    return combo_->List(index.row());
}

ComboBinding::ComboBinding(FormView& view, forms::ComboBox& combo, QComboBox& widget)
    : Binding(view, combo, widget),
      combo_(combo),
      box_(widget),
      list_(new QListView(&widget)),
      items_(combo) {
    list_->setUniformItemSizes(true);
    widget.setView(list_);
    widget.setModel(&items_);
    widget.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    widget.setMaxVisibleItems(16);
    widget.setAttribute(Qt::WA_InputMethodEnabled);
    watch(*list_);
    connect(&widget, &QComboBox::activated, this, [this](int index) {
        view_.act([&](forms::Form& form) { form.UserChoose(combo_, index); });
        if (view_.isLive()) showIndex();
    });
}

ComboBinding::~ComboBinding() {
    items_.forget();
}

void ComboBinding::showAll() {
    Binding::showAll();
    loadItems();
}

void ComboBinding::show(Property property, int row) {
    switch (property) {
        case Property::Items:
            itemsChanged();
            break;
        case Property::ListIndex:
        case Property::Text:
            showIndex();
            break;
        default:
            Binding::show(property, row);
    }
}

/// Items come one by one while a combo is filled: the widget takes them once, when that has ended.
void ComboBinding::itemsChanged() {
    if (stale_) return;
    stale_ = true;
    QTimer::singleShot(0, this, [this] {
        if (stale_ && view_.isLive()) loadItems();
    });
}

void ComboBinding::loadItems() {
    stale_ = false;
    {
        const QSignalBlocker quiet(&box_);
        items_.reload();
    }
    showIndex();
    // As wide as its texts, measured on some of them: thousands would take long.
    constexpr int kMeasured = 300;
    int width = box_.width();
    const QFontMetrics metrics(list_->font());
    for (int i = 0; i < std::min(combo_.ListCount(), kMeasured); ++i) {
        width = std::max(width, metrics.horizontalAdvance(combo_.List(i)));
    }
    const int frame = list_->verticalScrollBar()->sizeHint().width() + metrics.averageCharWidth() * 4;
    list_->setMinimumWidth(std::min(width + frame, box_.screen()->availableGeometry().width() / 2));
}

void ComboBinding::showIndex() {
    if (stale_) return loadItems();
    const QSignalBlocker quiet(&box_);
    box_.setCurrentIndex(combo_.ListIndex());
    // A text that the list does not offer, as a record may hold it.
    box_.setPlaceholderText(combo_.ListIndex() < 0 ? combo_.Text() : QString());
    box_.update();
}

void ComboBinding::dropDown() {
    if (stale_) loadItems();
    box_.showPopup();
}

bool ComboBinding::keyPressed(QKeyEvent& event) {
    const int key = event.key();
    const bool alt = event.modifiers() & Qt::AltModifier;
    if (alt && (key == Qt::Key_Down || key == Qt::Key_Up)) {
        dropDown();
        return true;
    }
    const int code = keyCode(event);
    if (code && code != forms::key::Blank) {
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

/// In the list that has dropped down, Tab takes the item under the cursor and goes on.
bool ComboBinding::listKeyPressed(QKeyEvent& event) {
    if (keyCode(event) != forms::key::Tab) return false;
    const int index = list_->currentIndex().row();
    box_.hidePopup();
    view_.act([&](forms::Form& form) { form.UserChoose(combo_, index); });
    view_.formKey(event);
    return true;
}

bool ComboBinding::eventFilter(QObject* watched, QEvent* event) {
    if (!view_.isLive()) return false;
    // Not asked as view(): while the widget is making its list, that would make another.
    if (watched != &box_) {
        return event->type() == QEvent::KeyPress && listKeyPressed(static_cast<QKeyEvent&>(*event));
    }
    // Turning the wheel over a form must not change what was typed.
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    const bool used = Binding::eventFilter(watched, event);
    if (!used && stale_ && event->type() == QEvent::MouseButtonPress && view_.isLive()) loadItems();
    return used;
}

// --- Dates

namespace {

/// Ours to the toolkit's; without a time zone, whose summer time has hours that do not exist.
QDateTime toQt(basic::Date date) {
    const auto parts = date.parts();
    return QDateTime(QDate(parts.year, parts.month, parts.day), QTime(parts.hour, parts.minute, parts.second),
                     Qt::UTC);
}

basic::Date fromQt(const QDateTime& value) {
    const QDate day = value.date();
    const QTime time = value.time();
    return basic::Date::of(day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second());
}

QString displayFormat(const forms::DatePicker& picker) {
    QString format = picker.CustomFormat().isEmpty() ? QStringLiteral("dd/MM/yyyy") : picker.CustomFormat();
    if (picker.Format() == forms::DatePicker::Style::Time) format = QStringLiteral("HH:mm:ss");
    return format;
}

bool hasDay(const QString& format) {
    return format.contains(u'd');
}

}  // namespace

DateBinding::DateBinding(FormView& view, forms::DatePicker& picker, QDateTimeEdit& edit)
    : Binding(view, picker, edit), picker_(picker), edit_(edit) {
    edit.setTimeSpec(Qt::UTC);
    edit.setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
    edit.setDisplayFormat(displayFormat(picker));
    edit.setDateTimeRange(QDateTime(QDate(100, 1, 1), QTime(0, 0), Qt::UTC),
                          QDateTime(QDate(9999, 12, 31), QTime(23, 59, 59), Qt::UTC));
    edit.setCalendarPopup(hasDay(edit.displayFormat()));
    if (!edit.calendarPopup()) edit.setButtonSymbols(QAbstractSpinBox::UpDownArrows);
    edit.setContextMenuPolicy(Qt::NoContextMenu);
    connect(&edit, &QDateTimeEdit::dateTimeChanged, this, [this](const QDateTime& value) { edited(value); });
}

void DateBinding::showAll() {
    Binding::showAll();
    showValue();
}

void DateBinding::show(Property property, int row) {
    if (property == Property::Value) return showValue();
    Binding::show(property, row);
    if (property == Property::Focus) edit_.setSelectedSection(edit_.sectionAt(0));
}

void DateBinding::showValue() {
    const QDateTime value = toQt(picker_.Value());
    if (edit_.dateTime() == value) return;
    showing_ = true;
    edit_.setDateTime(value);
    showing_ = false;
}

void DateBinding::edited(const QDateTime& value) {
    if (showing_ || !view_.isLive()) return;
    view_.act([&](forms::Form& form) { form.UserSetDate(picker_, fromQt(value)); });
    if (view_.isLive()) showValue();
}

void DateBinding::commit() {
    edit_.interpretText();
}

bool DateBinding::keyPressed(QKeyEvent& event) {
    // A hand corrects a day or an hour by typing it anew; the calendar drops down with Alt and the arrow.
    if ((event.modifiers() & Qt::AltModifier) && event.key() == Qt::Key_Down) return false;
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) {
        event.ignore();
        return true;
    }
    return false;
}

bool DateBinding::eventFilter(QObject* watched, QEvent* event) {
    if (view_.isLive() && event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    // Digits go into the widget's sections, never through the model's characters.
    if (event->type() == QEvent::InputMethod) return false;
    return Binding::eventFilter(watched, event);
}

// --- Buttons

ButtonBinding::ButtonBinding(FormView& view, forms::Control& control, QAbstractButton& button)
    : Binding(view, control, button), button_(button) {
    button.setAutoExclusive(false);
    connect(&button, &QAbstractButton::clicked, this, [this] {
        showState();
        view_.act([this](forms::Form& form) { form.UserClick(this->control()); });
        if (view_.isLive()) showState();
    });
}

void ButtonBinding::showAll() {
    Binding::showAll();
    showState();
}

void ButtonBinding::show(Property property, int row) {
    if (property == Property::Caption || property == Property::Value) return showState();
    Binding::show(property, row);
}

void ButtonBinding::showState() {
    if (!view_.isLive()) return;
    const QSignalBlocker quiet(&button_);
    switch (control().kind()) {
        case Kind::OptionButton: {
            const auto& option = static_cast<const forms::OptionButton&>(control());
            button_.setText(option.Caption());
            button_.setChecked(option.Value());
            break;
        }
        case Kind::CheckBox: {
            const auto& box = static_cast<const forms::CheckBox&>(control());
            button_.setText(box.Caption());
            button_.setChecked(box.Value() == 1);
            break;
        }
        default: {
            const QString& caption = static_cast<const forms::CommandButton&>(control()).Caption();
            // A button without words is known by its picture.
            if (!caption.isEmpty()) button_.setText(caption);
        }
    }
}

bool ButtonBinding::keyPressed(QKeyEvent& event) {
    const int code = keyCode(event);
    if (!code) return false;
    view_.act([code](forms::Form& form) { form.UserKey(code); });
    return true;
}

bool ButtonBinding::eventFilter(QObject* watched, QEvent* event) {
    // The letter of a button comes through the screen (FormView::formKey), which knows when two share one.
    if (view_.isLive() && event->type() == QEvent::Shortcut) {
        view_.act([this](forms::Form& form) { form.UserClick(control()); });
        return true;
    }
    return Binding::eventFilter(watched, event);
}

}  // namespace tarmel::desktop
