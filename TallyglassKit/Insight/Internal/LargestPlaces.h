// Finds the few places in a tree that have most of its change. Pure; any thread.

#pragma once

#include "TallyglassKit/Insight/StorageTree.h"

#include <vector>

namespace tallyglass {

/// At most three nodes, largest first, none within another, which together have more than half of the change.
/// None if there are no such nodes.
[[nodiscard]] std::vector<StorageTree::Index> largestPlaces(const StorageTree& tree);

} // namespace tallyglass
