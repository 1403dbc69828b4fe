// How long ago a date was, in the user's words: "2 hours ago", "in 3 days".
// Any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <string>

namespace tallyglass {

/// The way from `relativeTo` to `date` in one unit, cut off: the largest of year, month, week, day, hour,
/// minute and second that fits in whole. Counted on the calendar in the locale's time zone, so that a day is
/// from one noon to the next even if the clocks change between. Within a second it is "in 0 seconds", which
/// is also the text for a date that is no number.
[[nodiscard]] std::string formatRelativeDate(Date date, Date relativeTo,
                                             const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
