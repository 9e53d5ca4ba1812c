#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "platform/forms/Form.h"
#include "platform/report/Document.h"

namespace tarmel::scenario {

/// A step that no hand could do.
struct Refused {
    QString why;
};

/// A report whose preview is open.
struct OpenReport {
    std::shared_ptr<report::Document> document;
    forms::Modality modality;
};

/// The hands of a scenario: how each thing that a user does reaches the screens. One driver acts on the
/// screens' models, the other on the windows. What may be acted on, and when, is the runner's business; a
/// control that is named here can act and lies in front.
class Driver {
 public:
    virtual ~Driver() = default;

    /// The program that is started next is the one of another folder.
    virtual void setApplicationFolder(const QString& folder) = 0;
    /// Starts the program; again after it has ended.
    virtual void start() = 0;
    /// The program has ended.
    [[nodiscard]] virtual bool ended() const = 0;
    /// Ends what is running as if the process were killed: no event reaches the screens. Within a modal
    /// screen this only begins; it is done when the action that opened it has been left.
    virtual void abandon() = 0;

    virtual void bringForward(forms::Form& form) = 0;
    virtual void goTo(forms::Control& control) = 0;
    virtual void typeChar(forms::Form& form, QChar character) = 0;
    virtual void pressKey(forms::Form& form, int key, bool shift) = 0;
    /// In a text that has the focus.
    virtual void cursorToEnd(forms::TextBox& box) = 0;
    virtual void selectAll(forms::TextBox& box) = 0;

    virtual void click(forms::Control& control) = 0;
    virtual void choose(forms::ComboBox& combo, int index) = 0;
    /// A picker of the day, or of the hour.
    virtual void setDate(forms::DatePicker& picker, basic::Date date) = 0;
    virtual void clickRow(forms::ListView& list, int row) = 0;
    virtual void doubleClickRow(forms::ListView& list, int row) = 0;
    virtual void clickColumn(forms::ListView& list, int columnFrom1) = 0;
    virtual void selectTab(forms::TabStrip& strip, int index) = 0;
    virtual void clickMenu(forms::MenuItem& item) = 0;
    virtual void clickTool(forms::Toolbar& bar, const QString& key) = 0;
    virtual void clickPanel(forms::StatusBar& bar, const QString& key) = 0;
    virtual void close(forms::Form& form) = 0;
    /// The previews that are open, the one in front last.
    [[nodiscard]] virtual std::vector<OpenReport> reports() const = 0;
    /// Closes the one in front.
    virtual void closeReport() = 0;

    /// A picture of the main window or the screen in front; the file's path, empty when this driver makes
    /// none.
    virtual QString shot(const QString& name) = 0;
};

}  // namespace tarmel::scenario
