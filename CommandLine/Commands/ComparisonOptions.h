// The options of the commands that compare: --depth, --no-limit, --properties, --ignore. Main thread only.

#pragma once

#include "CommandLine/Commands/Commands.h"
#include "TallyglassKit/Comparison/CompareOptions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tallyglass::commandline {

struct ComparisonOptions {
    std::int64_t depth = 3;
    bool noLimit = false;
    std::string properties = "fast";
    std::vector<std::string> ignored;

    /// The arguments that set these values.
    [[nodiscard]] std::vector<Argument> arguments();

    [[nodiscard]] CompareOptions chosen() const;
};

} // namespace tallyglass::commandline
