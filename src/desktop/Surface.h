#pragma once

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMainWindow>
#include <QWidget>
#include <functional>

namespace tarmel::desktop {

/// What a screen is drawn on. The focus belongs to the screen's model: the toolkit never moves it on its own
/// here, a key that no control took goes to the screen, and the window's close box only asks the screen to
/// close.
template <typename Base>
class SurfaceOf : public Base {
 public:
    using Base::Base;
    std::function<void()> closeAsked;
    std::function<bool(QKeyEvent&)> keyPressed;

 protected:
    bool focusNextPrevChild(bool) override { return false; }
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        if (closeAsked) closeAsked();
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (!keyPressed || !keyPressed(*event)) Base::keyPressEvent(event);
    }
};

using Surface = SurfaceOf<QWidget>;
using FrameSurface = SurfaceOf<QMainWindow>;

}  // namespace tarmel::desktop
