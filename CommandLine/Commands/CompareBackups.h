// One comparison on the command line: the user's cache, and a progress line while it runs.

#pragma once

#include "CommandLine/Commands/Context.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Comparison.h"

#include <string>

namespace tallyglass::commandline {

struct ComparisonResult {
    Comparison comparison;
    bool cached = false; ///< it came from the cache and tmutil wasn't run
};

[[nodiscard]] ComparisonResult compareBackups(const Context& context, BackupStore& store,
                                              const std::string& from, const std::string& to,
                                              const CompareOptions& options, bool useCache);

} // namespace tallyglass::commandline
