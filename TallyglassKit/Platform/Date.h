// An absolute moment: seconds since 1970 as a double, which keeps about a quarter of a microsecond today.
// A value; any thread.

#pragma once

#include <chrono>

namespace tallyglass {

using Date = std::chrono::time_point<std::chrono::system_clock, std::chrono::duration<double>>;

/// Seconds from 1970-01-01 to 2001-01-01 UTC, the moment from which property lists count.
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
