#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

#include "desktop/Binding.h"

namespace tarmel::desktop {

/// A text box. The widget is where the text is seen and the cursor moved; characters never reach it, they go
/// to the model, whose text is then shown.
class TextBinding : public Binding {
 public:
    TextBinding(FormView& view, forms::TextBox& box, QWidget& widget);
    void show(forms::Property property, int row) override;
    void showAll() override;

 protected:
    bool keyPressed(QKeyEvent& event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// The cursor or the selection of the widget moved.
    void selectionMoved();

    struct Selection {
        int start = 0;
        int length = 0;
        bool operator==(const Selection&) const = default;
    };
    virtual void setWidgetText(const QString& text) = 0;
    [[nodiscard]] virtual QString widgetText() const = 0;
    virtual void setWidgetSelection(Selection selection) = 0;
    [[nodiscard]] virtual Selection widgetSelection() const = 0;
    virtual void setReadOnly(bool on) = 0;

 private:
    void showText();
    void showSelection();
    void copy() const;
    void paste(const QString& text);
    void remove();
    void contextMenu(const QPoint& at);

    forms::TextBox& box_;
    bool showing_ = false;
};

class LineBinding final : public TextBinding {
 public:
    LineBinding(FormView& view, forms::TextBox& box, QLineEdit& edit);

 protected:
    void setWidgetText(const QString& text) override;
    QString widgetText() const override { return edit_.text(); }
    void setWidgetSelection(Selection selection) override;
    Selection widgetSelection() const override;
    void setReadOnly(bool on) override { edit_.setReadOnly(on); }

 private:
    QLineEdit& edit_;
};

/// A text of several lines on the screen; still one line as a value.
class MemoBinding final : public TextBinding {
 public:
    MemoBinding(FormView& view, forms::TextBox& box, QPlainTextEdit& edit);

 protected:
    void setWidgetText(const QString& text) override;
    QString widgetText() const override { return edit_.toPlainText(); }
    void setWidgetSelection(Selection selection) override;
    Selection widgetSelection() const override;
    void setReadOnly(bool on) override { edit_.setReadOnly(on); }

 private:
    QPlainTextEdit& edit_;
};

}  // namespace tarmel::desktop
