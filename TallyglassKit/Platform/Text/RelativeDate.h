// How long ago a date was, in the user's language: "2 hours ago", "in 3 days". Any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <string>

namespace tallyglass {

/// The time from `relativeTo` to `date` in one unit, truncated: the largest of year, month, week, day, hour,
/// minute and second of which there is at least one. Computed on the calendar in the locale's time zone, so
/// that a day is from one noon to the next even if the clocks change between. Within a second, and for NaN,
/// it is "in 0 seconds".
[[nodiscard]] std::string formatRelativeDate(Date date, Date relativeTo,
                                             const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
