// Durations in the user's language: "1h 10m" or "1 hour, 10 minutes". Any thread.

#pragma once

#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <optional>
#include <string>

namespace tallyglass {

enum class DurationStyle {
    abbreviated, ///< "1h 10m", for compact labels
    full,        ///< "1 hour, 10 minutes", for sentences
};

/// The units of a text; the smaller one has the remainder.
enum class DurationUnits { minutes, hoursAndMinutes, daysAndHours };

/// The text of `seconds`, truncated to the smallest unit. Units that are zero are omitted; if all are, the
/// text is zero of the smallest. A day has 24 hours.
///
/// Absent if the duration is negative, NaN or too long.
[[nodiscard]] std::optional<std::string> formatDuration(double seconds, DurationUnits units,
                                                        DurationStyle style,
                                                        const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
