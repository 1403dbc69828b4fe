// Finds the item whose date is nearest to a target. Pure; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cmath>
#include <cstddef>
#include <functional>
#include <optional>
#include <ranges>

namespace tallyglass {

struct NearestMatch {
    /// How far apart two records of one backup may be, in seconds.
    static constexpr double backupTolerance = 300.0;

    /// The index of the item nearest to `target`, if it is at most `tolerance` seconds away. `date` maps an
    /// item to an optional date; items without one are skipped. The items may be in any order; of equally
    /// near ones the first is returned.
    template <std::ranges::input_range Items, typename DateOf>
    [[nodiscard]] static std::optional<std::size_t> index(Date target, const Items& items, double tolerance,
                                                          DateOf date) {
        std::optional<std::size_t> nearest;
        double least = 0;
        std::size_t position = 0;
        for (const auto& item : items) {
            if (const std::optional<Date> itemDate = std::invoke(date, item)) {
                const double difference = std::abs((*itemDate - target).count());
                if (std::isfinite(difference) && (!nearest || difference < least)) {
                    nearest = position;
                    least = difference;
                }
            }
            ++position;
        }
        return least <= tolerance ? nearest : std::nullopt;
    }
};

} // namespace tallyglass
