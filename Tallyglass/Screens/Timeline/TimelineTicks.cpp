#include "Tallyglass/Screens/Timeline/TimelineTicks.h"

#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

/// The least 1, 2 or 5 times a power of ten that isn't below `least`.
double roundStep(double least) {
    const double power = std::pow(10, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1 - 1e-9))
            return factor * power;
    return 10 * power;
}

double hourStep(double least) {
    constexpr double day = 24;
    if (least <= 0.5)
        return roundStep(least);
    for (const double step : {1.0, 2.0, 3.0, 6.0, 12.0, day})
        if (least <= step)
            return step;
    return day * roundStep(least / day);
}

constexpr std::chrono::days monthsFrom(300); // from so long a stretch on, a day without its year is unclear

} // namespace

std::vector<double> TimelineScale::ticks() const {
    std::vector<double> values;
    for (int count = 0; count * step <= top * (1 + 1e-9); ++count)
        values.push_back(count * step);
    return values;
}

TimelineScale timelineScale(TimelineMetric metric, double greatest, std::size_t steps) {
    if (!(greatest > 0 && std::isfinite(greatest)))
        greatest = 1;
    const double least = greatest / static_cast<double>(std::max<std::size_t>(steps, 1));
    TimelineScale scale;
    scale.step = metric == TimelineMetric::interval ? hourStep(least) : std::max(roundStep(least), 1.0);
    scale.top = std::ceil(greatest / scale.step * (1 - 1e-9)) * scale.step;
    return scale;
}

bool timelineShowsMonths(std::span<const std::chrono::local_days> days, const TimelineRange& visible) {
    const auto [first, end] = visible.indices(days.size());
    return first < end && days[end - 1] - days[first] >= monthsFrom;
}

std::vector<TimelineDateTick> timelineDateTicks(std::span<const std::chrono::local_days> days,
                                                const TimelineRange& visible, double spacing) {
    const bool showsMonths = timelineShowsMonths(days, visible);
    const auto beginsLabel = [&](std::size_t index, std::size_t before) {
        if (!showsMonths)
            return days[index] != days[before];
        const std::chrono::year_month_day date(days[index]);
        const std::chrono::year_month_day other(days[before]);
        return date.month() != other.month() || date.year() != other.year();
    };

    // From the first entry of all, so that the choice doesn't depend on what is in sight.
    const auto [first, end] = visible.indices(days.size());
    const auto step = static_cast<std::size_t>(std::max(1.0, std::ceil(spacing)));
    std::vector<TimelineDateTick> ticks;
    for (std::size_t index = 0; index < end;) {
        if (index >= first)
            ticks.push_back({index, showsMonths});
        index += step;
        while (index < end && !beginsLabel(index, index - 1))
            ++index;
    }
    return ticks;
}

} // namespace tallyglass
