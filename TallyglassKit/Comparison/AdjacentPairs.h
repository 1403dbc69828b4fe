// The comparisons of every two neighbouring backups, and how far each is: what there is for
// DiffEngine::backfillAdjacentPairs to do. Free functions; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

class BackupStore;
struct CompareOptions;

/// The comparison of two neighbouring backups. A value.
struct AdjacentPair {
    enum class State : std::uint8_t {
        missing, ///< not run yet, or stopped, or left behind by a process that has died
        running,
        failed,
        ready,
    };

    std::string from; ///< the roots, the older one first
    std::string to;
    std::string comparisonID;
    State state = State::missing;
    std::optional<std::string> failure = {}; ///< why the last run failed

    friend bool operator==(const AdjacentPair&, const AdjacentPair&) = default;
};

/// The pairs of neighbours in `roots`, which are sorted from the oldest to the newest; all of them missing.
[[nodiscard]] std::vector<AdjacentPair> adjacentPairs(const std::vector<std::string>& roots,
                                                      const CompareOptions& options);

/// The same with the states that the cache tells. A run that hasn't ended counts as running if it began at or
/// after `runningSince`; without that nothing does. Throws as BackupStore does.
[[nodiscard]] std::vector<AdjacentPair>
adjacentPairs(BackupStore& store, const std::vector<std::string>& roots, const CompareOptions& options,
              std::optional<Date> runningSince = std::nullopt, const std::stop_token& stop = {});

} // namespace tallyglass
