// The local calendar days of dates. Pure; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <chrono>
#include <span>
#include <vector>

namespace tallyglass {

/// The local day of each date, counted from 1970-01-01, in the time zone of `locale`. Dates beyond the
/// calendar's range are clamped; NaN is 1970-01-01.
[[nodiscard]] std::vector<std::chrono::local_days>
localDays(std::span<const Date> dates, const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
