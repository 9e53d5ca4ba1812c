#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <span>
#include <vector>

#include "platform/basic/Date.h"
#include "platform/basic/Variant.h"
#include "platform/forms/Control.h"

namespace tarmel::forms {

class Label : public Control {
 public:
    Label(Form& form, const QString& name, const QString& caption = QString());
    [[nodiscard]] const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);

 private:
    QString caption_;
};

/// A container: hiding it hides what it holds.
class Frame : public Control {
 public:
    Frame(Form& form, const QString& name, const QString& caption = QString());
    [[nodiscard]] const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    void Holds(std::initializer_list<Control*> controls);

 private:
    QString caption_;
};

class TextBox : public Control {
 public:
    TextBox(Form& form, const QString& name);

    [[nodiscard]] const QString& Text() const { return text_; }
    /// Raises Change when it differs; cut to MaxLength; the cursor goes to its end.
    void SetText(const QString& text);
    /// 0 is no limit.
    [[nodiscard]] int MaxLength() const { return maxLength_; }
    void SetMaxLength(int length);
    /// The edit style that takes digits only, from the keyboard and from the clipboard.
    [[nodiscard]] bool DigitsOnly() const { return digitsOnly_; }
    void SetDigitsOnly(bool on) { digitsOnly_ = on; }
    /// Not editable by the user.
    [[nodiscard]] bool Locked() const { return locked_; }
    void SetLocked(bool on) { locked_ = on; }
    [[nodiscard]] int SelStart() const { return selStart_; }
    [[nodiscard]] int SelLength() const { return selLength_; }
    void Select(int start, int length);
    void SelectAll() { Select(0, static_cast<int>(text_.size())); }

    Event Change;

    void HandleChar(int character) override;
    bool HandleKey(int key) override;

 private:
    void replaceSelection(const QString& text);
    QString text_;
    int maxLength_ = 0;
    bool digitsOnly_ = false;
    bool locked_ = false;
    int selStart_ = 0;
    int selLength_ = 0;
};

/// A combo of the list-only kind: keys typed in it build a prefix that chooses the first item which begins
/// so.
class ComboBox : public Control {
 public:
    ComboBox(Form& form, const QString& name);

    void Clear();
    /// Appends; the index of the new item.
    int AddItem(const QString& text, int itemData = 0);
    [[nodiscard]] int ListCount() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] const QString& List(int index) const;
    [[nodiscard]] int ItemData(int index) const;
    void SetItemData(int index, int data);

    [[nodiscard]] int ListIndex() const { return listIndex_; }
    /// Raises Click when the index changes and sets the text; -1 empties the text. Out of range raises 5.
    void SetListIndex(int index);
    /// The chosen item's text, or "".
    [[nodiscard]] virtual QString Text() const;
    /// First item that begins with the prefix, without regard to case; -1 when there is none.
    [[nodiscard]] int Find(const QString& prefix) const;

    void HandleChar(int character) override;
    bool HandleKey(int key) override;
    void FocusChanged(bool got) override;

 protected:
    ComboBox(Form& form, const QString& name, Kind kind);
    /// Replaces all items at once, which the observer sees as one change; nothing is chosen, no event comes.
    void SetItems(std::vector<QString> texts);
    virtual void chosen();  ///< the index has changed

 private:
    struct Item {
        QString text;
        int data = 0;
    };
    std::vector<Item> items_;
    int listIndex_ = -1;
    QString prefix_;
};

/// A combo over rows of the database: each item carries the value of its bound column.
class DataCombo : public ComboBox {
 public:
    DataCombo(Form& form, const QString& name);

    struct Row {
        QString text;
        QString bound;
    };
    /// Binds new rows; what was chosen is forgotten.
    void SetRows(std::vector<Row> rows);
    /// Chooses the item of exactly this text. A text that no item has is shown all the same, with no bound
    /// value: a record may hold what the list does not offer. Raises Change when it differs.
    void SetText(const QString& text);
    [[nodiscard]] QString Text() const override;
    /// The bound value of the chosen item as text, or "".
    [[nodiscard]] QString BoundText() const;

