// Durations in the user's words: "1h 10m" or "1 hour, 10 minutes".
// Any thread.

#pragma once

#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <optional>
#include <string>

namespace tallyglass {

enum class DurationStyle {
    abbreviated, ///< "1h 10m", for compact labels
    full,        ///< "1 hour, 10 minutes", for sentences
};

/// The units that a text may use, the smaller one taking what is left over.
enum class DurationUnits { minutes, hoursAndMinutes, daysAndHours };

/// The text of `seconds`, cut off below the smallest unit. Units that are zero are left out; if all are, the
/// text is that of zero of the smallest. A day has 24 hours.
///
/// Absent for a negative duration, one that is no number, and one too long to be counted.
[[nodiscard]] std::optional<std::string> formatDuration(double seconds, DurationUnits units,
                                                        DurationStyle style,
                                                        const UserLocale& locale = UserLocale::current());

} // namespace tallyglass
