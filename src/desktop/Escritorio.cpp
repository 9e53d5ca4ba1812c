#include "desktop/Escritorio.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QWindow>
#include <algorithm>

#include "desktop/BarBindings.h"
#include "desktop/FormView.h"
#include "desktop/FrameWindow.h"
#include "desktop/HelpWindow.h"
#include "desktop/IdleWork.h"
#include "desktop/Views.h"
#include "desktop/VistaInforme.h"
#include "platform/basic/RuntimeError.h"
#include "platform/forms/Guards.h"
#include "platform/forms/Pantallas.h"
#include "platform/system/SingleInstance.h"

namespace tarmel::desktop {

namespace box = forms::box;

namespace {

/// A list that fills lets the events run after each row: this often is enough for the hand and the eye.
constexpr int kEventsInterval = 15;  // milliseconds

constexpr double kPreviewInset = 1000.0 / 1440;  // inches
constexpr double kPreviewShare = 0.75;           // of the main window

struct Answer {
    QMessageBox::StandardButton button;
    int value;
    const char* text;
};

constexpr Answer kAnswers[] = {
    {QMessageBox::Ok, box::AnswerOK, "Aceptar"},
    {QMessageBox::Cancel, box::AnswerCancel, "Cancelar"},
    {QMessageBox::Yes, box::AnswerYes, "&Sí"},
    {QMessageBox::No, box::AnswerNo, "&No"},
};

const Answer& answerOf(int value) {
    return *std::find_if(std::begin(kAnswers), std::end(kAnswers) - 1,
                         [&](const Answer& a) { return a.value == value; });
}

/// The answers a box offers, in the order of its buttons.
std::vector<int> answersOffered(int buttons) {
    switch (buttons & 0xF) {
        case box::OKCancel:
            return {box::AnswerOK, box::AnswerCancel};
        case box::YesNo:
            return {box::AnswerYes, box::AnswerNo};
        default:
            return {box::AnswerOK};
    }
}

int defaultAnswer(int buttons) {
    const std::vector<int> offered = answersOffered(buttons);
    return (buttons & box::DefaultButton2) && offered.size() > 1 ? offered[1] : offered[0];
}

QMessageBox::Icon iconOf(int buttons) {
    switch (buttons & 0xF0) {
        case box::Critical:
            return QMessageBox::Critical;
        case box::Question:
            return QMessageBox::Question;
        case box::Exclamation:
            return QMessageBox::Warning;
        case box::Information:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

/// Line ends as the toolkit wants them.
QString shownText(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

/// "Text|*.zip|Todos|*.*" to the toolkit's "Text (*.zip);;Todos (*.*)".
QString fileFilters(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        filters << QStringLiteral("%1 (%2)").arg(parts.at(i), QString(parts.at(i + 1)).replace(u';', u' '));
    }
    return filters.join(QLatin1String(";;"));
}

/// An arrow in place of the hourglass while the user is asked or looks at something.
class PlainCursor {
 public:
    explicit PlainCursor(bool wanted) : changed_(wanted) {
        if (changed_) QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    ~PlainCursor() {
        if (changed_) QApplication::restoreOverrideCursor();
    }
    PlainCursor(const PlainCursor&) = delete;
    PlainCursor& operator=(const PlainCursor&) = delete;

 private:
    bool changed_;
};

/// A window of its own in the middle of what it belongs to.
void centre(QWidget& window, const QWidget* over) {
    const QRect place = over && over->isVisible() ? over->frameGeometry()
                                                  : QApplication::primaryScreen()->availableGeometry();
    QRect frame(QPoint(0, 0), window.size());
    frame.moveCenter(place.center());
    window.move(frame.topLeft());
}

}  // namespace

Escritorio::Escritorio(const QString& applicationPath)
    : applicationPath_(applicationPath.isEmpty() ? QApplication::applicationDirPath() : applicationPath) {}

Escritorio::~Escritorio() {
    closeAll();
    if (hourglass_) QApplication::restoreOverrideCursor();
}

void Escritorio::closeAll() {
    help_.reset();
    previews_.clear();
    idle_.reset();
    // Screens inside the main window and those over it go before it, or it would take their widgets along.
    for (auto& [form, view] : views_) {
        if (frame_ && frame_->holds(*view)) frame_->removePage(*view);
    }
    std::erase_if(views_, [this](const auto& entry) { return &entry.second->surface() != frame_; });
    frame_ = nullptr;
    views_.clear();
    modalLoops_.clear();
    ended_ = false;
    boxesShown_ = 0;
}

// --- Views

FormView* Escritorio::viewOf(const forms::Form& form) const {
    const auto found = views_.find(&form);
    return found == views_.end() ? nullptr : found->second.get();
}

QWidget* Escritorio::widgetOf(const forms::Form& form) const {
    const FormView* view = viewOf(form);
    return view ? &view->surface() : nullptr;
}

QWidget* Escritorio::widgetOf(const forms::Control& control) const {
    const FormView* view = viewOf(control.form());
    return view ? view->widgetOf(control) : nullptr;
}

QAction* Escritorio::actionOf(const forms::MenuItem& item) const {
    const FormView* view = viewOf(item.form());
    const auto* binding = view ? dynamic_cast<const MenuBinding*>(view->bindingOf(&item)) : nullptr;
    return binding ? binding->action() : nullptr;
}

QAction* Escritorio::actionOf(const forms::Toolbar& toolbar, const QString& key) const {
    const FormView* view = viewOf(toolbar.form());
    const auto* binding = view ? dynamic_cast<const ToolbarBinding*>(view->bindingOf(&toolbar)) : nullptr;
    return binding ? binding->action(key) : nullptr;
}

FormView& Escritorio::ensureView(forms::Form& form) {
    if (FormView* view = viewOf(form)) return *view;
    const ViewKind* kind = viewKind(form.Name());
    if (!kind) {
        throw basic::RuntimeError(basic::error::ObjectNotSet,
                                  QStringLiteral("La pantalla %1 no tiene ventana").arg(form.Name()),
                                  forms::kProgramName);
    }
    auto view = std::make_unique<FormView>(*this, form, kind->build(), kind->place);
    if (kind->place == Place::Frame) {
        auto* frame = static_cast<FrameWindow*>(&view->surface());
        frame->pageChosen = [](FormView& page) { page.act([](forms::Form&) {}); };
        frame->pageClosed = [](FormView& page) { page.act([](forms::Form& f) { f.UserClose(); }); };
        frame->keyPressed = [this, main = view.get()](QKeyEvent& event) {
            FormView* page = frame_ ? frame_->pageInFront() : nullptr;
            return page ? page->keyFromWindow(event) : main->keyFromWindow(event);
        };
        frame_ = frame;
    }
    return *(views_[&form] = std::move(view));
}

void Escritorio::place(FormView& view, bool modal) {
    QWidget& surface = view.surface();
    if (view.where() == Place::Frame) {
        // Off screen there is no window manager to fill the screen, and its screen is a small one.
        const bool offScreen = QGuiApplication::platformName() == QLatin1String("offscreen");
        surface.resize(1366, 768);
        offScreen ? surface.show() : surface.showMaximized();
        return;
    }
    if (view.where() == Place::Page && frame_ && frame_->isVisible() && !modal) {
        frame_->addPage(view);
        return;
    }
    QWidget* over = frame_ && frame_->isVisible() ? frame_ : nullptr;
    if (view.where() == Place::Splash) {
        surface.setWindowFlags(Qt::SplashScreen);
    } else {
        const auto flags =
            Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
        surface.setParent(over, flags);
        surface.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    }
    surface.adjustSize();
    centre(surface, over);
    surface.show();
}

void Escritorio::hide(FormView& view) {
    if (frame_ && frame_->holds(view)) frame_->removePage(view);
    view.surface().hide();
}

void Escritorio::showInFront(FormView& view) {
    if (frame_ && frame_->holds(view)) {
        frame_->raisePage(view);
        if (!frame_->isActiveWindow()) frame_->activateWindow();
    } else {
        view.surface().raise();
        view.surface().activateWindow();
    }
    view.showFocus();
}

QWidget* Escritorio::windowInFront() const {
    if (QWidget* active = QApplication::activeWindow()) return active;
    if (frame_ && frame_->isVisible()) return frame_;
    for (const auto& [form, view] : views_) {
        if (view->surface().isVisible()) return view->surface().window();
    }
    return nullptr;
}

void Escritorio::FormShown(forms::Form& form) {
    FormView& view = ensureView(form);
    place(view, form.IsModal());
    view.showFocus();
}

void Escritorio::FormHidden(forms::Form& form) {
    leaveModalLoop(form);
    if (FormView* view = viewOf(form)) hide(*view);
}

void Escritorio::FormUnloaded(forms::Form& form) {
    leaveModalLoop(form);
    const auto found = views_.find(&form);
    if (found == views_.end()) return;
    std::unique_ptr<FormView> view = std::move(found->second);
    views_.erase(found);
    view->detach();
    hide(*view);
    if (view->where() == Place::Frame) frame_ = nullptr;
    // One of its widgets may be in the middle of the event that closed it.
    view.release()->deleteLater();
}

void Escritorio::FormActivated(forms::Form& form) {
    if (FormView* view = viewOf(form)) showInFront(*view);
    // The dialogue that asked for a report closes behind it, and the window below comes forward: not before
    // what the user wanted to see.
    if (!justShown_) return;
    justShown_->raise();
    justShown_->activateWindow();
}

// --- Running

void Escritorio::guard(const std::function<void()>& action) {
    if (ended_) return;
    justShown_.clear();
    try {
        action();
    } catch (const forms::ProgramEnd&) {
        // EndProgram has told the loops; what ran is left.
    } catch (const std::exception& error) {
        const auto* known = dynamic_cast<const basic::RuntimeError*>(&error);
        reportUnexpected(known ? known->description() : QString::fromUtf8(error.what()));
    }
}

/// What no action of the screens caught is a fault of the program itself.
void Escritorio::reportUnexpected(const QString& text) {
    try {
        ShowBox({text, box::Critical, forms::kProgramName});
        EndProgram();
    } catch (const forms::ProgramEnd&) {
    }
}

void Escritorio::run() {
    if (ended_) return;
    QEventLoop loop;
    mainLoop_ = &loop;
    loop.exec();
    mainLoop_ = nullptr;
}

void Escritorio::leaveIfEnded() const {
    if (ended_) throw forms::ProgramEnd{};
}

void Escritorio::EndProgram() {
    ended_ = true;
    for (const ModalLoop& modal : modalLoops_) {
        modal.loop->quit();
    }
    for (QMessageBox* open : boxes_) {
        open->reject();
    }
    if (mainLoop_) mainLoop_->quit();
    throw forms::ProgramEnd{};
}

void Escritorio::leaveModalLoop(const forms::Form& form) {
    for (const ModalLoop& modal : modalLoops_) {
        if (modal.form == &form) modal.loop->quit();
    }
}

void Escritorio::RunModal(forms::Form& form) {
    leaveIfEnded();
    if (!form.IsShown()) return;
    QEventLoop loop;
    modalLoops_.push_back({&form, &loop});
    if (answerer_) QTimer::singleShot(0, &loop, [&] { answerer_->modalRuns(form); });
    loop.exec();
    std::erase_if(modalLoops_, [&](const ModalLoop& modal) { return modal.loop == &loop; });
    leaveIfEnded();
}

// --- Reports

VistaInforme* Escritorio::previewOf(const report::Document& document) const {
    const auto found = std::find_if(previews_.begin(), previews_.end(), [&](const auto& preview) {
        return preview->document().get() == &document;
    });
    return found == previews_.end() ? nullptr : found->get();
}

/// 1000 twips from the screen's left and top, three quarters of the main window.
void Escritorio::placePreview(VistaInforme& preview) const {
    const QScreen* screen = QApplication::primaryScreen();
    const QRect free = screen->availableGeometry();
    const int inset = static_cast<int>(kPreviewInset * screen->logicalDotsPerInch());
    const QSize main = frame_ && frame_->isVisible() ? frame_->size() : free.size();
    preview.resize(main * kPreviewShare);
    preview.move(free.topLeft() + QPoint(inset, inset));
}

void Escritorio::ShowReport(const std::shared_ptr<report::Document>& document, forms::Modality modality) {
    leaveIfEnded();
    previews_.push_back(std::make_unique<VistaInforme>(*this, document));
    VistaInforme& preview = *previews_.back();
    placePreview(preview);
    preview.closed = [this, &preview] { previewClosed(preview); };
    if (modality == forms::Modality::Modal) return runPreview(preview);
    preview.show();
    preview.activateWindow();
    justShown_ = &preview;
}

void Escritorio::runPreview(VistaInforme& preview) {
    // The caller's hourglass is for his own work.
    const PlainCursor cursor(hourglass_);
    const std::shared_ptr<report::Document> document = preview.document();
    QEventLoop loop;
    preview.closed = [this, &preview, &loop] {
        previewClosed(preview);
        loop.quit();
    };
    preview.setWindowModality(Qt::ApplicationModal);
    preview.show();
    preview.activateWindow();
    modalLoops_.push_back({nullptr, &loop});
    if (answerer_) QTimer::singleShot(0, &loop, [&] { answerer_->reportRuns(*document); });
    loop.exec();
    std::erase_if(modalLoops_, [&](const ModalLoop& modal) { return modal.loop == &loop; });
    leaveIfEnded();
}

/// Its own closing event is still running.
void Escritorio::previewClosed(const VistaInforme& preview) {
    const auto found = std::find_if(previews_.begin(), previews_.end(),
                                    [&](const auto& one) { return one.get() == &preview; });
    if (found == previews_.end()) return;
    VistaInforme* gone = found->release();
    previews_.erase(found);
    gone->hide();
    gone->deleteLater();
    // Not every platform has a window manager that brings back what was under it.
    if (QWidget* under = windowInFront()) under->activateWindow();
}

void Escritorio::DoEvents() {
    if (sinceEvents_.isValid() && sinceEvents_.elapsed() < kEventsInterval) return;
    {
        const forms::SetWhile<bool> inside(insideAction_, true);
        QApplication::processEvents();
    }
    sinceEvents_.start();
    leaveIfEnded();
}

void Escritorio::paintNow() {
    const forms::SetWhile<bool> inside(insideAction_, true);
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void Escritorio::Sleep(int milliseconds) {
    paintNow();
    QThread::msleep(static_cast<unsigned long>(std::max(0, milliseconds)));
}

void Escritorio::WhenIdle(std::function<bool()> work) {
    idle_ = std::make_unique<IdleWork>(
        [this, work = std::move(work)] {
            bool more = false;
            guard([&] { more = work(); });
            return more;
        },
        // The hourglass stands for as long as a command runs; a list that fills lets events run without it.
        [this] { return hourglass_ || insideAction_; });
}

// --- Asking the user

int Escritorio::askUser(const forms::MessageBox& message) {
    QMessageBox widget;
    const QPointer<QWidget> over = windowInFront();
    // Not a child of the window in front, which may go while the box is open; but over it.
    if (over && over->windowHandle()) {
        widget.winId();
        widget.windowHandle()->setTransientParent(over->windowHandle());
    }
    widget.setWindowTitle(message.title.isEmpty() ? forms::kProgramName : message.title);
    widget.setTextFormat(Qt::PlainText);
    widget.setText(shownText(message.text));
    widget.setIcon(iconOf(message.buttons));
    for (const int value : answersOffered(message.buttons)) {
        const Answer& answer = answerOf(value);
        widget.addButton(answer.button)->setText(QString::fromUtf8(answer.text));
    }
    const int byDefault = defaultAnswer(message.buttons);
    widget.setDefaultButton(answerOf(byDefault).button);
    widget.adjustSize();
    centre(widget, over);
    if (answerer_) {
        QTimer::singleShot(0, &widget, [&] {
            const int answer = answerer_->answerBox(message, widget).value_or(byDefault);
            if (auto* button = widget.button(answerOf(answer).button)) {
                button->click();
            } else {
                widget.reject();
            }
        });
    }
    boxes_.push_back(&widget);
    widget.exec();
    std::erase(boxes_, &widget);
    // Not every platform has a window manager that brings back what was under the box.
    if (over && over->isVisible()) over->activateWindow();
    leaveIfEnded();
    const auto pressed = widget.standardButton(widget.clickedButton());
    for (const Answer& answer : kAnswers) {
        if (answer.button == pressed) return answer.value;
    }
    return byDefault;
}

int Escritorio::ShowBox(const forms::MessageBox& message) {
    ++boxesShown_;
    const PlainCursor cursor(hourglass_);
    return askUser(message);
}

std::optional<QString> Escritorio::OpenFileDialogue(const forms::FileDialogue& dialogue) {
    if (answerer_) return answerer_->answerFileDialogue(dialogue);
    QFileDialog widget(windowInFront(), dialogue.title, dialogue.folder, fileFilters(dialogue.filter));
    widget.setFileMode(QFileDialog::ExistingFile);
    // A name typed without its extension is taken for one of the last kind.
    const QString extension = dialogue.filter.section(QStringLiteral("*."), -1);
    if (extension != QLatin1String("*")) widget.setDefaultSuffix(extension);
    if (!dialogue.initialName.isEmpty()) widget.selectFile(dialogue.initialName);
    const bool accepted = widget.exec() == QDialog::Accepted;
    leaveIfEnded();
    if (!accepted || widget.selectedFiles().isEmpty()) return std::nullopt;
    return QDir::toNativeSeparators(widget.selectedFiles().constFirst());
}

std::optional<QString> Escritorio::SaveFileDialogue(const forms::FileDialogue& dialogue) {
    if (answerer_) return answerer_->answerFileDialogue(dialogue);
    QFileDialog widget(windowInFront(), dialogue.title, dialogue.folder, fileFilters(dialogue.filter));
    widget.setAcceptMode(QFileDialog::AcceptSave);
    widget.setDefaultSuffix(dialogue.filter.section(QStringLiteral("*."), -1));
    widget.selectFile(dialogue.initialName);
    const bool accepted = widget.exec() == QDialog::Accepted;
    leaveIfEnded();
    if (!accepted || widget.selectedFiles().isEmpty()) return std::nullopt;
    return widget.selectedFiles().constFirst();
}

void Escritorio::SetPointer(forms::Pointer pointer) {
    const bool wanted = pointer == forms::Pointer::Hourglass;
    if (wanted == hourglass_) return;
    hourglass_ = wanted;
    wanted ? QApplication::setOverrideCursor(Qt::WaitCursor) : QApplication::restoreOverrideCursor();
}

void Escritorio::ShowHelp(const QString& file) {
    if (!help_) help_ = std::make_unique<HelpWindow>();
    help_->open(QDir(applicationPath_).filePath(file));
}

void Escritorio::ShowDateTimeSettings() {
    // Whatever this desktop has; a scripted run must not open windows of other programs.
    if (answerer_ || QGuiApplication::platformName() == QLatin1String("offscreen")) return;
    const QList<QStringList> programs{{QStringLiteral("gnome-control-center"), QStringLiteral("datetime")},
                                      {QStringLiteral("systemsettings"), QStringLiteral("kcm_clock")},
                                      {QStringLiteral("kcmshell5"), QStringLiteral("clock")},
                                      {QStringLiteral("time-admin")},
                                      {QStringLiteral("mate-time-admin")}};
    for (const QStringList& command : programs) {
        const QString program = QStandardPaths::findExecutable(command.constFirst());
        if (program.isEmpty()) continue;
        if (QProcess::startDetached(program, command.mid(1))) return;
    }
}

void Escritorio::setApplicationPath(const QString& path) {
    applicationPath_ = path;
    instance_.reset();
}

bool Escritorio::PreviousInstance() const {
    // Held from here on, so that later copies see this one.
    if (!instance_) {
        // Driven on a folder that is not its own, it stands for the program that lies there.
        const QString own = sys::SingleInstance::ownExecutable();
        const bool isOwn = QDir(applicationPath_) == QDir(QFileInfo(own).absolutePath());
        const QString there = QDir(applicationPath_).filePath(forms::kProgramName);
        instance_ = std::make_unique<sys::SingleInstance>(isOwn ? own : there);
    }
    return instance_->anotherIsRunning();
}

QImage capturar(const Escritorio& escritorio, const forms::Form* form) {
    QApplication::processEvents();
    QWidget* window = form ? escritorio.widgetOf(*form) : nullptr;
    if (!form && !escritorio.previews().empty()) {
        VistaInforme* preview = escritorio.previews().back().get();
        if (preview->isModal() || preview->isActiveWindow()) window = preview;
    }
    if (!form && !window) {
        const forms::Form* active = forms::pantallas().Active();
        window = active ? escritorio.widgetOf(*active) : nullptr;
        if (window) window = window->window();
    }
    if (!window) return {};
    // A picture shows where the focus is.
    window->activateWindow();
    QApplication::processEvents();
    return window->grab().toImage();
}

}  // namespace tarmel::desktop
