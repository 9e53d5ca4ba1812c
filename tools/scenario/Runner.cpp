#include "scenario/Runner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

#include "core/DefinicionesGlobales.h"
#include "platform/basic/Text.h"
#include "platform/forms/Pantallas.h"
#include "scenario/Properties.h"

using namespace Qt::StringLiterals;

namespace tarmel::scenario {

using forms::Kind;

namespace {
constexpr int kGoToTries = 2;  // a hand that was sent elsewhere clicks once more
}  // namespace

Runner::Runner(QString applicationFolder, QTextStream& out)
    : home_(std::move(applicationFolder)),
      folder_(home_),
      out_(out),
      dialogues_(
          folder_, [this](const QString& line) { tell(line); }, [this](const QString& why) { refuse(why); }) {
}

// --- Transcript
// ---------------------------------------------------------------------------------------------------

void Runner::tell(const QString& line) {
    out_ << "        " << line << '\n';
    out_.flush();
}

void Runner::refuse(const QString& why) {
    ++tally_.refused;
    tell(u"REFUSED: "_s + why);
}

void Runner::pass() {
    ++tally_.passed;
}

void Runner::fail(const QString& why) {
    ++tally_.failed;
    tell(u"FAILED: "_s + why);
}

void Runner::compare(const QString& what, const QString& expected, const QString& is) {
    if (expected == is) return pass();
    fail(u"%1 is %2"_s.arg(what, onOneLine(is)));
}

// --- Steps
// --------------------------------------------------------------------------------------------------------

void Runner::play(const QString& file) {
    out_ << "== " << file << '\n';
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return refuse(u"the file cannot be read: "_s + source.errorString());
    script_ = parse(QString::fromUtf8(source.readAll()));
    next_ = 0;
    dialogues_.clear();
    setFolder(home_);
    for (const Fault& fault : script_.faults) {
        refuse(u"line %1: %2"_s.arg(fault.line).arg(fault.text));
    }
    while (runNext()) {
    }
    countUnexpectedEnd();
    if (isRunning()) driver_->abandon();
    program_ = Program::NotStarted;
}

void Runner::countUnexpectedEnd() {
    if (endError_ && !endErrorExpected_) ++tally_.brokenOff;
    endError_.reset();
    endErrorExpected_ = false;
}

bool Runner::runNext() {
    if (next_ >= script_.steps.size()) return false;
    run(script_.steps[next_++]);
    return true;
}

void Runner::modalRuns(const std::function<bool()>& isOpen) {
    while (!driver_->ended() && isOpen()) {
        if (!runNext()) return driver_->abandon();
    }
}

void Runner::run(const Step& step) {
    out_ << QString::number(step.line).rightJustified(6) << "  " << step.source << '\n';
    out_.flush();
    try {
        step.verb == Verb::Expect ? meet(step.expectation) : act(step);
    } catch (const Refused& refused) {
        step.verb == Verb::Expect ? fail(refused.why) : refuse(refused.why);
    }
    noteEnd();
}

void Runner::noteEnd() {
    if (!isRunning() || !driver_->ended()) return;
    program_ = Program::Ended;
    endError_ = dialogues_.lastError();
    tell(endError_ ? u"the program has ended with error %1"_s.arg(*endError_) : u"the program has ended"_s);
}

void Runner::act(const Step& step) {
    switch (step.verb) {
        case Verb::Start:
            if (isRunning()) throw Refused{u"the program is running"_s};
            countUnexpectedEnd();
            program_ = Program::Running;
            return driver_->start();
        case Verb::Answer:
            return dialogues_.queueAnswer(step.answer);
        case Verb::Pick:
            return dialogues_.queuePick(step.text);
        case Verb::Sql:
            return runSql(step.text);
        case Verb::Folder:
            return goToFolder(step.text);
        case Verb::Copy:
            return copy(step);
        case Verb::Unpack:
            return unpack(step);
        case Verb::Shot: {
            const QString file = driver_->shot(step.text);
            if (!file.isEmpty()) tell(u"picture "_s + file);
            return;
        }
        default:
            break;
    }
    if (!isRunning()) throw Refused{u"the program is not running"_s};
    switch (step.verb) {
        case Verb::Type:
            return type(step);
        case Verb::Clear:
            return clear(step);
        case Verb::Key:
            return key(step);
        case Verb::Leave:
            return driver_->pressKey(goTo(step.target).form(), forms::key::Tab, false);
        case Verb::Choose:
            return choose(step);
        case Verb::Date:
        case Verb::Time: {
            auto& picker = only<forms::DatePicker>(actingControl(step.target), {Kind::DatePicker});
            goTo(step.target);
            return driver_->setDate(picker, step.date);
        }
        case Verb::Click:
            return driver_->click(actingControl(step.target));
        case Verb::Check:
            return set(step, true);
        case Verb::Uncheck:
            return set(step, false);
        case Verb::Row:
        case Verb::DoubleRow:
        case Verb::Column:
            return row(step);
        case Verb::Menu: {
            forms::Control& control = actingControl({frame().Name(), step.text});
            return driver_->clickMenu(only<forms::MenuItem>(control, {Kind::MenuItem}));
        }
        case Verb::Tool: {
            auto& bar = barOf<forms::Toolbar>(frame(), Kind::Toolbar);
            const auto& all = bar.Buttons();
            if (std::none_of(all.begin(), all.end(), [&](const auto& b) { return b.key == step.text; })) {
                throw Refused{u"the toolbar has no button "_s + step.text};
            }
            return driver_->clickTool(bar, step.text);
        }
        case Verb::Panel: {
            auto& bar = barOf<forms::StatusBar>(frame(), Kind::StatusBar);
            const auto& all = bar.Panels();
            if (std::none_of(all.begin(), all.end(), [&](const auto& p) { return p.key == step.text; })) {
                throw Refused{u"the status bar has no panel "_s + step.text};
            }
            return driver_->clickPanel(bar, step.text);
        }
        case Verb::Close:
            if (step.target.screen == "report"_L1) return closeReport();
            return driver_->close(actingForm(step.target.screen));
        default:
            return;
    }
}

// --- Screens and controls
// -----------------------------------------------------------------------------------------

forms::Form& Runner::openForm(const QString& name) const {
    forms::Form* form = isRunning() ? forms::pantallas().Loaded(name) : nullptr;
    if (!form) throw Refused{name + u" is not open"_s};
    return *form;
}

forms::Form& Runner::actingForm(const QString& name) {
    forms::Form& form = openForm(name);
    if (!form.IsShown()) throw Refused{name + u" is not shown"_s};
    if (forms::pantallas().IsBlocked(form)) throw Refused{u"a modal screen lies over "_s + name};
    for (const OpenReport& report : driver_->reports()) {
        if (report.modality == forms::Modality::Modal) {
            throw Refused{u"%1 lies over %2"_s.arg(report.document->report().name, name)};
        }
    }
    if (!form.IsFrameWindow && forms::pantallas().Active() != &form) driver_->bringForward(form);
    return form;
}

forms::Form& Runner::frame() {
    return actingForm(frameWindow().Name());
}

forms::Form& Runner::frameWindow() const {
    for (forms::Form* form : forms::pantallas().All()) {
        if (form->IsFrameWindow) return *form;
    }
    throw Refused{u"the main window is not open"_s};
}

forms::Control& Runner::namedControl(const Target& target) const {
    forms::Control* control = openForm(target.screen).Find(target.control);
    if (!control) throw Refused{u"%1 has no control %2"_s.arg(target.screen, target.control)};
    return *control;
}

forms::Control& Runner::actingControl(const Target& target) {
    actingForm(target.screen);
    forms::Control& control = namedControl(target);
    for (HiddenPage page = hiddenPageOf(control); page.strip && page.strip->CanAct();
         page = hiddenPageOf(control)) {
        driver_->selectTab(*page.strip, page.index);
        if (page.strip->Tab() != page.index) break;
    }
    if (!control.IsShown()) throw Refused{target.text() + u" is hidden"_s};
    if (!control.CanAct()) throw Refused{target.text() + u" is disabled"_s};
    return control;
}

forms::Control& Runner::goTo(const Target& target) {
    forms::Control& control = actingControl(target);
    const forms::Form* const form = &control.form();
    for (int i = 0; i < kGoToTries && !control.HasFocus(); ++i) {
        driver_->goTo(control);
        noteEnd();
        if (!isRunning()) throw Refused{u"the program has ended on the way to "_s + target.text()};
        // Leaving the other control may have closed the screen.
        if (forms::pantallas().Loaded(target.screen) != form) {
            throw Refused{target.screen + u" has closed on the way"_s};
        }
        if (!control.CanAct()) throw Refused{target.text() + u" cannot act any more"_s};
    }
    if (!control.HasFocus()) {
        const forms::Control* active = control.form().ActiveControl();
        throw Refused{u"the focus stayed on "_s + (active ? active->Name() : u"nothing"_s)};
    }
    return control;
}

template <typename T>
T& Runner::only(forms::Control& control, std::initializer_list<Kind> kinds) const {
    if (std::find(kinds.begin(), kinds.end(), control.kind()) == kinds.end()) {
        throw Refused{control.Name() + u" is no control for this step"_s};
    }
    return static_cast<T&>(control);
}

template <typename T>
T& Runner::barOf(forms::Form& form, Kind kind) const {
    for (forms::Control* control : form.Controls()) {
        if (control->kind() == kind && control->CanAct()) return static_cast<T&>(*control);
    }
    throw Refused{form.Name() + u" has no such bar"_s};
}

// --- What the user does
// -------------------------------------------------------------------------------------------

void Runner::type(const Step& step) {
    forms::Control& control = goTo(step.target);
    only<forms::Control>(control, {Kind::TextBox, Kind::ComboBox, Kind::DataCombo, Kind::ListView});
    if (control.kind() == Kind::TextBox) driver_->cursorToEnd(static_cast<forms::TextBox&>(control));
    for (const QChar character : step.text) {
        forms::Form& form = actingForm(step.target.screen);
        if (character == u'\r' || character == u'\n') {
            driver_->pressKey(form, forms::key::Enter, false);
        } else {
            driver_->typeChar(form, character);
        }
        noteEnd();
        if (!isRunning()) return;
    }
}

void Runner::clear(const Step& step) {
    forms::Control& control = goTo(step.target);
    if (control.kind() == Kind::TextBox) {
        driver_->selectAll(static_cast<forms::TextBox&>(control));
    } else if (control.kind() != Kind::ComboBox && control.kind() != Kind::DataCombo) {
        throw Refused{step.target.text() + u" cannot be cleared"_s};
    }
    driver_->pressKey(control.form(), forms::key::Delete, false);
}

void Runner::key(const Step& step) {
    forms::Form& form =
        step.target.control.isEmpty() ? actingForm(step.target.screen) : goTo(step.target).form();
    driver_->pressKey(form, step.key, step.shift);
}

void Runner::choose(const Step& step) {
    forms::Control& control = actingControl(step.target);
    const auto pick = [&](int count, int first, const std::function<QString(int)>& text) {
        if (step.index) {
            const int at = *step.index - first;
            if (at < 0 || at >= count)
                throw Refused{u"there is no item #%1 of %2"_s.arg(*step.index).arg(count)};
            return at;
        }
        for (int i = 0; i < count; ++i) {
            if (text(i).startsWith(step.text, Qt::CaseInsensitive)) return i;
        }
        throw Refused{u"no item begins with "_s + onOneLine(step.text)};
    };
    // What leaving the other control does may change the items: they are looked at after going there.
    switch (control.kind()) {
        case Kind::ComboBox:
        case Kind::DataCombo: {
            goTo(step.target);
            auto& combo = static_cast<forms::ComboBox&>(control);
            return driver_->choose(combo, pick(combo.ListCount(), 0, [&](int i) { return combo.List(i); }));
        }
        case Kind::ListView: {
            goTo(step.target);
            auto& list = static_cast<forms::ListView&>(control);
            return driver_->clickRow(list, pick(list.Count(), 1, [&](int i) { return list.Cell(i, 0); }));
        }
        case Kind::TabStrip: {
            auto& strip = static_cast<forms::TabStrip&>(control);
            return driver_->selectTab(
                strip, pick(strip.PageCount(), 0, [&](int i) { return strip.PageCaption(i); }));
        }
        default:
            throw Refused{step.target.text() + u" has nothing to choose"_s};
    }
}

void Runner::set(const Step& step, bool checked) {
    forms::Control& control = goTo(step.target);
    only<forms::Control>(control, {Kind::CheckBox, Kind::OptionButton});
    const auto isChecked = [&] {
        return propertyOf(control, u"Checked"_s, {}) == (checked ? u"True"_s : u"False"_s);
    };
    if (isChecked()) return;
    if (control.kind() == Kind::OptionButton && !checked) {
        throw Refused{u"an option is unchecked by checking another"_s};
    }
    driver_->click(control);
}

void Runner::row(const Step& step) {
    auto& list = only<forms::ListView>(actingControl(step.target), {Kind::ListView});
    goTo(step.target);
    const int number = step.index.value_or(0);
    if (step.verb == Verb::Column) {
        if (number > list.ColumnCount()) throw Refused{u"the list has %1 columns"_s.arg(list.ColumnCount())};
        return driver_->clickColumn(list, number);
    }
    if (number > list.Count()) throw Refused{u"the list has %1 rows"_s.arg(list.Count())};
    if (step.verb == Verb::Row) return driver_->clickRow(list, number - 1);
    driver_->doubleClickRow(list, number - 1);
}

void Runner::closeReport() {
    const std::vector<OpenReport> reports = driver_->reports();
    if (reports.empty()) throw Refused{u"no report is open"_s};
    if (reports.back().modality == forms::Modality::Modeless) {
        for (const forms::Form* form : forms::pantallas().All()) {
            if (form->IsShown() && form->IsModal()) throw Refused{form->Name() + u" lies over the report"_s};
        }
    }
    driver_->closeReport();
}

// --- The database
// -------------------------------------------------------------------------------------------------

QString Runner::rowsOf(const QString& statement) const {
    // A program that has ended has closed its connection; what it left can still be looked at.
    ado::Connection own;
    if (!gConexion.IsOpen()) own.OpenFile(QDir(folder_).filePath(u"Tarmel_11.mdb"_s));
    ado::Recordset rows;
    rows.Open(statement, own.IsOpen() ? own : gConexion);
    QStringList lines;
    for (; rows.IsOpen() && !rows.Eof(); rows.MoveNext()) {
        QStringList fields;
        for (int i = 0; i < rows.FieldCount(); ++i) {
            fields << rows.Text(i);
        }
        lines << fields.join(u';');
    }
    return lines.join(u'\n');
}

void Runner::runSql(const QString& statement) {
    try {
        const QString rows = rowsOf(statement);
        if (rows.isEmpty()) return;
        for (const QString& line : rows.split(u'\n')) {
            tell(line);
        }
    } catch (const basic::RuntimeError& error) {
        throw Refused{u"error %1: %2"_s.arg(error.number()).arg(error.description())};
    }
}

// --- Files and folders
// --------------------------------------------------------------------------------------------

void Runner::setFolder(const QString& folder) {
    folder_ = folder;
    dialogues_.setFolder(folder);
    driver_->setApplicationFolder(folder);
}

/// Another installation of the program lies in a folder of the first; the empty name leads back to that.
void Runner::goToFolder(const QString& name) {
    if (isRunning()) throw Refused{u"the program is running"_s};
    const QFileInfo folder(QDir(home_).filePath(name));
    if (!folder.isDir()) throw Refused{u"no such folder: "_s + name};
    setFolder(folder.canonicalFilePath());
    // What was left in the other folder is no program of this one.
    countUnexpectedEnd();
    program_ = Program::NotStarted;
}

QString Runner::pathOf(const QString& name) const {
    const QFileInfo path(QDir(folder_).absoluteFilePath(name));
    if (path.exists() || !(name.contains(u'*') || name.contains(u'?'))) return path.filePath();
    const QStringList names = path.dir().entryList({path.fileName()}, QDir::Files, QDir::Name);
    return names.isEmpty() ? path.filePath() : path.dir().filePath(names.first());
}

QString Runner::existingFile(const QString& name) const {
    const QString path = pathOf(name);
    if (!QFileInfo(path).isFile()) throw Refused{u"no such file: "_s + name};
    return path;
}

QString Runner::madeFolder(const QString& name) const {
    const QDir folder(QDir(folder_).absoluteFilePath(name));
    if (!folder.mkpath(u"."_s)) throw Refused{u"the folder cannot be made: "_s + name};
    return folder.path();
}

void Runner::copy(const Step& step) {
    const QFileInfo from(existingFile(step.text));
    const QString to = QDir(madeFolder(step.destination)).filePath(from.fileName());
    QFile::remove(to);
    if (!QFile::copy(from.filePath(), to)) throw Refused{u"the file cannot be copied to "_s + to};
    tell(u"copied "_s + from.fileName());
}

/// With the archiver of this machine, whatever the program has for its own.
void Runner::unpack(const Step& step) {
    const QString archive = existingFile(step.text);
    QProcess archiver;
    archiver.setWorkingDirectory(madeFolder(step.destination));
    archiver.start(QStandardPaths::findExecutable(u"7za"_s), {u"e"_s, archive, u"-y"_s});
    if (!archiver.waitForFinished() || archiver.exitStatus() != QProcess::NormalExit ||
        archiver.exitCode() != 0)
        throw Refused{u"the archive cannot be unpacked: "_s + archive};
    tell(u"unpacked "_s + QFileInfo(archive).fileName());
}

// --- Expectations
// -------------------------------------------------------------------------------------------------

void Runner::meet(const Expectation& expectation) {
    switch (expectation.subject) {
        case Subject::Box:
            return meetBox(expectation);
        case Subject::NoBox:
            if (!dialogues_.hasBox()) return pass();
            return fail(u"there is the box "_s + onOneLine(dialogues_.oldestBox().text));
        case Subject::Property:
            return meetProperty(expectation);
        case Subject::Focus: {
            const forms::Control& control = namedControl(expectation.target);
            const forms::Form* front = forms::pantallas().Active();
            const forms::Control* active = front ? front->ActiveControl() : nullptr;
            if (active == &control) return pass();
            return fail(active ? u"the focus is on %1.%2"_s.arg(front->Name(), active->Name())
                               : u"nothing has the focus"_s);
        }
        case Subject::Open:
        case Subject::NotOpen: {
            const forms::Form* form =
                isRunning() ? forms::pantallas().Loaded(expectation.target.screen) : nullptr;
            const bool open = form && form->IsShown();
            if (open == (expectation.subject == Subject::Open)) return pass();
            return fail(expectation.target.screen + (open ? u" is open"_s : u" is not open"_s));
        }
        case Subject::Status: {
            // What a modal screen does is told in the bar that lies under it.
            auto& bar = barOf<forms::StatusBar>(frameWindow(), Kind::StatusBar);
            return compare(u"the message"_s, expectation.value, bar.PanelText(u"Messages"_s));
        }
        case Subject::Report:
            return meetReport(expectation);
        case Subject::Sql:
            try {
                return compare(u"the result"_s, expectation.value, rowsOf(expectation.name));
            } catch (const basic::RuntimeError& error) {
                return fail(u"error %1: %2"_s.arg(error.number()).arg(error.description()));
            }
        case Subject::File:
            return meetFile(expectation);
        case Subject::Ended:
            return meetEnded(expectation);
    }
}

void Runner::meetBox(const Expectation& expectation) {
    if (!dialogues_.hasBox()) return fail(u"there is no box"_s);
    const forms::MessageBox box = dialogues_.oldestBox();
    dialogues_.takeOldestBox();
    for (const Clause& clause : expectation.clauses) {
        QString is = box.text;
        if (clause.name == "title"_L1) is = box.title;
        if (clause.name == "icon"_L1) is = iconName(box.buttons);
        if (clause.name == "buttons"_L1) is = buttonsName(box.buttons);
        if (clause.name == "default"_L1) is = answerName(defaultAnswer(box.buttons));
        if (is != clause.value) return fail(u"the box's %1 is %2"_s.arg(clause.name, onOneLine(is)));
    }
    pass();
}

void Runner::meetProperty(const Expectation& expectation) {
    const Target& target = expectation.target;
    const auto is = target.control.isEmpty()
                        ? propertyOf(openForm(target.screen), expectation.property)
                        : propertyOf(namedControl(target), expectation.property, expectation.indexes);
    if (!is) return fail(u"%1 has no such %2"_s.arg(target.text(), expectation.property));
    // The value of a picker may be told in the runtime's text form or as the picker shows it.
    if (expectation.property == "Value"_L1 && namedControl(target).kind() == Kind::DatePicker &&
        propertyOf(namedControl(target), u"Text"_s, {}) == expectation.value) {
        return pass();
    }
    compare(target.text() + u'.' + expectation.property, expectation.value, *is);
}

void Runner::meetReport(const Expectation& expectation) {
    const std::vector<OpenReport> reports = driver_->reports();
    if (reports.empty()) return fail(u"no report is open"_s);
    report::Document& document = *reports.back().document;
    const QString& name = document.report().name;
    if (!expectation.name.isEmpty() && expectation.name != name) return fail(u"the report is "_s + name);
    for (const Clause& clause : expectation.clauses) {
        if (clause.name == "contains"_L1) {
            const QString text = document.text();
            if (!text.contains(clause.value)) return fail(u"the report says "_s + onOneLine(text));
            continue;
        }
        const bool areRows = clause.name == "rows"_L1;
        const int is = areRows ? document.rowCount() : document.pageCount();
        if (is != clause.number) return fail(u"the report has %1 %2"_s.arg(is).arg(clause.name));
    }
    pass();
}

void Runner::meetFile(const Expectation& expectation) {
    const QString path = pathOf(expectation.name);
    QFile file(path);
    const bool exists = QFileInfo(path).exists();
    QByteArray bytes;
    if (exists && file.open(QIODevice::ReadOnly)) bytes = file.readAll();
    // A line's end closes it: what stands behind the last end is a line only if there is something.
    QStringList lines = basic::fromAnsi(bytes).remove(u'\r').split(u'\n');
    if (lines.last().isEmpty()) lines.removeLast();
    for (const Clause& clause : expectation.clauses) {
        if (clause.name == "absent"_L1) {
            if (exists) return fail(u"the file is there"_s);
            continue;
        }
        if (!exists) return fail(u"the file is not there"_s);
        if (clause.name == "bytes"_L1 && bytes != basic::toAnsi(clause.value)) {
            return fail(u"the file holds "_s + onOneLine(basic::fromAnsi(bytes)));
        }
        if (clause.name == "lines"_L1 && lines.size() != clause.number) {
            return fail(u"the file has %1 lines"_s.arg(lines.size()));
        }
        if (clause.name != "line"_L1) continue;
        if (clause.number > lines.size()) return fail(u"the file has %1 lines"_s.arg(lines.size()));
        const QString& is = lines[clause.number - 1];
        if (is != clause.value) return fail(u"line %1 is %2"_s.arg(clause.number).arg(onOneLine(is)));
    }
    pass();
}

void Runner::meetEnded(const Expectation& expectation) {
    if (program_ == Program::NotStarted) return fail(u"the program was not started"_s);
    if (isRunning()) return fail(u"the program is running"_s);
    if (expectation.name.isEmpty()) return pass();
    const QString is = endError_ ? QString::number(*endError_) : QString();
    if (is != expectation.value) {
        return fail(endError_ ? u"it ended with error "_s + is : u"it ended without an error"_s);
    }
    // An error that was expected is none for the end of the run, and its box has been met with it.
    if (!std::exchange(endErrorExpected_, true)) dialogues_.takeErrorBox();
    pass();
}

}  // namespace tarmel::scenario
