// The tree of a comparison in the diff cache. Free function; any thread.

#pragma once

#include "TallyglassKit/Insight/StorageTree.h"

#include <optional>
#include <stop_token>

namespace tallyglass {

class BackupStore;
class ChangeFilter;
struct Comparison;

/// The tree of all rows that the filter keeps, read in pages. Throws ComparisonChanged, Cancelled or
/// DatabaseError.
[[nodiscard]] StorageTree loadStorageTree(BackupStore& store, const Comparison& comparison,
                                          const std::optional<ChangeFilter>& filter,
                                          const std::stop_token& stop = {});

} // namespace tallyglass
