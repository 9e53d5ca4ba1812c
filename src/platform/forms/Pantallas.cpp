#include "platform/forms/Pantallas.h"

#include <algorithm>
#include <map>
#include <utility>

#include "platform/forms/Host.h"

namespace tarmel::forms {

namespace {
/// Activate events that bring one another's forms to the front for ever are cut off here.
constexpr int kMaxActivations = 32;
}  // namespace

struct Pantallas::State {
    /// Actions that run within one event loop: the program's own, or that of a modal form.
    struct Level {
        const Form* modal = nullptr;
        int depth = 0;
    };

    std::map<QString, Factory> factories;
    std::vector<std::shared_ptr<Form>> loaded;    ///< in the order of loading
    std::vector<std::shared_ptr<Form>> unloaded;  ///< kept until no action runs
    std::vector<Form*> shown;                     ///< the last is in front
    Form* activated = nullptr;                    ///< the one whose Activate ran last, while it is shown
    std::vector<Level> levels{1};
};

Pantallas::Pantallas() : state_(std::make_unique<State>()) {}

Pantallas::~Pantallas() {
    Reset();
}

Pantallas& pantallas() {
    static Pantallas registry;
    return registry;
}

void Pantallas::Register(const QString& name, Factory factory) {
    state_->factories[name] = std::move(factory);
}

bool Pantallas::Knows(const QString& name) const {
    return state_->factories.contains(name);
}

Form& Pantallas::Get(const QString& name) {
    if (Form* form = Loaded(name)) return *form;
    const auto found = state_->factories.find(name);
    if (found == state_->factories.end()) throw basic::RuntimeError(basic::error::ObjectNotSet);
    const std::shared_ptr<Form> form = found->second();
    state_->loaded.push_back(form);
    form->load();
    return *form;
}

Form* Pantallas::Loaded(const QString& name) const {
    const auto found = std::find_if(state_->loaded.begin(), state_->loaded.end(),
                                    [&](const auto& form) { return form->Name() == name; });
    return found == state_->loaded.end() ? nullptr : found->get();
}

void Pantallas::Unload(const QString& name) {
    if (Form* form = Loaded(name)) form->Unload();
}

std::vector<Form*> Pantallas::All() const {
    std::vector<Form*> all;
    for (const auto& form : state_->loaded) {
        all.push_back(form.get());
    }
    return all;
}

Form* Pantallas::Active() const {
    const auto& shown = state_->shown;
    const auto front =
        std::find_if(shown.rbegin(), shown.rend(), [](const Form* form) { return !form->IsFrameWindow; });
    if (front != shown.rend()) return *front;
    return shown.empty() ? nullptr : shown.back();
}

void Pantallas::Reset() {
    // Forms leave the lists before they go, since each tells the registry that it goes.
    state_->shown.clear();
    state_->activated = nullptr;
    state_->levels.assign(1, {});
    state_->factories.clear();
    const auto unloaded = std::exchange(state_->unloaded, {});
    const auto loaded = std::exchange(state_->loaded, {});
}

void Pantallas::toFront(Form& form) {
    auto& shown = state_->shown;
    std::erase(shown, &form);
    shown.push_back(&form);
}

void Pantallas::activate(Form& form) {
    toFront(form);
    if (Active() != &form) return;  // the frame window, behind what it holds
    host().FormActivated(form);
    if (state_->activated == &form) return;
    state_->activated = &form;
    form.Activate();
}

void Pantallas::noLongerShown(Form& form) {
    std::erase(state_->shown, &form);
    if (state_->activated == &form) state_->activated = nullptr;
}

void Pantallas::letGo(Form& form) {
    noLongerShown(form);
    auto& loaded = state_->loaded;
    const auto found =
        std::find_if(loaded.begin(), loaded.end(), [&](const auto& other) { return other.get() == &form; });
    if (found == loaded.end()) return;
    state_->unloaded.push_back(std::move(*found));
    loaded.erase(found);
}

void Pantallas::forget(Form& form) {
    noLongerShown(form);
}

void Pantallas::runModal(Form& form) {
    struct Level {
        std::vector<State::Level>& levels;
        ~Level() {
            if (levels.size() > 1) levels.pop_back();
        }
    };
    state_->levels.push_back({&form, 0});
    const Level level{state_->levels};
    host().RunModal(form);
}

bool Pantallas::IsBlocked(const Form& form) const {
    const Form* modal = state_->levels.back().modal;
    if (!modal || modal == &form || !modal->IsShown()) return false;
    for (const Form* shown : state_->shown) {
        if (shown == modal) return false;
        if (shown == &form) return true;
    }
    return false;
}

/// At the end of an outermost action: the form that is in front now is told so, if another one was before.
void Pantallas::settle() {
    for (int i = 0; i < kMaxActivations; ++i) {
        // A modal form has closed: what lies under it waits for the end of the command that opened it.
        const Form* modal = state_->levels.back().modal;
        if (modal && std::find(state_->shown.begin(), state_->shown.end(), modal) == state_->shown.end())
            return;
        Form* front = Active();
        if (!front || front == state_->activated) break;
        activate(*front);
        front->giveFirstFocus();
    }
    // What ran may have taken the focus from controls of other forms than the one it began on.
    const auto shown = state_->shown;
    for (Form* form : shown) {
        if (std::find(state_->shown.begin(), state_->shown.end(), form) != state_->shown.end())
            form->settleFocus();
    }
}

void runAction(const std::function<void()>& action) {
    auto& state = *pantallas().state_;
    struct Running {
        Pantallas::State& state;
        const size_t level = state.levels.size() - 1;
        ~Running() {
            if (level < state.levels.size()) --state.levels[level].depth;
            const bool idle = state.levels.size() == 1 && state.levels[0].depth == 0;
            if (idle) const auto gone = std::exchange(state.unloaded, {});
        }
    };
    ++state.levels.back().depth;
    const Running running{state};
    try {
        action();
        if (state.levels.back().depth == 1) pantallas().settle();
    } catch (const basic::RuntimeError& error) {
        const QString text = QStringLiteral("Error nº %1\r%2\r%3")
                                 .arg(QString::number(error.number()), error.source(), error.description());
        host().ShowBox({text, box::Critical, kProgramName});
        host().EndProgram();
    }
}

}  // namespace tarmel::forms
