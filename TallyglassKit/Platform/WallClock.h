// A moment as a clock on the wall of this machine shows it: civil date and time in the machine's time zone,
// without the zone. A value; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <optional>

namespace tallyglass {

struct WallClock {
    int year = 1970;
    int month = 1; // 1 to 12
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;

    /// What the clock shows at `date`, cut to whole seconds. Dates outside the years 1 to 9999 show their
    /// ends.
    [[nodiscard]] static WallClock at(Date date);

    /// The moment at which the clock shows this. Absent if a field is out of its range, or if the clock skips
    /// this time when daylight saving begins. A time that is shown twice stands for its second showing.
    [[nodiscard]] std::optional<Date> date() const;

    friend bool operator==(const WallClock&, const WallClock&) = default;
};

} // namespace tallyglass
