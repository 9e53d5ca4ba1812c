#include "desktop/TextBindings.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include "desktop/FormView.h"
#include "desktop/Keys.h"

namespace tarmel::desktop {

using forms::Property;

namespace {

/// Keys that only move or copy: the widget's own business.
bool movesOrCopies(const QKeyEvent& event) {
    if (event.matches(QKeySequence::Copy) || event.matches(QKeySequence::SelectAll)) return true;
    switch (event.key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Home:
        case Qt::Key_End:
            return !(event.modifiers() & Qt::AltModifier);
        default:
            return false;
    }
}

QString onOneLine(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    for (QChar& character : text) {
        if (character == u'\r' || character == u'\n' || character == u'\t') character = u' ';
    }
    return text;
}

}  // namespace

TextBinding::TextBinding(FormView& view, forms::TextBox& box, QWidget& widget)
    : Binding(view, box, widget), box_(box) {
    widget.setAcceptDrops(false);
}

void TextBinding::showAll() {
    Binding::showAll();
    setReadOnly(box_.Locked());
    showText();
}

void TextBinding::show(Property property, int row) {
    switch (property) {
        case Property::Text:
            showText();
            break;
        case Property::Selection:
            showSelection();
            break;
        case Property::Focus:
            Binding::show(property, row);
            if (view_.isTabbing()) box_.SelectAll();
            showSelection();
            break;
        case Property::Enabled:
            setReadOnly(box_.Locked());
            [[fallthrough]];
        default:
            Binding::show(property, row);
    }
}

void TextBinding::showText() {
    showing_ = true;
    if (widgetText() != box_.Text()) setWidgetText(box_.Text());
    showing_ = false;
    showSelection();
}

void TextBinding::showSelection() {
    const Selection wanted{box_.SelStart(), box_.SelLength()};
    // Left alone when it is so already: setting it would lose on which side the cursor stands.
    if (widgetSelection() == wanted) return;
    showing_ = true;
    setWidgetSelection(wanted);
    showing_ = false;
}

void TextBinding::selectionMoved() {
    if (showing_ || !view_.isLive()) return;
    const Selection now = widgetSelection();
    if (now == Selection{box_.SelStart(), box_.SelLength()}) return;
    view_.act([&](forms::Form& form) { form.UserSelectText(box_, now.start, now.length); });
}

bool TextBinding::keyPressed(QKeyEvent& event) {
    if (event.matches(QKeySequence::Paste)) {
        paste(QApplication::clipboard()->text());
        return true;
    }
    if (event.matches(QKeySequence::Cut)) {
        copy();
        remove();
        return true;
    }
    if (movesOrCopies(event)) return false;
    const int key = event.key();
    if (key == Qt::Key_Backspace || key == Qt::Key_Delete) {
        const int code = key == Qt::Key_Backspace ? forms::key::Backspace : forms::key::Delete;
        view_.act([code](forms::Form& form) { form.UserKey(code); });
        return true;
    }
    if (isTyping(event)) {
        typeText(event.text());
        return true;
    }
    // Anything else would edit the widget behind the model's back, or is the window's.
    event.ignore();
    return true;
}

bool TextBinding::eventFilter(QObject* watched, QEvent* event) {
    if (!view_.isLive()) return false;
    switch (event->type()) {
        case QEvent::ContextMenu:
            contextMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
            return true;
        case QEvent::MouseButtonRelease:
            // The middle button pastes what is selected elsewhere; the widget's own way would skip the
            // filters.
            if (static_cast<QMouseEvent*>(event)->button() != Qt::MiddleButton) break;
            if (QApplication::clipboard()->supportsSelection()) {
                paste(QApplication::clipboard()->text(QClipboard::Selection));
            }
            return true;
        default:
            break;
    }
    return Binding::eventFilter(watched, event);
}

void TextBinding::copy() const {
    const QString selected = box_.Text().mid(box_.SelStart(), box_.SelLength());
    if (!selected.isEmpty()) QApplication::clipboard()->setText(selected);
}

void TextBinding::paste(const QString& text) {
    const QString line = onOneLine(text);
    view_.act([&](forms::Form& form) { form.UserPaste(box_, line); });
}

void TextBinding::remove() {
    if (box_.SelLength() == 0) return;
    view_.act([](forms::Form& form) { form.UserKey(forms::key::Delete); });
}

void TextBinding::contextMenu(const QPoint& at) {
    if (!view_.goTo(control())) return;
    const bool selected = box_.SelLength() > 0;
    QMenu menu(&widget());
    const auto add = [&](const QString& text, bool enabled) {
        QAction* action = menu.addAction(text);
        action->setEnabled(enabled);
        return action;
    };
    const QAction* cut = add(QStringLiteral("Cor&tar"), selected && !box_.Locked());
    const QAction* copied = add(QStringLiteral("&Copiar"), selected);
    const QAction* pasted = add(QStringLiteral("&Pegar"), !box_.Locked());
    const QAction* all = add(QStringLiteral("Seleccionar &todo"), !box_.Text().isEmpty());
    const QAction* chosen = menu.exec(at);
    if (!chosen || !view_.isLive()) return;
    if (chosen == cut || chosen == copied) copy();
    if (chosen == cut) remove();
    if (chosen == pasted) paste(QApplication::clipboard()->text());
    if (chosen == all) box_.SelectAll();
}

LineBinding::LineBinding(FormView& view, forms::TextBox& box, QLineEdit& edit)
    : TextBinding(view, box, edit), edit_(edit) {
    edit.setDragEnabled(false);
    connect(&edit, &QLineEdit::selectionChanged, this, [this] { selectionMoved(); });
    connect(&edit, &QLineEdit::cursorPositionChanged, this, [this] { selectionMoved(); });
}

void LineBinding::setWidgetText(const QString& text) {
    edit_.setText(text);
}

void LineBinding::setWidgetSelection(Selection selection) {
    if (selection.length == 0) {
        edit_.setCursorPosition(selection.start);
        edit_.deselect();
    } else {
        edit_.setSelection(selection.start, selection.length);
    }
}

TextBinding::Selection LineBinding::widgetSelection() const {
    if (!edit_.hasSelectedText()) return {edit_.cursorPosition(), 0};
    return {edit_.selectionStart(), edit_.selectionLength()};
}

MemoBinding::MemoBinding(FormView& view, forms::TextBox& box, QPlainTextEdit& edit)
    : TextBinding(view, box, edit), edit_(edit) {
    watch(*edit.viewport());
    edit.viewport()->setAcceptDrops(false);
    edit.setTabChangesFocus(true);
    edit.setUndoRedoEnabled(false);
    connect(&edit, &QPlainTextEdit::selectionChanged, this, [this] { selectionMoved(); });
    connect(&edit, &QPlainTextEdit::cursorPositionChanged, this, [this] { selectionMoved(); });
}

void MemoBinding::setWidgetText(const QString& text) {
    edit_.setPlainText(text);
}

void MemoBinding::setWidgetSelection(Selection selection) {
    QTextCursor cursor = edit_.textCursor();
    cursor.setPosition(selection.start);
    cursor.setPosition(selection.start + selection.length, QTextCursor::KeepAnchor);
    edit_.setTextCursor(cursor);
}

TextBinding::Selection MemoBinding::widgetSelection() const {
    const QTextCursor cursor = edit_.textCursor();
    return {cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
}

}  // namespace tarmel::desktop
