#pragma once

#include <utility>

namespace tarmel::forms {

/// Gives a variable a value for as long as the guard lives, also when what runs meanwhile throws.
template <typename T>
class SetWhile {
 public:
    SetWhile(T& variable, T value) : variable_(variable), old_(std::exchange(variable, value)) {}
    ~SetWhile() { variable_ = old_; }
    SetWhile(const SetWhile&) = delete;
    SetWhile& operator=(const SetWhile&) = delete;

 private:
    T& variable_;
    T old_;
};

}  // namespace tarmel::forms
