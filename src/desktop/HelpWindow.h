#pragma once

#include <QTextBrowser>
#include <QWidget>

namespace tarmel::desktop {

/// The manual, in a window of the program: it can stay open beside the screens.
class HelpWindow final : public QWidget {
 public:
    HelpWindow();
    /// A page of the manual; says so when it is not there.
    void open(const QString& file);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    QTextBrowser* pages_;  // a child of this window
};

}  // namespace tarmel::desktop
