// Dates as text: for the user in the language and the time zone of a locale, for programs in ISO 8601. Any
// thread. Dates beyond the calendar's range are clamped; NaN is "—".

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <optional>
#include <string>

namespace tallyglass {

/// "Nov 22, 2026 at 7:38 PM": an abbreviated date and a short time. The space before PM is U+202F.
[[nodiscard]] std::string formatTimestamp(Date date, const UserLocale& locale = UserLocale::current());

/// "Nov 22": an abbreviated month and the day.
[[nodiscard]] std::string formatMonthAndDay(Date date, const UserLocale& locale = UserLocale::current());

/// "Nov 2026": an abbreviated month and the year.
[[nodiscard]] std::string formatMonthAndYear(Date date, const UserLocale& locale = UserLocale::current());

/// "2026-11-22T19:38:00.123Z": UTC, rounded to milliseconds. Absent outside the years 0000 to 9999, for which
/// ISO 8601 has no such form.
[[nodiscard]] std::optional<std::string> formatIso8601(Date date);

} // namespace tallyglass
