#include "Tallyglass/Screens/Timeline/TimelineRange.h"

#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

/// A range of this length as near to `low` as the ends allow.
TimelineRange within(double low, double length, std::size_t count) {
    const TimelineRange whole = TimelineRange::whole(count);
    length = std::clamp(length, std::min(TimelineRange::leastEntries, whole.length()), whole.length());
    low = std::clamp(low, whole.low, whole.high - length);
    return length == whole.length() ? whole : TimelineRange{low, low + length};
}

} // namespace

std::pair<std::size_t, std::size_t> TimelineRange::indices(std::size_t count) const {
    const auto bounded = [&](double position) {
        return static_cast<std::size_t>(std::clamp(position, 0.0, static_cast<double>(count)));
    };
    const std::size_t first = bounded(std::floor(low + 0.5));
    return {first, std::max(first, bounded(std::ceil(high + 0.5)))};
}

TimelineRange TimelineRange::zoomed(double factor, double anchor, std::size_t count) const {
    if (!(factor > 0 && std::isfinite(factor)))
        return *this;
    const double share = length() > 0 ? (anchor - low) / length() : 0.5;
    const double whole = TimelineRange::whole(count).length();
    const double target = std::clamp(length() / factor, std::min(leastEntries, whole), whole);
    return within(anchor - share * target, target, count);
}

TimelineRange TimelineRange::scrolled(double by, std::size_t count) const {
    return within(low + by, length(), count);
}

TimelineRange TimelineRange::showing(std::size_t index, std::size_t count) const {
    const auto position = static_cast<double>(index);
    const double margin = std::min(length() / 10 + 0.5, length() / 2);
    if (position - margin < low)
        return within(position - margin, length(), count);
    if (position + margin > high)
        return within(position + margin - length(), length(), count);
    return *this;
}

} // namespace tallyglass
