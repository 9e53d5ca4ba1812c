#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "platform/forms/Form.h"
#include "platform/forms/Host.h"

class QAction;
class QEventLoop;
class QMessageBox;
class QWidget;

namespace tarmel::sys {
class SingleInstance;
}

namespace tarmel::desktop {

class FormView;
class FrameWindow;
class HelpWindow;
class VistaInforme;
class IdleWork;

/// Answers in the user's place what no test can click: boxes, file dialogues, and the time while a modal
/// screen is open. Without one the user himself answers.
class Answerer {
 public:
    virtual ~Answerer() = default;
    /// The box is on the screen. The answer's button is then pressed; without an answer, the default button.
    virtual std::optional<int> answerBox(const forms::MessageBox& message, QMessageBox& widget) = 0;
    /// The path chosen; nothing when the dialogue is cancelled. No dialogue is shown.
    virtual std::optional<QString> answerFileDialogue(const forms::FileDialogue& dialogue) = 0;
    /// Called once from inside the loop of a modal screen, which is on the screen: what the user does until
    /// it closes. It may return before: the loop goes on until the screen is hidden or unloaded.
    virtual void modalRuns(forms::Form& form) = 0;
    /// The same for the preview of a report that is shown as modal.
    virtual void reportRuns(const report::Document& document) = 0;
};

/// The host of the windows program: every screen that is shown gets a window or a page of the main window,
/// joined to the screen by a FormView.
///
/// For those who drive the windows (tests, the scenario runner):
/// - make a QApplication, an Escritorio on the application folder, and forms::setHost(&escritorio); then run
/// actions
///   inside guard(). Destroy the Escritorio (or call closeAll) to begin again with another program.
/// - widgetOf gives a form's window and a control's widget, null when the form is not shown or the control
/// has none of
///   its own (entries of the menu: actionOf). Send key and mouse events to these widgets; the focus follows
///   the model, so it is moved by mouse presses and by Tab, and typed keys go to the widget of
///   Form::ActiveControl.
/// - set an Answerer before boxes may appear.
/// - processEvents lets paints and queued updates happen; capturar takes a picture.
class Escritorio final : public forms::Host {
 public:
    /// Without a folder the application folder is the executable's.
    explicit Escritorio(const QString& applicationPath = QString());
    ~Escritorio() override;

    void setAnswerer(Answerer* answerer) { answerer_ = answerer; }
    /// From here on it stands for the program of another folder. Only while none is running.
    void setApplicationPath(const QString& path);

    [[nodiscard]] QWidget* widgetOf(const forms::Form& form) const;
    [[nodiscard]] QWidget* widgetOf(const forms::Control& control) const;
    /// What triggers an entry of the main menu, or a button of the toolbar by its key.
    [[nodiscard]] QAction* actionOf(const forms::MenuItem& item) const;
    [[nodiscard]] QAction* actionOf(const forms::Toolbar& toolbar, const QString& key) const;
    [[nodiscard]] FormView* viewOf(const forms::Form& form) const;
    [[nodiscard]] FrameWindow* frame() const { return frame_; }
    /// The reports' windows that are open, the last one opened behind the others; null when there is none.
    [[nodiscard]] const std::vector<std::unique_ptr<VistaInforme>>& previews() const { return previews_; }
    [[nodiscard]] VistaInforme* previewOf(const report::Document& document) const;

    /// Runs what an event of the toolkit asks for. Nothing escapes: the end of the program only leaves what
    /// ran, any other exception is reported in a box and ends the program. Once the program has ended nothing
    /// runs any more.
    void guard(const std::function<void()>& action);
    [[nodiscard]] bool ended() const { return ended_; }
    /// Boxes shown so far: tells whether one appeared during an action.
    [[nodiscard]] int boxesShown() const { return boxesShown_; }
    /// Until the program ends. Returns at once when it has.
    void run();
    /// Paints what has changed, without letting the user in.
    void paintNow();
    /// Takes all windows away, with no event to the screens, and is ready for another program.
    void closeAll();

    // --- forms::Host
    int ShowBox(const forms::MessageBox& message) override;
    void DoEvents() override;
    void FormShown(forms::Form& form) override;
    void FormHidden(forms::Form& form) override;
    void FormUnloaded(forms::Form& form) override;
    void FormActivated(forms::Form& form) override;
    void RunModal(forms::Form& form) override;
    void SetPointer(forms::Pointer pointer) override;
    void Sleep(int milliseconds) override;
    void WhenIdle(std::function<bool()> work) override;
    std::optional<QString> OpenFileDialogue(const forms::FileDialogue& dialogue) override;
    void ShowReport(const std::shared_ptr<report::Document>& document, forms::Modality modality) override;
    /// Where to save; asks before a file is written over.
    std::optional<QString> SaveFileDialogue(const forms::FileDialogue& dialogue);
    void ShowHelp(const QString& file) override;
    void ShowDateTimeSettings() override;
    [[nodiscard]] QString ApplicationPath() const override { return applicationPath_; }
    [[nodiscard]] bool PreviousInstance() const override;
    [[noreturn]] void EndProgram() override;

 private:
    struct ModalLoop {
        forms::Form* form;  // null for a report's
        QEventLoop* loop;
    };
    [[nodiscard]] FormView& ensureView(forms::Form& form);
    void leaveModalLoop(const forms::Form& form);
    void reportUnexpected(const QString& text);
    void showInFront(FormView& view);
    [[nodiscard]] int askUser(const forms::MessageBox& message);
    void leaveIfEnded() const;
    void place(FormView& view, bool modal);
    void placePreview(VistaInforme& preview) const;
    void runPreview(VistaInforme& preview);
    void previewClosed(const VistaInforme& preview);
    void hide(FormView& view);
    [[nodiscard]] QWidget* windowInFront() const;

    QString applicationPath_;
    Answerer* answerer_ = nullptr;
    std::map<const forms::Form*, std::unique_ptr<FormView>> views_;
    FrameWindow* frame_ = nullptr;  // the window of one of the views
    std::unique_ptr<HelpWindow> help_;
    std::vector<std::unique_ptr<VistaInforme>> previews_;
    QPointer<VistaInforme> justShown_;  ///< a preview that the action which is running has opened
    std::unique_ptr<IdleWork> idle_;
    mutable std::unique_ptr<sys::SingleInstance> instance_;
    std::vector<ModalLoop> modalLoops_;
    std::vector<QMessageBox*> boxes_;
    QEventLoop* mainLoop_ = nullptr;
    QElapsedTimer sinceEvents_;
    int boxesShown_ = 0;
    bool hourglass_ = false;
    bool insideAction_ = false;  // events run in the middle of what a screen does
    bool ended_ = false;
};

/// The Qt application's settings that every program over these windows shares: Spanish, style, icon.
void prepareApplication();

/// A picture of a screen as it stands; of the main window when the screen lies inside it and `form` is null.
[[nodiscard]] QImage capturar(const Escritorio& escritorio, const forms::Form* form);

}  // namespace tarmel::desktop
