// The bars as they are drawn. Where entries stand closer than bars can be told apart, one bar stands for a
// run of them: it is as high as the highest and marked as a gap if one of them is, so that nothing unusual
// is lost. Pure; any thread.

#pragma once

#include "Tallyglass/Screens/Timeline/TimelineEntries.h"
#include "Tallyglass/Screens/Timeline/TimelineRange.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tallyglass {

/// One bar, or the place of one.
struct TimelineColumn {
    double position = 0;              ///< its middle on the x axis
    std::size_t first = 0;            ///< of its entries
    std::size_t count = 0;            ///< one at least
    std::optional<double> value = {}; ///< the greatest of its entries'
    bool isGap = false;
    bool hasFailure = false;
    bool hasInitialBackup = false;      ///< that the metric has no value for
    bool hasBackupWithoutValue = false; ///< any other
    friend bool operator==(const TimelineColumn&, const TimelineColumn&) = default;
};

/// How entries are gathered in columns. Columns begin at the first entry of all, so that scrolling regroups
/// nothing, and are of one width, so that they stand on whole pixels.
struct TimelineColumns {
    static constexpr double leastWidth = 3; ///< pixels: a bar of two and a space

    double entries = 1; ///< in each column; more than one where they share

    /// For entries that are `width` pixels apart.
    [[nodiscard]] static TimelineColumns forEntryWidth(double width);

    /// The middle, on the x axis, of the column that holds an entry.
    [[nodiscard]] double position(std::size_t index) const;

    /// Those in sight, in order.
    [[nodiscard]] std::vector<TimelineColumn>
    visible(std::span<const TimelineEntry> entries, TimelineMetric metric, const TimelineRange& range) const;

    friend bool operator==(const TimelineColumns&, const TimelineColumns&) = default;

private:
    [[nodiscard]] double number(std::size_t index) const;
};

} // namespace tallyglass
