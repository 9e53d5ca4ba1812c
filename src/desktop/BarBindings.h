#pragma once

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>
#include <QToolBar>
#include <map>

#include "desktop/Binding.h"

namespace tarmel::desktop {

/// An entry of the main menu: a submenu when other entries stand below it.
class MenuBinding final : public Binding {
 public:
    MenuBinding(FormView& view, forms::MenuItem& item, QMainWindow& window);
    void show(forms::Property property, int row) override;
    void showAll() override;
    [[nodiscard]] QAction* action() const { return action_; }

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }

 private:
    forms::MenuItem& item_;
    QAction* action_ = nullptr;  // owned by the menu
};

class ToolbarBinding final : public Binding {
 public:
    ToolbarBinding(FormView& view, forms::Toolbar& toolbar, QToolBar& widget);
    [[nodiscard]] QAction* action(const QString& key) const;

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }

 private:
    std::map<QString, QAction*> actions_;  // owned by the toolbar
};

class StatusBinding final : public Binding {
 public:
    StatusBinding(FormView& view, forms::StatusBar& bar, QWidget& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void showPanels();
    forms::StatusBar& bar_;
    std::vector<QLabel*> labels_;  // owned by the bar
    QTimer clock_;
};

}  // namespace tarmel::desktop
