// The days of the calendar on which moments fall where the user is.
// Without shared mutable state; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <chrono>
#include <span>
#include <vector>

namespace tallyglass {

/// The local day of each date, counted from 1970-01-01, in the time zone of `locale`. Dates beyond what
/// calendars count fall on the furthest day that they do, one that is no number on the first of 1970.
[[nodiscard]] std::vector<std::chrono::local_days>
localDays(std::span<const Date> dates, const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
