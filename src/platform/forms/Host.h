#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

namespace tarmel::report {
class Document;
}

namespace tarmel::forms {

class Form;
enum class Modality;

/// Thrown by Host::EndProgram to unwind whatever was running: the process ends at once, nothing behind it
/// runs.
struct ProgramEnd {};

/// Box values: buttons, icon and default button are added.
namespace box {
inline constexpr int OK = 0, OKCancel = 1, YesNo = 4;
inline constexpr int Critical = 16, Question = 32, Exclamation = 48, Information = 64;
inline constexpr int DefaultButton2 = 256;
/// Answers.
inline constexpr int AnswerOK = 1, AnswerCancel = 2, AnswerYes = 6, AnswerNo = 7;
}  // namespace box

struct MessageBox {
    QString text;
    int buttons = box::OK;
    QString title;
};

struct FileDialogue {
    QString title;
    QString folder;
    QString filter;  ///< "Text|*.zip"
    QString initialName;
};

enum class Pointer { Default = 0, Hourglass = 11 };

/// How the screens reach the world. The desktop implements it with windows, the scenario runner with a
/// script.
class Host {
 public:
    virtual ~Host() = default;

    virtual int ShowBox(const MessageBox& message) = 0;
    /// Lets pending events of the screens run.
    virtual void DoEvents() = 0;
    /// A form has become visible, hidden, or is gone for good. After FormUnloaded the form must not be
    /// touched.
    virtual void FormShown(Form& form) = 0;
    virtual void FormHidden(Form& form) = 0;
    virtual void FormUnloaded(Form& form) = 0;
    /// Brings a form that is shown to the front.
    virtual void FormActivated(Form& form) = 0;
    /// Runs until the form is hidden or unloaded (Form::IsShown). Throws ProgramEnd when the program ended
    /// meanwhile.
    virtual void RunModal(Form& form) = 0;
    virtual void SetPointer(Pointer pointer) = 0;
    virtual void Sleep(int milliseconds) = 0;
    /// From now on calls `work` in the pauses of the user's, until the program ends, and soon again when it
    /// says that more is left. It takes a few milliseconds and throws nothing. A host without a user never
    /// calls it.
    virtual void WhenIdle(std::function<bool()> /*work*/) {}
    virtual std::optional<QString> OpenFileDialogue(const FileDialogue& dialogue) = 0;
    /// Opens a report's preview, 1000 twips from the screen's left and top and 0.75 of the main window's
    /// size. A modal one returns when it has been closed. A host that shows nothing takes it as closed at
    /// once.
    virtual void ShowReport(const std::shared_ptr<report::Document>& /*document*/, Modality /*modality*/) {}
    virtual void ShowHelp(const QString& file) = 0;
    virtual void ShowDateTimeSettings() = 0;
    /// The program's own folder: where the executable lies.
    [[nodiscard]] virtual QString ApplicationPath() const = 0;
    [[nodiscard]] virtual bool PreviousInstance() const = 0;
    [[noreturn]] virtual void EndProgram() = 0;
};

/// The host in use. Set before any form is made; it must outlive them.
[[nodiscard]] Host& host();
void setHost(Host* host);

/// Shows a box and gives the answer. Without a title the box bears the program's name.
int MsgBox(const QString& text, int buttons = box::OK, const QString& title = QString());

/// The name in the title of boxes that have none of their own.
inline const QString kProgramName = QStringLiteral("Tarmel");

}  // namespace tarmel::forms
