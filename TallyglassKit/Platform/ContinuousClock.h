// A monotonic clock that keeps counting while the computer sleeps. Any thread.

#pragma once

#include <chrono>

namespace tallyglass {

/// Meets the Clock requirements of std::chrono.
struct ContinuousClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ContinuousClock>;
    static constexpr bool is_steady = true;

    [[nodiscard]] static time_point now() noexcept;
};

} // namespace tallyglass
