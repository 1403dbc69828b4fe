// Reads compare output in XML in one pass, without a tree, with the same result as CompareTreeReader.

#pragma once

#include "TallyglassKit/Comparison/Internal/CompareResultBuilder.h"

#include <string_view>

namespace tallyglass {

/// Throws PropertyListError if `data` isn't well-formed, and otherwise Error if it isn't compare output.
[[nodiscard]] TMUtilCompare::Result readCompareXML(std::string_view data,
                                                   const CompareResultBuilder::Context& context);

} // namespace tallyglass
