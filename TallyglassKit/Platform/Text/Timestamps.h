// Dates as text: for the user in the words and the time zone of a locale, for programs in ISO 8601.
// Any thread. No date is out of bounds: one beyond what calendars count shows
// as the furthest that they do, and one that is no number as "—".

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <optional>
#include <string>

namespace tallyglass {

/// "Nov 22, 2026 at 7:38 PM": an abbreviated date and a short time. The blank before PM is U+202F.
[[nodiscard]] std::string formatTimestamp(Date date, const UserLocale& locale = UserLocale::current());

/// "Nov 22": an abbreviated month and the day.
[[nodiscard]] std::string formatMonthAndDay(Date date, const UserLocale& locale = UserLocale::current());

/// "Nov 2026": an abbreviated month and the year.
[[nodiscard]] std::string formatMonthAndYear(Date date, const UserLocale& locale = UserLocale::current());

/// "2026-11-22T19:38:00.123Z": UTC, rounded to milliseconds. Absent outside the years 0000 to 9999, for which
/// ISO 8601 has no such form.
[[nodiscard]] std::optional<std::string> formatIso8601(Date date);

} // namespace tallyglass
