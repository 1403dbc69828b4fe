#include "TallyglassKit/Platform/Text/Timestamps.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <fmt/core.h>
#include <unicode/dtptngen.h>
#include <unicode/simpleformatter.h>
#include <unicode/smpdtfmt.h>

#include <cmath>

namespace tallyglass {

namespace {

/// One locale's formatters. Immutable; any thread.
class Formats {
public:
    explicit Formats(const UserLocale& locale) {
        icutext::Status status;
        const std::unique_ptr<icu::DateTimePatternGenerator> generator(
            icu::DateTimePatternGenerator::createInstance(icutext::icuLocale(locale), status));
        status.check("find a date pattern");
        monthAndDay = format(generator->getBestPattern(u"MMMd", status), locale);
        monthAndYear = format(generator->getBestPattern(u"yMMM", status), locale);
        // The long pattern, with the "at" of "Nov 22 at 7 PM", has {1} for the date and {0} for the time.
        const icu::SimpleFormatter joint(generator->getDateTimeFormat(UDAT_LONG, status), 2, 2, status);
        icu::UnicodeString pattern;
        joint.format(generator->getBestPattern(u"jmm", status), generator->getBestPattern(u"yMMMd", status),
                     pattern, status);
        status.check("find a date pattern");
        timestamp = format(pattern, locale);
    }

    std::unique_ptr<const icu::SimpleDateFormat> timestamp;
    std::unique_ptr<const icu::SimpleDateFormat> monthAndDay;
    std::unique_ptr<const icu::SimpleDateFormat> monthAndYear;

private:
    static std::unique_ptr<const icu::SimpleDateFormat> format(const icu::UnicodeString& pattern,
                                                               const UserLocale& locale) {
        icutext::Status status;
        auto format = std::make_unique<icu::SimpleDateFormat>(pattern, icutext::icuLocale(locale), status);
        status.check("format a date");
        format->adoptTimeZone(icutext::icuTimeZone(locale).release());
        return format;
    }
};

std::string text(Date date, std::unique_ptr<const icu::SimpleDateFormat> Formats::*format,
                 const UserLocale& locale) {
    if (std::isnan(secondsSince1970(date)))
        return "—";
    icu::UnicodeString text;
    (icutext::formatFor<Formats>(locale).*format)->format(icutext::icuDate(date), text);
    return icutext::toUtf8(text);
}

} // namespace

std::string formatTimestamp(Date date, const UserLocale& locale) {
    return text(date, &Formats::timestamp, locale);
}

std::string formatMonthAndDay(Date date, const UserLocale& locale) {
    return text(date, &Formats::monthAndDay, locale);
}

std::string formatMonthAndYear(Date date, const UserLocale& locale) {
    return text(date, &Formats::monthAndYear, locale);
}

std::optional<std::string> formatIso8601(Date date) {
    using namespace std::chrono;
    const double roundedMilliseconds = std::round(secondsSince1970(date) * 1000);
    constexpr auto first = sys_time<milliseconds>(sys_days(year(0) / January / 1));
    constexpr auto end = sys_time<milliseconds>(sys_days(year(10000) / January / 1));
    if (!(roundedMilliseconds >= static_cast<double>(first.time_since_epoch().count()) &&
          roundedMilliseconds < static_cast<double>(end.time_since_epoch().count()))) // also for NaN
        return std::nullopt;

    const sys_time<milliseconds> moment(milliseconds(static_cast<std::int64_t>(roundedMilliseconds)));
    const auto midnight = floor<days>(moment);
    const year_month_day day(midnight);
    const hh_mm_ss time(moment - midnight);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", static_cast<int>(day.year()),
                       static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()),
                       time.hours().count(), time.minutes().count(), time.seconds().count(),
                       time.subseconds().count());
}

} // namespace tallyglass
