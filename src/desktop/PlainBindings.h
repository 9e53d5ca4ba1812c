#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QTabWidget>

#include "desktop/Binding.h"

namespace tarmel::desktop {

class LabelBinding final : public Binding {
 public:
    LabelBinding(FormView& view, forms::Label& label, QLabel& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }

 private:
    void showCaption();
    forms::Label& label_;
    QLabel& text_;
};

class FrameBinding final : public Binding {
 public:
    FrameBinding(FormView& view, forms::Frame& frame, QWidget& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }

 private:
    void showCaption();
    forms::Frame& frame_;
};

class TabBinding final : public Binding {
 public:
    TabBinding(FormView& view, forms::TabStrip& strip, QTabWidget& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent& event) override;

 private:
    void showTabs();
    forms::TabStrip& strip_;
    QTabWidget& tabs_;
};

class ProgressBinding final : public Binding {
 public:
    ProgressBinding(FormView& view, forms::ProgressBar& bar, QProgressBar& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent&) override { return false; }

 private:
    forms::ProgressBar& bar_;
    QProgressBar& progress_;
};

}  // namespace tarmel::desktop
