#include "desktop/Keys.h"

#include <QKeyEvent>

#include "platform/forms/Control.h"

namespace tarmel::desktop {

namespace key = forms::key;

int keyCode(const QKeyEvent& event) {
    if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return 0;
    const int code = event.key();
    if (code >= Qt::Key_F1 && code <= Qt::Key_F12) return key::F1 + (code - Qt::Key_F1);
    switch (code) {
        case Qt::Key_Backspace:
            return key::Backspace;
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return key::Tab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return key::Enter;
        case Qt::Key_Escape:
            return key::Esc;
        case Qt::Key_Space:
            return key::Blank;
        case Qt::Key_PageUp:
            return key::PageUp;
        case Qt::Key_PageDown:
            return key::PageDown;
        case Qt::Key_End:
            return key::End;
        case Qt::Key_Home:
            return key::Home;
        case Qt::Key_Left:
            return key::Left;
        case Qt::Key_Up:
            return key::Up;
        case Qt::Key_Right:
            return key::Right;
        case Qt::Key_Down:
            return key::Down;
        case Qt::Key_Delete:
            return key::Delete;
        default:
            return 0;
    }
}

bool isFormKey(int code) {
    return code == key::Enter || code == key::Esc || code == key::Tab ||
           (code >= key::F1 && code <= key::F12);
}

bool isTyping(const QKeyEvent& event) {
    const auto modifiers = event.modifiers();
    const bool control = modifiers & Qt::ControlModifier;
    const bool alt = modifiers & Qt::AltModifier;
    // Ctrl and Alt together are AltGr on some keyboards; one of them alone is a command.
    if (control != alt || (modifiers & Qt::MetaModifier)) return false;
    return !event.text().isEmpty() && event.text().at(0).isPrint();
}

}  // namespace tarmel::desktop
