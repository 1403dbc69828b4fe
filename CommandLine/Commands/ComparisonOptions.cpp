#include "CommandLine/Commands/ComparisonOptions.h"

#include <optional>

namespace tallyglass::commandline {

std::vector<Argument> ComparisonOptions::arguments() {
    return {
        {"--depth", "Look this many folders deep (3)", &depth, "N"},
        {.name = "--no-limit",
         .description = "Look at every folder, however deep",
         .value = &noLimit,
         .excludes = "--depth"},
        {"--properties",
         "What to look at: size and date (fast), tmutil's own choice (default), everything (thorough)",
         &properties,
         "fast|default|thorough",
         {"fast", "default", "thorough"}},
        {"--ignore", "Skip everything of this name; may be repeated", &ignored, "NAME"},
    };
}

CompareOptions ComparisonOptions::chosen() const {
    const auto bound = noLimit ? std::nullopt : std::optional(depth);
    auto options = properties == "thorough"  ? CompareOptions::thorough(bound)
                   : properties == "default" ? CompareOptions::tmutilDefault(bound)
                                             : CompareOptions::fast(bound);
    options.ignoredComponents = ignored;
    return options;
}

} // namespace tallyglass::commandline
