// A local date and time in this machine's time zone, without the zone. A value; any thread.

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

    /// The local time at `date`, truncated to whole seconds. Dates outside the years 1 to 9999 are clamped.
    [[nodiscard]] static WallClock at(Date date);

    /// The date with this local time. Absent if a field is out of range, or if the time is skipped when
    /// daylight saving begins. A time that occurs twice means its second occurrence.
    [[nodiscard]] std::optional<Date> date() const;

    friend bool operator==(const WallClock&, const WallClock&) = default;
};

} // namespace tallyglass
