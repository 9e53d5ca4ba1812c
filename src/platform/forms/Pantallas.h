#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "platform/forms/Form.h"

namespace tarmel::forms {

/// The registry of screens: each exists once, is loaded when it is first named, and unloaded by name. Screens
/// reach each other through it, never through stored pointers.
class Pantallas {
 public:
    using Factory = std::function<std::shared_ptr<Form>()>;

    /// Makes a screen known under its name. One place in the program does so for all of them.
    void Register(const QString& name, Factory factory);
    [[nodiscard]] bool Knows(const QString& name) const;
    /// The screen, loaded if need be. RuntimeError 91 for a name that nobody registered.
    Form& Get(const QString& name);
    /// The screen if it is loaded, else null: asking does not load it.
    [[nodiscard]] Form* Loaded(const QString& name) const;
    /// Unloads it if it is loaded.
    void Unload(const QString& name);
    /// All that are loaded, in the order of loading.
    [[nodiscard]] std::vector<Form*> All() const;
    /// The screen in front, null when none is shown. The frame window counts only while nothing else is
    /// shown.
    [[nodiscard]] Form* Active() const;
    /// A modal form lies over this one: its user cannot reach it.
    [[nodiscard]] bool IsBlocked(const Form& form) const;
    /// Forgets every screen and factory, with no event: between programs that follow each other in one
    /// process.
    void Reset();

    /// A screen by its class: T::kName is its name.
    template <typename T>
    T& Get() {
        return static_cast<T&>(Get(T::kName));
    }
    template <typename T>
    [[nodiscard]] T* Loaded() const {
        return static_cast<T*>(Loaded(T::kName));
    }

    Pantallas();
    ~Pantallas();

 private:
    friend class Form;
    friend void runAction(const std::function<void()>& action);
    struct State;
    void toFront(Form& form);
    void activate(Form& form);
    void noLongerShown(Form& form);
    void letGo(Form& form);
    void forget(Form& form);
    void runModal(Form& form);
    void settle();
    std::unique_ptr<State> state_;
};

[[nodiscard]] Pantallas& pantallas();

/// Runs an action that comes from the world (start-up, a timer, a menu): errors end as in a form's own
/// actions, unloaded screens are let go and waiting activations happen when the outermost action has ended.
void runAction(const std::function<void()>& action);

}  // namespace tarmel::forms
