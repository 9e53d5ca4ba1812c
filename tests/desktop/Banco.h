#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "desktop/Escritorio.h"
#include "desktop/FormView.h"
#include "desktop/Surface.h"
#include "desktop/Views.h"
#include "platform/forms/Pantallas.h"

namespace tarmel::desktop {

/// Boxes get the next of these answers, or their default; what was asked is kept.
class PlannedAnswers : public Answerer {
 public:
    std::optional<int> answerBox(const forms::MessageBox& message, QMessageBox& widget) override {
        asked.push_back(message.text);
        if (look) look(widget);
        if (answers.empty()) return std::nullopt;
        const int next = answers.front();
        answers.erase(answers.begin());
        return next;
    }
    std::optional<QString> answerFileDialogue(const forms::FileDialogue&) override { return file; }
    void reportRuns(const report::Document& document) override {
        if (inReport) inReport(document);
    }
    void modalRuns(forms::Form& form) override {
        if (inModal) inModal(form);
    }

    std::vector<int> answers;
    QStringList asked;
    std::function<void(QMessageBox&)> look;
    std::function<void(forms::Form&)> inModal;
    std::function<void(const report::Document&)> inReport;
    std::optional<QString> file;  ///< that every file dialogue is given
};

/// A desktop off screen, and nothing on it.
class DesktopTest : public testing::Test {
 protected:
    DesktopTest() {
        forms::pantallas().Reset();
        forms::setHost(&escritorio);
        escritorio.setAnswerer(&answers);
    }
    ~DesktopTest() override {
        escritorio.closeAll();
        forms::pantallas().Reset();
        forms::setHost(nullptr);
    }

    template <typename WidgetType = QWidget>
    WidgetType& widget(const forms::Control& control) {
        auto* found = dynamic_cast<WidgetType*>(escritorio.widgetOf(control));
        EXPECT_NE(found, nullptr) << control.Name().toStdString();
        return *found;
    }

    QTemporaryDir folder;
    PlannedAnswers answers;
    Escritorio escritorio{folder.path()};
};

}  // namespace tarmel::desktop

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
