#include "CommandLine/Commands/NamedComparison.h"

#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/NamedBackups.h"
#include "TallyglassKit/Comparison/BackupStore.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>
#include <vector>

namespace tallyglass::commandline {

namespace {

constexpr std::size_t comparisonsShown = 3;

Error unknown(const std::string& name, std::span<const Comparison> comparisons) {
    if (comparisons.empty())
        return Error(fmt::format("There is no comparison {}; there are none in the cache.", name));
    std::vector<std::string> names;
    for (const auto& comparison : comparisons.first(std::min(comparisons.size(), comparisonsShown)))
        names.push_back(describeOperands(comparison.fromPath, comparison.toPath));
    return Error(fmt::format("There is no comparison {}; the latest {} {}.", name,
                             names.size() == 1 ? "is" : "are", fmt::join(names, ", ")));
}

} // namespace

Comparison comparisonNamed(const Context& context, BackupStore& store, const std::string& name,
                           const std::string& to) {
    if (const auto found = store.comparison(name, context.stop); found && to.empty())
        return *found;
    const auto comparisons = store.allComparisons();
    BackupPair pair;
    try {
        pair = backupPairNamed(context, name, to);
    } catch (const TMUtilError&) {
        throw;
    } catch (const Error&) {
        if (!to.empty() || name.empty())
            throw;
        throw unknown(name, comparisons); // it may have been meant for an ID
    }
    const Comparison* best = nullptr;
    for (const auto& comparison : comparisons) // the latest first
        if (comparison.fromPath == pair.from && comparison.toPath == pair.to &&
            (!best || (best->isPartial && !comparison.isPartial)))
            best = &comparison;
    if (!best)
        throw unknown(describeOperands(pair.from, pair.to), comparisons);
    return *best;
}

Comparison finishedComparisonNamed(const Context& context, BackupStore& store, const std::string& name,
                                   const std::string& to) {
    auto comparison = comparisonNamed(context, store, name, to);
    if (comparison.isPartial)
        throw Error(fmt::format("The comparison {} hasn't finished: {}",
                                describeOperands(comparison.fromPath, comparison.toPath),
                                stateOf(comparison)));
    return comparison;
}

} // namespace tallyglass::commandline
