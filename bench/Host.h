#pragma once

#include <QDir>
#include <cstdio>
#include <cstdlib>

#include "platform/forms/Host.h"

namespace tarmel::bench {

/// A program without windows. A box means that the figure measures something else than it says.
class Host : public forms::Host {
 public:
    Host() { forms::setHost(this); }
    ~Host() override { forms::setHost(nullptr); }
    int ShowBox(const forms::MessageBox& message) override {
        std::fprintf(stderr, "%s\n", qPrintable(message.text));
        std::exit(1);
    }
    void DoEvents() override {}
    void FormShown(forms::Form&) override {}
    void FormHidden(forms::Form&) override {}
    void FormUnloaded(forms::Form&) override {}
    void FormActivated(forms::Form&) override {}
    void RunModal(forms::Form&) override {}
    void SetPointer(forms::Pointer) override {}
    void Sleep(int) override {}
    std::optional<QString> OpenFileDialogue(const forms::FileDialogue&) override { return std::nullopt; }
    void ShowHelp(const QString&) override {}
    void ShowDateTimeSettings() override {}
    QString ApplicationPath() const override { return QDir::currentPath(); }
    bool PreviousInstance() const override { return false; }
    void EndProgram() override { throw forms::ProgramEnd{}; }
};

}  // namespace tarmel::bench
