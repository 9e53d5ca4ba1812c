#pragma once

#include <QTabWidget>
#include <map>

#include "desktop/Surface.h"

class QStackedWidget;

namespace tarmel::desktop {

class FormView;

/// The main window: the screens open inside it, one behind the other, each with a tab. Without any, a picture
/// fills it.
class FrameWindow final : public FrameSurface {
 public:
    FrameWindow();
    ~FrameWindow() override;

    void addPage(FormView& view);
    void removePage(FormView& view);
    void raisePage(FormView& view);
    [[nodiscard]] bool holds(const FormView& view) const;
    [[nodiscard]] FormView* pageInFront() const;

    /// The user wants a screen in front, or closed.
    std::function<void(FormView&)> pageChosen;
    std::function<void(FormView&)> pageClosed;

 private:
    void showPagesOrPicture();
    [[nodiscard]] FormView* viewAt(int index) const;
    QTabWidget* pages_ = nullptr;  // in the window's description
    QStackedWidget* centre_ = nullptr;
    std::map<const QWidget*, FormView*> views_;
    bool quiet_ = false;
};

}  // namespace tarmel::desktop
