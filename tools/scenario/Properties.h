#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/forms/Form.h"

namespace tarmel::scenario {

/// A property of a control as an expectation names it, as text; nothing when the control has no such property
/// or the numbers in brackets name no row or item.
[[nodiscard]] std::optional<QString> propertyOf(const forms::Control& control, const QString& name,
                                                const std::vector<int>& indexes);
[[nodiscard]] std::optional<QString> propertyOf(const forms::Form& form, const QString& name);

/// A page of a tab strip that holds the control and is not in front.
struct HiddenPage {
    forms::TabStrip* strip = nullptr;
    int index = 0;
};
/// The outermost such page; no strip when the way to the control is open.
[[nodiscard]] HiddenPage hiddenPageOf(const forms::Control& control);

}  // namespace tarmel::scenario
