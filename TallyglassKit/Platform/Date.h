// An absolute point in time: seconds since 1970 as a double, today with a resolution of about a quarter of a
// microsecond. A value; any thread.

#pragma once

#include <chrono>

namespace tallyglass {

using Date = std::chrono::time_point<std::chrono::system_clock, std::chrono::duration<double>>;

/// Seconds from 1970-01-01 to 2001-01-01 UTC, the epoch of property lists.
inline constexpr double referenceDateOffset = 978307200.0;

[[nodiscard]] constexpr Date dateSince1970(double seconds) {
    return Date(std::chrono::duration<double>(seconds));
}
[[nodiscard]] constexpr double secondsSince1970(Date date) {
    return date.time_since_epoch().count();
}

[[nodiscard]] constexpr Date dateSince2001(double seconds) {
    return dateSince1970(seconds + referenceDateOffset);
}
[[nodiscard]] constexpr double secondsSince2001(Date date) {
    return secondsSince1970(date) - referenceDateOffset;
}

} // namespace tallyglass
