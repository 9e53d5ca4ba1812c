#pragma once

#include <QString>
#include <Qt>
#include <functional>
#include <memory>

#include "desktop/Escritorio.h"
#include "scenario/Driver.h"
#include "scenario/Runner.h"

class QApplication;

namespace tarmel::scenario {

/// The application for the windows; off screen where there is no display. `argc` and `argv` must outlive it.
[[nodiscard]] std::unique_ptr<QApplication> makeApplication(int& argc, char** argv);

/// Acts on the real windows with events of the keyboard and the mouse, sent to the widget that bears the
/// control's name.
class DesktopDriver final : public Driver, public desktop::Answerer {
 public:
    /// Without a folder for them no pictures are made.
    DesktopDriver(Runner& runner, const QString& applicationFolder, QString shotsFolder);
    ~DesktopDriver() override;

    void setApplicationFolder(const QString& folder) override { escritorio_.setApplicationPath(folder); }
    void start() override;
    [[nodiscard]] bool ended() const override;
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
    [[nodiscard]] std::vector<OpenReport> reports() const override;
    void closeReport() override;
    QString shot(const QString& name) override;

    std::optional<int> answerBox(const forms::MessageBox& message, QMessageBox& widget) override;
    std::optional<QString> answerFileDialogue(const forms::FileDialogue& dialogue) override;
    void modalRuns(forms::Form& form) override;
    void reportRuns(const report::Document& document) override;

 private:
    void run(const std::function<void()>& action);
    void forgetProgram();
    /// The control's widget, which must be on the screen and enabled.
    [[nodiscard]] QWidget& widgetOf(const forms::Control& control) const;
    template <typename Widget>
    [[nodiscard]] Widget& widgetOf(const forms::Control& control) const;
    /// The widget that takes the keys: that of the control which has the focus, or the window.
    [[nodiscard]] QWidget& keyTarget(const forms::Form& form) const;
    void onRow(forms::ListView& list, int row, bool twice);

    Runner& runner_;
    desktop::Escritorio escritorio_;
    QString shots_;
    bool ended_ = false;
    int depth_ = 0;  ///< steps that are running: more than one while a modal screen is open
};

}  // namespace tarmel::scenario
