#include "TallyglassKit/Platform/WallClock.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace tallyglass {

namespace {

constexpr std::time_t secondsPerDay = 86400;

// One day inside the years 1 and 9999, so that no time zone offset leaves that range.
constexpr double earliest = -62135596800.0 + secondsPerDay;
constexpr double latest = 253402300799.0 - secondsPerDay;

std::tm localTime(std::time_t seconds) {
    std::tm fields{};
    localtime_r(&seconds, &fields);
    return fields;
}

WallClock wallClock(std::time_t seconds) {
    const std::tm fields = localTime(seconds);
    return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
            fields.tm_hour,        fields.tm_min,     fields.tm_sec};
}

} // namespace

WallClock WallClock::at(Date date) {
    const double seconds = secondsSince1970(date);
    return wallClock(std::isnan(seconds)
                         ? 0
                         : static_cast<std::time_t>(std::floor(std::clamp(seconds, earliest, latest))));
}

std::optional<Date> WallClock::date() const {
    const std::chrono::year_month_day civil{std::chrono::year{year}, std::chrono::month{unsigned(month)},
                                            std::chrono::day{unsigned(day)}};
    const auto within = [](int value, int limit) { return value >= 0 && value < limit; };
    if (year < 1 || year > 9999 || !within(month, 13) || !within(day, 32) || !civil.ok() ||
        !within(hour, 24) || !within(minute, 60) || !within(second, 60))
        return std::nullopt;

    // The offset from UTC is that of the day before or the day after; both are tried, since it may change
    // between them.
    const std::time_t inUTC =
        std::time_t{std::chrono::sys_days{civil}.time_since_epoch().count()} * secondsPerDay + hour * 3600 +
        minute * 60 + second;
    std::optional<std::time_t> last;
    for (const std::time_t nearby : {inUTC - secondsPerDay, inUTC + secondsPerDay}) {
        const std::time_t candidate = inUTC - localTime(nearby).tm_gmtoff;
        if (wallClock(candidate) == *this)
            last = std::max(last.value_or(candidate), candidate);
    }
    return last ? std::optional(dateSince1970(static_cast<double>(*last))) : std::nullopt;
}

} // namespace tallyglass
