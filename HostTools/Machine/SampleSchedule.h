// When the sample machine's backups were attempted: a first full one, hourly ones, then gradually daily ones
// with a long gap, a few failures, and at the end a deferred one.
//
// A pure function of its arguments; any thread.

#pragma once

#include "HostTools/Machine/SeededRandom.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <vector>

namespace tallyglass {

struct SampleAttempt {
    Date start;
    std::int64_t result = 0; ///< 0 for a backup that succeeds

    bool operator==(const SampleAttempt&) const = default;
};

/// Attempts in order, `backups` of them successful, the last of those shortly before `now`. 60 backups span
/// about two months. Only the gap is unusually long.
[[nodiscard]] std::vector<SampleAttempt> sampleSchedule(int backups, Date now, SeededRandom& random);

} // namespace tallyglass
