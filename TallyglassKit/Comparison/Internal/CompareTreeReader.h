// Reads compare output from a parsed property list, for the forms other than XML.

#pragma once

#include "TallyglassKit/Comparison/Internal/CompareResultBuilder.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstddef>

namespace tallyglass {

/// `dataSize` is the size of the parsed data: a small binary list can contain one long path many times, and
/// is rejected if its records would be far larger than the data. Throws Error.
[[nodiscard]] TMUtilCompare::Result readCompareTree(PropertyListValue root, std::size_t dataSize,
                                                    const CompareResultBuilder::Context& context);

} // namespace tallyglass
