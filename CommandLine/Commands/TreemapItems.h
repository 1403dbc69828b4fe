// The items of a treemap as a person writes them. Pure.

#pragma once

#include "TallyglassKit/Insight/Treemap.h"

#include <string_view>
#include <vector>

namespace tallyglass::commandline {

/// Parses a JSON array of objects with the texts "id" and "label" and the number "value", which is taken as
/// not a number if it is null. Throws Error for anything else.
[[nodiscard]] std::vector<TreemapItem> parseTreemapItems(std::string_view json);

} // namespace tallyglass::commandline
