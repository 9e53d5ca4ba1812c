#include "scenario/DesktopDriver.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTimeEdit>
#include <QDir>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QTreeView>
#include <cstdio>
#include <map>
#include <utility>

#include "core/DefinicionesGlobales.h"
#include "core/General.h"
#include "desktop/FormView.h"
#include "desktop/VistaInforme.h"
#include "platform/basic/Text.h"
#include "platform/forms/Pantallas.h"

using namespace Qt::StringLiterals;

namespace tarmel::scenario {

namespace {

constexpr int kIntoWidget = 8;  // pixels from the edge: on the mark of a check box, on the text of a row

Qt::Key toolkitKey(int key) {
    namespace code = forms::key;
    static const std::map<int, Qt::Key> keys = {
        {code::Backspace, Qt::Key_Backspace}, {code::Tab, Qt::Key_Tab},       {code::Enter, Qt::Key_Return},
        {code::Esc, Qt::Key_Escape},          {code::Blank, Qt::Key_Space},   {code::PageUp, Qt::Key_PageUp},
        {code::PageDown, Qt::Key_PageDown},   {code::End, Qt::Key_End},       {code::Home, Qt::Key_Home},
        {code::Left, Qt::Key_Left},           {code::Up, Qt::Key_Up},         {code::Right, Qt::Key_Right},
        {code::Down, Qt::Key_Down},           {code::Delete, Qt::Key_Delete},
    };
    if (key >= code::F1 && key <= code::F12) return static_cast<Qt::Key>(Qt::Key_F1 + (key - code::F1));
    return keys.at(key);
}

/// What the off-screen platform cannot do to its windows is no news; all else is said as usual.
void sayUnlessOffScreen(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (message.startsWith("This plugin does not support"_L1)) return;
    const QString line = qFormatLogMessage(type, context, message);
    std::fprintf(stderr, "%s\n", line.toLocal8Bit().constData());
}

void clickAt(QWidget& widget, QPoint at) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, at);
}

void clickOn(QWidget& widget) {
    clickAt(widget, widget.rect().center());
}

}  // namespace

