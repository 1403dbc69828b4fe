#include "TallyglassKit/Platform/ContinuousClock.h"

#include <ctime>

namespace tallyglass {

ContinuousClock::time_point ContinuousClock::now() noexcept {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time); // can't fail: the clock exists and the address is valid
    return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
}

} // namespace tallyglass
