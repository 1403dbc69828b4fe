#include "CommandLine/Commands/CompareBackups.h"

#include "CommandLine/Commands/ProgressLine.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/core.h>

namespace tallyglass::commandline {

namespace {

struct ProgressText {
    std::string operator()(const DiffEngine::Running& running) const {
        if (running.bytesReceived == 0)
            return "Running tmutil compare…";
        return fmt::format("Running tmutil compare… {} of results received",
                           Fmt::size(running.bytesReceived));
    }
    std::string operator()(const DiffEngine::Decoding&) const { return "Reading results…"; }
    std::string operator()(const DiffEngine::Storing& storing) const {
        return fmt::format("Storing {} of {}…", formatGrouped(storing.done), formatGrouped(storing.total));
    }
    std::string operator()(const Comparison&) const { return "Done"; }
};

} // namespace

ComparisonResult compareBackups(const Context& context, BackupStore& store, const std::string& from,
                                const std::string& to, const CompareOptions& options, bool useCache) {
    ComparisonResult result;
    result.cached = true; // until progress shows that it runs
    ProgressLine line;
    const DiffEngine engine(context.runner(), store);
    result.comparison = engine.compare(
        from, to, options, useCache,
        [&](const DiffEngine::Progress& event) {
            if (std::holds_alternative<Comparison>(event))
                return;
            result.cached = false; // a cache hit only sends the comparison
            line.show(std::visit(ProgressText{}, event));
        },
        context.stop);
    return result;
}

} // namespace tallyglass::commandline