std::unique_ptr<QApplication> makeApplication(int& argc, char** argv) {
    const bool hasDisplay =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (!hasDisplay && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(sayUnlessOffScreen);
    auto application = std::make_unique<QApplication>(argc, argv);
    desktop::prepareApplication();
    return application;
}

DesktopDriver::DesktopDriver(Runner& runner, const QString& applicationFolder, QString shotsFolder)
    : runner_(runner), escritorio_(applicationFolder), shots_(std::move(shotsFolder)) {
    forms::setHost(&escritorio_);
    escritorio_.setAnswerer(this);
}

DesktopDriver::~DesktopDriver() {
    forgetProgram();
    forms::setHost(nullptr);
}

/// The screens let go of their windows before the windows go; of a process that ends, nothing stays in
/// memory.
void DesktopDriver::forgetProgram() {
    escritorio_.closeAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    forms::pantallas().Reset();
    reiniciarSesion();
}

/// What an event sets off is done, and seen, before the next step.
void DesktopDriver::run(const std::function<void()>& action) {
    struct Running {
        int& depth;
        explicit Running(int& d) : depth(d) { ++depth; }
        ~Running() { --depth; }
    };
    {
        const Running running(depth_);
        QApplication::processEvents();
        action();
        QApplication::processEvents();
    }
    if (depth_ > 0) return;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (!escritorio_.ended()) return;
    ended_ = true;
    forgetProgram();
}

void DesktopDriver::start() {
    ended_ = false;
    run([this] { escritorio_.guard([] { Main(); }); });
}

bool DesktopDriver::ended() const {
    return ended_ || escritorio_.ended();
}

void DesktopDriver::abandon() {
    run([this] { escritorio_.guard([this] { escritorio_.EndProgram(); }); });
}

// --- Widgets
// ------------------------------------------------------------------------------------------------------

QWidget& DesktopDriver::widgetOf(const forms::Control& control) const {
    const QString name = control.form().Name() + u'.' + control.Name();
    QWidget* widget = escritorio_.widgetOf(control);
    if (!widget) throw Refused{name + u" has no widget"_s};
    if (!widget->isVisible()) throw Refused{u"the widget of %1 cannot be seen"_s.arg(name)};
    if (!widget->isEnabled()) throw Refused{u"the widget of %1 is disabled"_s.arg(name)};
    return *widget;
}

template <typename Widget>
Widget& DesktopDriver::widgetOf(const forms::Control& control) const {
    auto* widget = qobject_cast<Widget*>(&widgetOf(control));
    if (!widget) throw Refused{u"the widget of %1 is of another class"_s.arg(control.Name())};
    return *widget;
}

QWidget& DesktopDriver::keyTarget(const forms::Form& form) const {
    const forms::Control* active = form.ActiveControl();
    QWidget* widget = active ? escritorio_.widgetOf(*active) : nullptr;
    if (!widget || !widget->isVisible()) widget = escritorio_.widgetOf(form);
    if (!widget) throw Refused{form.Name() + u" has no window"_s};
    return *widget;
}

void DesktopDriver::bringForward(forms::Form& form) {
    run([&] {
        if (desktop::FormView* view = escritorio_.viewOf(form)) view->act([](forms::Form&) {});
    });
}

void DesktopDriver::goTo(forms::Control& control) {
    run([&] {
        QWidget& widget = widgetOf(control);
        if (control.kind() == forms::Kind::TextBox || control.kind() == forms::Kind::DatePicker) {
            return clickOn(widget);
        }
        // A press of the mouse would already choose or command something there.
        escritorio_.viewOf(control.form())->goTo(control);
    });
}

// --- Keys
// ---------------------------------------------------------------------------------------------------------

void DesktopDriver::typeChar(forms::Form& form, QChar character) {
    run([&] {
        const auto key = static_cast<Qt::Key>(character.toUpper().unicode());
        const auto shift = character.isUpper() ? Qt::ShiftModifier : Qt::NoModifier;
        QTest::sendKeyEvent(QTest::Click, &keyTarget(form), key, QString(character), shift);
    });
}

void DesktopDriver::pressKey(forms::Form& form, int key, bool shift) {
    run([&] {
        const Qt::Key code = toolkitKey(key);
        const bool back = shift && code == Qt::Key_Tab;
        QTest::keyClick(&keyTarget(form), back ? Qt::Key_Backtab : code,
                        shift ? Qt::ShiftModifier : Qt::NoModifier);
    });
}

void DesktopDriver::cursorToEnd(forms::TextBox& box) {
    run([&] {
        QWidget& widget = widgetOf(box);
        // In a text of several lines End alone stays on its line; in one of a single line Ctrl+End does
        // nothing.
        const bool isMemo = qobject_cast<QPlainTextEdit*>(&widget);
        QTest::keyClick(&widget, Qt::Key_End, isMemo ? Qt::ControlModifier : Qt::NoModifier);
    });
}

void DesktopDriver::selectAll(forms::TextBox& box) {
    run([&] { QTest::keyClick(&widgetOf(box), Qt::Key_A, Qt::ControlModifier); });
}

// --- The mouse
// ----------------------------------------------------------------------------------------------------

void DesktopDriver::click(forms::Control& control) {
    run([&] {
        switch (control.kind()) {
            case forms::Kind::CommandButton:
            case forms::Kind::TextBox:
            case forms::Kind::DatePicker:
                return clickOn(widgetOf(control));
            case forms::Kind::CheckBox:
            case forms::Kind::OptionButton: {
                QWidget& widget = widgetOf(control);
                return clickAt(widget, {kIntoWidget, widget.height() / 2});
            }
            default:
                escritorio_.viewOf(control.form())->act([&](forms::Form& form) { form.UserClick(control); });
        }
    });
}

void DesktopDriver::choose(forms::ComboBox& combo, int index) {
    run([&] {
        auto& box = widgetOf<QComboBox>(combo);
        QTest::keyClick(&box, Qt::Key_Down, Qt::AltModifier);
        QAbstractItemView& list = *box.view();
        if (!list.isVisible()) throw Refused{combo.Name() + u" does not drop down"_s};
        list.setCurrentIndex(box.model()->index(index, 0));
        QTest::keyClick(&list, Qt::Key_Return);
    });
}

void DesktopDriver::setDate(forms::DatePicker& picker, basic::Date date) {
    run([&] {
        auto& edit = widgetOf<QDateTimeEdit>(picker);
        const bool isTime = date.dayPart() == basic::Date();
        const auto shown = [&](basic::Date value) {
            return basic::Format(value, isTime ? u"HHmm"_s : u"ddmmyyyy"_s);
        };
        edit.setSelectedSection(edit.sectionAt(0));
        for (const QChar digit : shown(date)) {
            QTest::sendKeyEvent(QTest::Click, &edit, static_cast<Qt::Key>(digit.unicode()), QString(digit),
                                Qt::NoModifier);
        }
        if (shown(picker.Value()) == shown(date)) return;
        // Typed part by part it would pass a day that does not exist; the calendar gives it whole.
        const auto parts = date.parts();
        QDateTime value = edit.dateTime();
        isTime ? value.setTime(QTime(parts.hour, parts.minute))
               : value.setDate(QDate(parts.year, parts.month, parts.day));
        edit.setDateTime(value);
    });
}

void DesktopDriver::onRow(forms::ListView& list, int row, bool twice) {
    auto& tree = widgetOf<QTreeView>(list);
    if (row >= tree.model()->rowCount()) throw Refused{u"the list does not show that row"_s};
    int column = 0;
    while (tree.isColumnHidden(column) && column + 1 < tree.model()->columnCount())
        ++column;
    const QModelIndex index = tree.model()->index(row, column);
    tree.horizontalScrollBar()->setValue(0);
    tree.scrollTo(index);
    const QPoint at(kIntoWidget, tree.visualRect(index).center().y());
    if (twice) {
        QTest::mouseDClick(tree.viewport(), Qt::LeftButton, {}, at);
    } else {
        clickAt(*tree.viewport(), at);
    }
}

void DesktopDriver::clickRow(forms::ListView& list, int row) {
    run([&] { onRow(list, row, false); });
}

void DesktopDriver::doubleClickRow(forms::ListView& list, int row) {
    run([&] { onRow(list, row, true); });
}

void DesktopDriver::clickColumn(forms::ListView& list, int columnFrom1) {
    run([&] {
        auto& tree = widgetOf<QTreeView>(list);
        QHeaderView& heads = *tree.header();
        const int section = columnFrom1 - 1;
        if (heads.isSectionHidden(section)) throw Refused{u"that column cannot be seen"_s};
        tree.horizontalScrollBar()->setValue(heads.sectionPosition(section));
        const QPoint at(heads.sectionViewportPosition(section) + heads.sectionSize(section) / 2,
                        heads.height() / 2);
        clickAt(*heads.viewport(), at);
    });
}

void DesktopDriver::selectTab(forms::TabStrip& strip, int index) {
    run([&] {
        QTabBar& tabs = *widgetOf<QTabWidget>(strip).tabBar();
        clickAt(tabs, tabs.tabRect(index).center());
    });
}

void DesktopDriver::clickMenu(forms::MenuItem& item) {
    run([&] {
        QAction* action = escritorio_.actionOf(item);
        if (!action || !action->isEnabled() || !action->isVisible()) {
            throw Refused{item.Name() + u" cannot be chosen in the menu"_s};
        }
        action->trigger();
    });
}

void DesktopDriver::clickTool(forms::Toolbar& bar, const QString& key) {
    run([&] {
        auto& tools = widgetOf<QToolBar>(bar);
        QAction* action = escritorio_.actionOf(bar, key);
        QWidget* button = action ? tools.widgetForAction(action) : nullptr;
        if (!button) throw Refused{key + u" has no button"_s};
        clickOn(*button);
    });
}

void DesktopDriver::clickPanel(forms::StatusBar& bar, const QString& key) {
    run([&] {
        for (QLabel* panel : widgetOf(bar).findChildren<QLabel*>()) {
            if (panel->property("panel").toString() == key) return clickOn(*panel);
        }
        throw Refused{key + u" has no panel"_s};
    });
}

void DesktopDriver::close(forms::Form& form) {
    run([&] {
        QWidget* window = escritorio_.widgetOf(form);
        if (!window) throw Refused{form.Name() + u" has no window"_s};
        window->close();
    });
}

// --- Boxes, modal screens, pictures
// -------------------------------------------------------------------------------

std::optional<int> DesktopDriver::answerBox(const forms::MessageBox& message, QMessageBox&) {
    return runner_.dialogues().answer(message);
}

std::optional<QString> DesktopDriver::answerFileDialogue(const forms::FileDialogue& dialogue) {
    return runner_.dialogues().pick(dialogue);
}

void DesktopDriver::modalRuns(forms::Form& form) {
    runner_.modalRuns([&] { return form.IsShown(); });
}

void DesktopDriver::reportRuns(const report::Document& document) {
    runner_.modalRuns([&] { return escritorio_.previewOf(document) != nullptr; });
}

std::vector<OpenReport> DesktopDriver::reports() const {
    std::vector<OpenReport> all;
    for (const auto& preview : escritorio_.previews())
        all.push_back(
            {preview->document(), preview->isModal() ? forms::Modality::Modal : forms::Modality::Modeless});
    return all;
}

void DesktopDriver::closeReport() {
    run([&] { escritorio_.previews().back()->close(); });
}

QString DesktopDriver::shot(const QString& name) {
    if (shots_.isEmpty()) return {};
    const QImage picture = desktop::capturar(escritorio_, nullptr);
    if (picture.isNull()) throw Refused{u"there is no window"_s};
    if (!QDir().mkpath(shots_)) throw Refused{u"the folder cannot be made: "_s + shots_};
    const QString file = QDir(shots_).filePath(name + u".png"_s);
    if (!picture.save(file)) throw Refused{u"the picture cannot be written: "_s + file};
    return file;
}

}  // namespace tarmel::scenario
