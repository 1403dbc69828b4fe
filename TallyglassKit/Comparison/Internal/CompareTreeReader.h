// Reads compare output from the tree of a property list, for the forms that have no reader of their own.

#pragma once

#include "TallyglassKit/Comparison/Internal/CompareResultBuilder.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstddef>

namespace tallyglass {

/// `dataSize` is the size of what the tree was read from: a small binary list can name one long path over and
/// over, and is refused when its records would outgrow it by far. Throws Error.
[[nodiscard]] TMUtilCompare::Result readCompareTree(PropertyListValue root, std::size_t dataSize,
                                                    const CompareResultBuilder::Context& context);

} // namespace tallyglass
