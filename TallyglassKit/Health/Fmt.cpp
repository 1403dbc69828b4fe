#include "TallyglassKit/Health/Fmt.h"

#include "TallyglassKit/Platform/Text/ByteCount.h"
#include "TallyglassKit/Platform/Text/RelativeDate.h"
#include "TallyglassKit/Platform/Text/Timestamps.h"

namespace tallyglass {

namespace {

constexpr const char* absent = "—";
constexpr double minute = 60;
constexpr double hour = 3600;
constexpr double day = 86400;

DurationUnits unitsFor(double seconds) {
    if (seconds < hour)
        return DurationUnits::minutes;
    return seconds < day ? DurationUnits::hoursAndMinutes : DurationUnits::daysAndHours;
}

} // namespace

std::string Fmt::size(std::optional<std::int64_t> bytes, const UserLocale& locale) {
    return bytes ? formatByteCount(*bytes, locale) : absent;
}

std::string Fmt::duration(std::optional<double> seconds, DurationStyle style, const UserLocale& locale) {
    if (!seconds)
        return absent;
    const double shown = *seconds <= minute ? minute : *seconds;
    return formatDuration(shown, unitsFor(shown), style, locale).value_or(absent);
}

std::string Fmt::relative(std::optional<Date> date, Date relativeTo, const UserLocale& locale) {
    return date ? formatRelativeDate(*date, relativeTo, locale) : "Never";
}

std::string Fmt::timestamp(Date date, const UserLocale& locale) {
    return formatTimestamp(date, locale);
}

} // namespace tallyglass