    Event Change;  ///< the choice has changed, from code or by hand

 protected:
    void chosen() override;

 private:
    std::vector<QString> bound_;
    QString foreign_;  ///< the text shown while it is none of the items'
};

class DatePicker : public Control {
 public:
    /// The picker's own formats: 2 is the time, 3 a format of ours (CustomFormat).
    enum class Style { LongDate = 0, ShortDate = 1, Time = 2, Custom = 3 };
    DatePicker(Form& form, const QString& name, const QString& customFormat = QString());

    [[nodiscard]] Style Format() const { return style_; }
    [[nodiscard]] const QString& CustomFormat() const { return customFormat_; }
    [[nodiscard]] basic::Date Value() const { return value_; }
    /// Raises Change when it differs.
    void SetValue(basic::Date value);
    /// A text is read as a date; raises 13 when it is none.
    void SetValue(const QString& text);
    /// The value in the picker's format, as it is shown.
    [[nodiscard]] QString Text() const;

    Event Change;

 private:
    Style style_ = Style::ShortDate;
    QString customFormat_;
    basic::Date value_;
};

class CommandButton : public Control {
 public:
    /// "&" marks the letter of its shortcut.
    CommandButton(Form& form, const QString& name, const QString& caption = QString());
    [[nodiscard]] const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    /// Enter / Esc anywhere on the form click it.
    bool Default = false;
    bool Cancel = false;
    bool HandleKey(int key) override;

 private:
    QString caption_;
};

/// Options of one container exclude each other.
class OptionButton : public Control {
 public:
    OptionButton(Form& form, const QString& name, const QString& caption = QString());
    [[nodiscard]] const QString& Caption() const { return caption_; }
    [[nodiscard]] bool Value() const { return value_; }
    /// Setting it to true clears the others and raises Click.
    void SetValue(bool value);
    bool HandleKey(int key) override;

 private:
    QString caption_;
    bool value_ = false;
};

class CheckBox : public Control {
 public:
    CheckBox(Form& form, const QString& name, const QString& caption = QString());
    [[nodiscard]] const QString& Caption() const { return caption_; }
    void SetCaption(const QString& caption);
    /// 0 or 1. Raises Click when it changes.
    [[nodiscard]] int Value() const { return value_; }
    void SetValue(int value);
    bool HandleKey(int key) override;

 private:
    QString caption_;
    int value_ = 0;
};

class ProgressBar : public Control {
 public:
    ProgressBar(Form& form, const QString& name);
    [[nodiscard]] int Value() const { return value_; }
    [[nodiscard]] int Max() const { return max_; }
    void SetMax(int max);
    void SetValue(int value);

 private:
    int value_ = 0;
    int max_ = 100;
};

/// Pages of which one is in front; each page is a Frame that the strip shows and hides.
class TabStrip : public Control {
 public:
    TabStrip(Form& form, const QString& name);
    void AddPage(const QString& caption, Frame& page);
    [[nodiscard]] int PageCount() const { return static_cast<int>(pages_.size()); }
    [[nodiscard]] const QString& PageCaption(int index) const;
    [[nodiscard]] Frame& Page(int index) const;
    [[nodiscard]] int Tab() const { return tab_; }
    /// Raises Click when it changes.
    void SetTab(int index);

    /// The arrows go from page to page.
    bool HandleKey(int key) override;

 private:
    struct Page_ {
        QString caption;
        Frame* frame;
    };
    std::vector<Page_> pages_;
    int tab_ = 0;
};

/// Rows of text under heads, in report style. Rows are held packed, a few hundred bytes each, so that a
/// hundred thousand stay cheap. Row positions and sub-items count as told in each operation.
class ListView : public Control {
 public:
    struct Column {
        QString title;
        int width = 0;  ///< in twips; 0 cannot be seen
        QString tag;
    };
    ListView(Form& form, const QString& name);

