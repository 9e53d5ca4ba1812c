#pragma once

class QKeyEvent;

namespace tarmel::desktop {

/// The screens' code (forms::key) of a key that is no character; 0 for any other and for combinations with
/// Ctrl or Alt.
[[nodiscard]] int keyCode(const QKeyEvent& event);
/// A key that every control hands to its screen: function keys, Enter, Esc, Tab.
[[nodiscard]] bool isFormKey(int code);
/// A key that types a character.
[[nodiscard]] bool isTyping(const QKeyEvent& event);

}  // namespace tarmel::desktop
