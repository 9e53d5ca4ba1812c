#pragma once

#include <QString>
#include <functional>
#include <memory>

#include "platform/forms/Host.h"
#include "platform/system/SingleInstance.h"
#include "scenario/Driver.h"
#include "scenario/Runner.h"

namespace tarmel::scenario {

/// Acts on the screens' models alone: no windows, no waiting. It is their host at the same time.
class ModelDriver final : public Driver, public forms::Host {
 public:
    /// `program` is the entry of the program that `start` runs.
    ModelDriver(Runner& runner, QString applicationFolder, std::function<void()> program);
    ~ModelDriver() override;

    void setApplicationFolder(const QString& folder) override { folder_ = folder; }
    void start() override;
    [[nodiscard]] bool ended() const override { return ended_; }
    void abandon() override;
    void bringForward(forms::Form& form) override;
    void goTo(forms::Control& control) override;
    void typeChar(forms::Form& form, QChar character) override;
    void pressKey(forms::Form& form, int key, bool shift) override;
    void cursorToEnd(forms::TextBox& box) override;
    void selectAll(forms::TextBox& box) override;
    void click(forms::Control& control) override;
    void choose(forms::ComboBox& combo, int index) override;
    void setDate(forms::DatePicker& picker, basic::Date date) override;
    void clickRow(forms::ListView& list, int row) override;
    void doubleClickRow(forms::ListView& list, int row) override;
    void clickColumn(forms::ListView& list, int columnFrom1) override;
    void selectTab(forms::TabStrip& strip, int index) override;
    void clickMenu(forms::MenuItem& item) override;
    void clickTool(forms::Toolbar& bar, const QString& key) override;
    void clickPanel(forms::StatusBar& bar, const QString& key) override;
    void close(forms::Form& form) override;
    [[nodiscard]] std::vector<OpenReport> reports() const override { return reports_; }
    void closeReport() override;
    QString shot(const QString&) override { return {}; }

    int ShowBox(const forms::MessageBox& message) override { return runner_.dialogues().answer(message); }
    void DoEvents() override {}
    void FormShown(forms::Form&) override {}
    void FormHidden(forms::Form&) override {}
    void FormUnloaded(forms::Form&) override {}
    void FormActivated(forms::Form&) override {}
    void RunModal(forms::Form& form) override;
    void SetPointer(forms::Pointer) override {}
    void Sleep(int) override {}
    std::optional<QString> OpenFileDialogue(const forms::FileDialogue& dialogue) override {
        return runner_.dialogues().pick(dialogue);
    }
    void ShowReport(const std::shared_ptr<report::Document>& document, forms::Modality modality) override;
    void ShowHelp(const QString&) override {}
    void ShowDateTimeSettings() override {}
    [[nodiscard]] QString ApplicationPath() const override { return folder_; }
    [[nodiscard]] bool PreviousInstance() const override;
    [[noreturn]] void EndProgram() override;

 private:
    void guard(const std::function<void()>& action);
    void forgetProgram();

    Runner& runner_;
    QString folder_;
    std::function<void()> program_;
    mutable std::unique_ptr<sys::SingleInstance> instance_;  ///< held while the program runs
    std::vector<OpenReport> reports_;
    bool ended_ = false;
    int depth_ = 0;
};

}  // namespace tarmel::scenario
