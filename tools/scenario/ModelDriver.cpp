#include "scenario/ModelDriver.h"

#include <QDir>
#include <algorithm>
#include <utility>

#include "core/DefinicionesGlobales.h"
#include "platform/forms/Pantallas.h"

namespace tarmel::scenario {

ModelDriver::ModelDriver(Runner& runner, QString applicationFolder, std::function<void()> program)
    : runner_(runner), folder_(std::move(applicationFolder)), program_(std::move(program)) {
    forms::setHost(this);
}

ModelDriver::~ModelDriver() {
    forgetProgram();
    forms::setHost(nullptr);
}

/// What a process that ends leaves behind in memory: nothing.
void ModelDriver::forgetProgram() {
    reports_.clear();
    forms::pantallas().Reset();
    reiniciarSesion();
    instance_.reset();
}

/// It stands for the program that lies in the application folder.
bool ModelDriver::PreviousInstance() const {
    const QString program = QDir(folder_).filePath(forms::kProgramName);
    if (!instance_) instance_ = std::make_unique<sys::SingleInstance>(program);
    return instance_->anotherIsRunning();
}

/// The end of the program unwinds to the outermost action, from where the next line of the scenario goes on.
void ModelDriver::guard(const std::function<void()>& action) {
    ++depth_;
    try {
        action();
        --depth_;
    } catch (const forms::ProgramEnd&) {
        --depth_;
        if (depth_ > 0) throw;
        ended_ = true;
        forgetProgram();
    } catch (...) {
        --depth_;
        throw;
    }
}

void ModelDriver::start() {
    ended_ = false;
    guard(program_);
}

void ModelDriver::abandon() {
    if (depth_ > 0) throw forms::ProgramEnd{};
    ended_ = true;
    forgetProgram();
}

void ModelDriver::EndProgram() {
    throw forms::ProgramEnd{};
}

void ModelDriver::RunModal(forms::Form& form) {
    runner_.modalRuns([&] { return form.IsShown(); });
}

void ModelDriver::ShowReport(const std::shared_ptr<report::Document>& document, forms::Modality modality) {
    reports_.push_back({document, modality});
    if (modality == forms::Modality::Modeless) return;
    runner_.modalRuns([&] {
        return std::any_of(reports_.begin(), reports_.end(),
                           [&](const OpenReport& report) { return report.document == document; });
    });
}

void ModelDriver::closeReport() {
    guard([&] {
        const std::shared_ptr<report::Document> document = reports_.back().document;
        document->close();
        reports_.pop_back();
    });
}

void ModelDriver::bringForward(forms::Form& form) {
    guard([&] { form.UserActivate(); });
}

void ModelDriver::goTo(forms::Control& control) {
    guard([&] { control.form().UserGoTo(control); });
}

void ModelDriver::typeChar(forms::Form& form, QChar character) {
    guard([&] { form.UserChar(character); });
}

void ModelDriver::pressKey(forms::Form& form, int key, bool shift) {
    guard([&] { form.UserKey(key, shift); });
}

void ModelDriver::cursorToEnd(forms::TextBox& box) {
    box.form().UserSelectText(box, static_cast<int>(box.Text().size()), 0);
}

void ModelDriver::selectAll(forms::TextBox& box) {
    box.form().UserSelectText(box, 0, static_cast<int>(box.Text().size()));
}

void ModelDriver::click(forms::Control& control) {
    guard([&] { control.form().UserClick(control); });
}

void ModelDriver::choose(forms::ComboBox& combo, int index) {
    guard([&] { combo.form().UserChoose(combo, index); });
}

void ModelDriver::setDate(forms::DatePicker& picker, basic::Date date) {
    // The hand sets the day or the hour; the other part stays as it is.
    const basic::Date old = picker.Value();
    const bool isTime = date.dayPart() == basic::Date();
    const auto day = (isTime ? old : date).parts();
    const auto hour = (isTime ? date : old).parts();
    const auto value = basic::Date::of(day.year, day.month, day.day, hour.hour, hour.minute, hour.second);
    guard([&] { picker.form().UserSetDate(picker, value); });
}

void ModelDriver::clickRow(forms::ListView& list, int row) {
    guard([&] { list.form().UserSelectRow(list, row); });
}

void ModelDriver::doubleClickRow(forms::ListView& list, int row) {
    guard([&] { list.form().UserDoubleClickRow(list, row); });
}

void ModelDriver::clickColumn(forms::ListView& list, int columnFrom1) {
    guard([&] { list.form().UserColumnClick(list, columnFrom1); });
}

void ModelDriver::selectTab(forms::TabStrip& strip, int index) {
    guard([&] { strip.form().UserSelectTab(strip, index); });
}

void ModelDriver::clickMenu(forms::MenuItem& item) {
    guard([&] { item.form().UserClick(item); });
}

void ModelDriver::clickTool(forms::Toolbar& bar, const QString& key) {
    guard([&] { bar.form().UserToolbar(bar, key); });
}

void ModelDriver::clickPanel(forms::StatusBar& bar, const QString& key) {
    guard([&] { bar.form().UserPanel(bar, key); });
}

void ModelDriver::close(forms::Form& form) {
    guard([&] { form.UserClose(); });
}

}  // namespace tarmel::scenario
