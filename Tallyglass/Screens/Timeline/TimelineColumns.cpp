#include "Tallyglass/Screens/Timeline/TimelineColumns.h"

#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

void add(TimelineColumn& column, const TimelineEntry& entry, TimelineMetric metric) {
    const auto value = timelineValue(entry, metric);
    const bool isStarred = metric != TimelineMetric::interval && entry.isInitialBackup();
    if (value)
        column.value = std::max(column.value.value_or(*value), *value);
    ++column.count;
    column.isGap |= entry.isGap && metric == TimelineMetric::interval;
    column.hasFailure |= entry.isFailure;
    column.hasInitialBackup |= isStarred;
    column.hasBackupWithoutValue |= !value && !entry.isFailure && !isStarred;
}

} // namespace

TimelineColumns TimelineColumns::forEntryWidth(double width) {
    return {.entries = width > 0 ? std::max(1.0, leastWidth / width) : 1};
}

double TimelineColumns::number(std::size_t index) const {
    return std::floor((static_cast<double>(index) + 0.5) / entries);
}

double TimelineColumns::position(std::size_t index) const {
    return (number(index) + 0.5) * entries - 0.5;
}

std::vector<TimelineColumn> TimelineColumns::visible(std::span<const TimelineEntry> all,
                                                     TimelineMetric metric,
                                                     const TimelineRange& range) const {
    auto [first, end] = range.indices(all.size());
    const auto isWithOneBefore = [&](std::size_t index) {
        return index > 0 && index < all.size() && number(index) == number(index - 1);
    };
    while (isWithOneBefore(first)) // whole columns, even where only a part is in sight
        --first;
    while (isWithOneBefore(end))
        ++end;

    std::vector<TimelineColumn> columns;
    for (std::size_t index = first; index < end; ++index) {
        if (index == first || !isWithOneBefore(index))
            columns.push_back({.position = position(index), .first = index});
        add(columns.back(), all[index], metric);
    }
    return columns;
}

} // namespace tallyglass
