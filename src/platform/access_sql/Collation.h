#pragma once

#include <string_view>

namespace tarmel::access_sql {

/// Spanish order of two texts in UTF-8: no regard to case; accents count only where the letters are the same;
/// ñ stands behind n. Below 0, 0 or above 0. Texts that differ in an accent are not equal.
[[nodiscard]] int compareSpanish(std::string_view a, std::string_view b);

/// LIKE with % and _, without regard to case.
[[nodiscard]] bool matchesLike(std::string_view text, std::string_view pattern);

}  // namespace tarmel::access_sql
