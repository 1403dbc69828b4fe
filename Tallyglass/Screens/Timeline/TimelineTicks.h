// Where the axes of the timeline carry labels: round values on one, the days or months of backups on the
// other. Pure; any thread.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelineEntries.h"
#include "Tallyglass/Screens/Timeline/TimelineRange.h"

#include <chrono>
#include <cstddef>
#include <span>
#include <vector>

namespace tallyglass {

/// The scale of the y axis: 0 and its multiples of `step` up to `top`, at or above the greatest value.
struct TimelineScale {
    double step = 1;
    double top = 1;
    [[nodiscard]] std::vector<double> ticks() const;
    friend bool operator==(const TimelineScale&, const TimelineScale&) = default;
};

/// A scale for values up to `greatest`, with up to `steps` steps of a size that a reader counts in: 1, 2 or 5
/// times a power of ten, hours also 3, 6 and 12 and whole days. Bytes and files have no parts.
[[nodiscard]] TimelineScale timelineScale(TimelineMetric metric, double greatest, std::size_t steps);

struct TimelineDateTick {
    std::size_t index = 0; ///< of the entry that it stands at
    bool isMonth = false;  ///< labelled with month and year, instead of month and day
    friend bool operator==(const TimelineDateTick&, const TimelineDateTick&) = default;
};

/// Ticks at entries that begin a day, or a month where months are shown, at least `spacing` entries apart.
/// They hold still when the range is scrolled. `days` are those of the entries, ascending.
[[nodiscard]] std::vector<TimelineDateTick> timelineDateTicks(std::span<const std::chrono::local_days> days,
                                                              const TimelineRange& visible, double spacing);

/// Whether so many days are in sight that labels name the month and the year.
[[nodiscard]] bool timelineShowsMonths(std::span<const std::chrono::local_days> days,
                                       const TimelineRange& visible);

} // namespace tallyglass
