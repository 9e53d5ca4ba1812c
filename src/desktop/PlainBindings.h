#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QTabWidget>

#include "desktop/Binding.h"

namespace tarmel::desktop {

/// A control that takes no keys.
class SilentBinding : public Binding {
 public:
    using Binding::Binding;

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }
};

/// One that shows its caption besides what all show.
class CaptionBinding : public SilentBinding {
 public:
    using SilentBinding::SilentBinding;
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    virtual void showCaption() = 0;
};

class LabelBinding final : public CaptionBinding {
 public:
    LabelBinding(FormView& view, forms::Label& label, QLabel& widget);

 private:
    void showCaption() override;
    forms::Label& label_;
    QLabel& text_;
};

class FrameBinding final : public CaptionBinding {
 public:
    FrameBinding(FormView& view, forms::Frame& frame, QWidget& widget);

 private:
    void showCaption() override;
    forms::Frame& frame_;
};

class TabBinding final : public Binding {
 public:
    TabBinding(FormView& view, forms::TabStrip& strip, QTabWidget& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent& event) override;
    /// A press that a field of the page leaves over comes here too: it is none on the tabs.
    [[nodiscard]] bool goesOnPress() const override { return false; }

 private:
    void showTabs();
    forms::TabStrip& strip_;
    QTabWidget& tabs_;
};

class ProgressBinding final : public SilentBinding {
 public:
    ProgressBinding(FormView& view, forms::ProgressBar& bar, QProgressBar& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 private:
    forms::ProgressBar& bar_;
    QProgressBar& progress_;
};

}  // namespace tarmel::desktop
