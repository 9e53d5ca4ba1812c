#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "desktop/FormView.h"

namespace tarmel::desktop {

/// How a screen is shown: the one table that joins screens to windows.
struct ViewKind {
    QString form;
    Place place;
    std::unique_ptr<QWidget> (*build)();
};

/// Null for a screen without a window.
[[nodiscard]] const ViewKind* viewKind(const QString& form);
/// All of them; a window of its own may be added, by tests.
[[nodiscard]] std::vector<ViewKind>& viewKinds();

}  // namespace tarmel::desktop
