// Sizes, durations and dates in one format for all screens, with one text for absent values. Any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Text/Durations.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tallyglass {

struct Fmt {
    /// A byte count in the file style, "12.3 MB", or "—".
    [[nodiscard]] static std::string size(std::optional<std::int64_t> bytes,
                                          const UserLocale& locale = UserLocale::current());

    /// In minutes below an hour, in hours and minutes below a day, else in days and hours; at least a minute.
    /// "—" if it is absent or can't be formatted.
    [[nodiscard]] static std::string duration(std::optional<double> seconds, DurationStyle style,
                                              const UserLocale& locale = UserLocale::current());

    /// "2 hours ago" relative to `relativeTo`, or "Never".
    [[nodiscard]] static std::string relative(std::optional<Date> date, Date relativeTo,
                                              const UserLocale& locale = UserLocale::current());

    /// "Nov 22, 2026 at 7:38 PM".
    [[nodiscard]] static std::string timestamp(Date date, const UserLocale& locale = UserLocale::current());
};

} // namespace tallyglass
