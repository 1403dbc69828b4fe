// The orders of rows as SQL.

#pragma once

#include "TallyglassKit/Comparison/ChangeOrder.h"

#include <string_view>

namespace tallyglass {

/// What follows ORDER BY. Every order is total.
[[nodiscard]] constexpr std::string_view orderTerms(ChangeOrder order) {
    switch (order) {
    case ChangeOrder::path:
        return "path, id"; // served by idx_change_comparison_path
    case ChangeOrder::size:
        // Not ABS, which fails for the minimum integer.
        return "MAX(COALESCE(sizeDelta, size, 0), -COALESCE(sizeDelta, size, 0)) DESC, path, id";
    case ChangeOrder::name:
        break;
    }
    return "TRIM(SUBSTR(path, LENGTH(parentPath) + 1), '/'), path, id";
}

} // namespace tallyglass
