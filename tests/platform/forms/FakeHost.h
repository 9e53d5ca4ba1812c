#pragma once

#include <functional>
#include <vector>

#include "platform/forms/Form.h"
#include "platform/forms/Host.h"
#include "platform/forms/Pantallas.h"

namespace tarmel::forms {

/// A host without windows: keeps what it was told, answers boxes with OK, and runs a modal form by a step of
/// the test.
class FakeHost : public Host {
 public:
    FakeHost() { setHost(this); }
    ~FakeHost() override {
        pantallas().Reset();
        setHost(nullptr);
    }

    int ShowBox(const MessageBox& message) override {
        boxes.push_back(message);
        return box::AnswerOK;
    }
    void DoEvents() override {
        if (events) events();
    }
    void FormShown(Form& form) override { log << "shown " + form.Name(); }
    void FormHidden(Form& form) override { log << "hidden " + form.Name(); }
    void FormUnloaded(Form& form) override { log << "gone " + form.Name(); }
    void FormActivated(Form&) override {}
    void RunModal(Form& form) override {
        log << "modal " + form.Name();
        if (modal) modal(form);
        log << "modal ends";
    }
    void SetPointer(Pointer) override {}
    void Sleep(int) override {}
    std::optional<QString> OpenFileDialogue(const FileDialogue&) override { return std::nullopt; }
    void ShowHelp(const QString&) override {}
    void ShowDateTimeSettings() override {}
    [[nodiscard]] QString ApplicationPath() const override { return QStringLiteral("."); }
    [[nodiscard]] bool PreviousInstance() const override { return false; }
    [[noreturn]] void EndProgram() override { throw ProgramEnd{}; }

    QStringList log;
    std::vector<MessageBox> boxes;
    std::function<void()> events;
    std::function<void(Form&)> modal;
};

}  // namespace tarmel::forms
