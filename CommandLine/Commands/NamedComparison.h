// A comparison in the cache by what a person types. Main thread only.

#pragma once

#include "CommandLine/Commands/Context.h"
#include "TallyglassKit/Comparison/Comparison.h"

#include <string>

namespace tallyglass::commandline {

/// The comparison whose ID `name` is; else the latest finished one, or at least the latest, of the two
/// backups that `name` and `to` mean (see backupPairNamed). Throws Error with the latest comparisons if there
/// is none.
[[nodiscard]] Comparison comparisonNamed(const Context& context, BackupStore& store, const std::string& name,
                                         const std::string& to);

/// The same if it has finished; throws Error otherwise.
[[nodiscard]] Comparison finishedComparisonNamed(const Context& context, BackupStore& store,
                                                 const std::string& name, const std::string& to);

} // namespace tallyglass::commandline
