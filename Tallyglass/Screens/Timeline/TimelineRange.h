// The part of the timeline's x axis that is in sight, in positions on which the entries stand at 0, 1, 2 and
// so on. A value; any thread.
//
// 1. It lies within -0.5 and the entry count minus 0.5.
// 2. It holds at least `leastEntries` entries, or all if there are fewer.

#pragma once

#include <cstddef>
#include <utility>

namespace tallyglass {

struct TimelineRange {
    static constexpr double leastEntries = 8;

    double low = -0.5;
    double high = -0.5;

    [[nodiscard]] static TimelineRange whole(std::size_t count) {
        return {-0.5, static_cast<double>(count) - 0.5};
    }
    [[nodiscard]] double length() const { return high - low; }
    [[nodiscard]] bool isWhole(std::size_t count) const { return *this == whole(count); }

    /// The entries that are in sight, at least in part: the first, and one past the last.
    [[nodiscard]] std::pair<std::size_t, std::size_t> indices(std::size_t count) const;

    /// `factor` times as close; what is at `anchor` stays where it is, as far as the ends allow.
    [[nodiscard]] TimelineRange zoomed(double factor, double anchor, std::size_t count) const;
    [[nodiscard]] TimelineRange scrolled(double by, std::size_t count) const;
    /// Scrolled no further than needed to have an entry in sight, with some of its neighbours.
    [[nodiscard]] TimelineRange showing(std::size_t index, std::size_t count) const;

    friend bool operator==(const TimelineRange&, const TimelineRange&) = default;
};

} // namespace tallyglass
