// Runs a comparison with the user's cache and a progress line.

#pragma once

#include "CommandLine/Commands/Context.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Comparison.h"

#include <string>

namespace tallyglass::commandline {

struct ComparisonResult {
    Comparison comparison;
    bool cached = false; ///< from the cache, without running tmutil
};

[[nodiscard]] ComparisonResult compareBackups(const Context& context, BackupStore& store,
                                              const std::string& from, const std::string& to,
                                              const CompareOptions& options, bool useCache);

} // namespace tallyglass::commandline