    void ClearColumns();
    void AddColumn(const QString& title, int width, const QString& tag = QString());
    [[nodiscard]] int ColumnCount() const { return static_cast<int>(columns_.size()); }
    [[nodiscard]] const Column& ColumnAt(int index) const;  ///< from 0

    void Clear();
    [[nodiscard]] int Count() const { return static_cast<int>(rows_.size()); }
    /// Adds a row: its text and its sub-items 1.. in order. The position from 0 where it now stands.
    int Add(std::span<const QString> texts);
    /// Text of a row (position from 0): sub-item 0 is the row's text.
    [[nodiscard]] QString Cell(int row, int subItem) const;
    void SetCell(int row, int subItem, const QString& text);
    void Remove(int row);
    /// Position of the row whose text is the whole text given; -1 when there is none.
    [[nodiscard]] int FindItem(const QString& text) const;

    /// The selected row from 0; -1 for none.
    [[nodiscard]] int Selected() const { return selected_; }
    void Select(int row);
    [[nodiscard]] QString SelectedText(int subItem = 0) const;

    /// 0 is the row's text, then the sub-items. Sorting is by text, without regard to case, and stable.
    [[nodiscard]] int SortKey() const { return sortKey_; }
    void SetSortKey(int subItem);
    [[nodiscard]] bool Descending() const { return descending_; }
    void SetSortOrder(int order);  ///< 0 ascending, 1 descending
    [[nodiscard]] bool Sorted() const { return sorted_; }
    void SetSorted(bool sorted);

    std::function<void(int column)> ColumnClick;  ///< column from 1

    bool HandleKey(int key) override;

 private:
    using PackedRow = QByteArray;  ///< UTF-8 texts, each closed by NUL
    void checkRow(int row) const;
    void sortRows();
    std::vector<Column> columns_;
    std::vector<PackedRow> rows_;
    int selected_ = -1;
    int sortKey_ = 0;
    bool descending_ = false;
    bool sorted_ = false;
};

/// An entry of the main menu; a caption of "-" is a separator. Entries without a parent stand in the bar.
class MenuItem : public Control {
 public:
    MenuItem(Form& form, const QString& name, const QString& caption, MenuItem* parent = nullptr);
    [[nodiscard]] const QString& Caption() const { return caption_; }
    [[nodiscard]] MenuItem* Parent() const { return parent_; }
    [[nodiscard]] bool IsSeparator() const { return caption_ == QLatin1String("-"); }

 private:
    QString caption_;
    MenuItem* parent_;
};

class Toolbar : public Control {
 public:
    struct Button {
        QString key;
        QString tip;
    };
    Toolbar(Form& form, const QString& name);
    void AddButton(const QString& key, const QString& tip) { buttons_.push_back({key, tip}); }
    [[nodiscard]] const std::vector<Button>& Buttons() const { return buttons_; }
    std::function<void(const QString& key)> ButtonClick;

 private:
    std::vector<Button> buttons_;
};

class StatusBar : public Control {
 public:
    enum class PanelKind { Text, Date, Time };
    struct Panel {
        QString key;
        QString tip;
        PanelKind kind = PanelKind::Text;
        QString text;
    };
    StatusBar(Form& form, const QString& name);
    void AddPanel(const QString& key, const QString& tip, PanelKind kind) {
        panels_.push_back({key, tip, kind, {}});
    }
    [[nodiscard]] const std::vector<Panel>& Panels() const { return panels_; }
    /// The panel of that key; RuntimeError 9 when there is none.
    [[nodiscard]] const QString& PanelText(const QString& key) const;
    void SetPanelText(const QString& key, const QString& text);
    std::function<void(const QString& key)> PanelClick;

 private:
    std::vector<Panel> panels_;
};

}  // namespace tarmel::forms
