#include "TallyglassKit/Comparison/AdjacentPairs.h"

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/Comparison.h"
#include "TallyglassKit/Persistence/Timestamp.h"

namespace tallyglass {

namespace {

AdjacentPair::State stateOf(const Comparison& row, std::optional<Date> runningSince) {
    using State = AdjacentPair::State;
    if (!row.isPartial)
        return State::ready;
    if (!row.completedAt)
        return runningSince && row.startedAt >= *runningSince ? State::running : State::missing;
    return row.errorMessage && *row.errorMessage != Comparison::cancelled ? State::failed : State::missing;
}

} // namespace

std::vector<AdjacentPair> adjacentPairs(const std::vector<std::string>& roots,
                                        const CompareOptions& options) {
    const auto key = options.cacheKey();
    std::vector<AdjacentPair> pairs;
    for (std::size_t newer = 1; newer < roots.size(); ++newer) {
        const auto& from = roots[newer - 1];
        const auto& to = roots[newer];
        pairs.push_back({.from = from, .to = to, .comparisonID = Comparison::makeID(from, to, key)});
    }
    return pairs;
}

std::vector<AdjacentPair> adjacentPairs(BackupStore& store, const std::vector<std::string>& roots,
                                        const CompareOptions& options, std::optional<Date> runningSince,
                                        const std::stop_token& stop) {
    auto pairs = adjacentPairs(roots, options);
    std::vector<std::string> ids;
    ids.reserve(pairs.size());
    for (const auto& pair : pairs)
        ids.push_back(pair.comparisonID);
    if (runningSince)
        runningSince = asStored(*runningSince); // like the starts that it is compared with

    const auto rows = store.comparisons(ids, stop);
    for (std::size_t index = 0; index < pairs.size(); ++index) {
        if (!rows[index])
            continue;
        pairs[index].state = stateOf(*rows[index], runningSince);
        if (pairs[index].state == AdjacentPair::State::failed)
            pairs[index].failure = rows[index]->errorMessage;
    }
    return pairs;
}

} // namespace tallyglass
