#include "TallyglassKit/Platform/Text/RelativeDate.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <unicode/calendar.h>
#include <unicode/reldatefmt.h>

#include <cmath>
#include <utility>

namespace tallyglass {

namespace {

struct Distance {
    std::int32_t count = 0; ///< negative before the reference date
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
};

constexpr std::pair<UCalendarDateFields, URelativeDateTimeUnit> unitsFromLargest[] = {
    {UCAL_YEAR, UDAT_REL_UNIT_YEAR},         {UCAL_MONTH, UDAT_REL_UNIT_MONTH},
    {UCAL_WEEK_OF_YEAR, UDAT_REL_UNIT_WEEK}, {UCAL_DATE, UDAT_REL_UNIT_DAY},
    {UCAL_HOUR, UDAT_REL_UNIT_HOUR},         {UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
    {UCAL_SECOND, UDAT_REL_UNIT_SECOND},
};

/// One locale's formatters. Immutable; any thread, each with a copy of the calendar.
struct Formats {
    explicit Formats(const UserLocale& locale)
        : calendar(icu::Calendar::createInstance(icutext::icuTimeZone(locale).release(),
                                                 icutext::icuLocale(locale), status)),
          words(icutext::icuLocale(locale), nullptr, UDAT_STYLE_LONG, UDISPCTX_CAPITALIZATION_NONE, status) {
        status.check("format a relative date");
    }

    icutext::Status status; // first, since the others are constructed with it
    const std::unique_ptr<const icu::Calendar> calendar;
    const icu::RelativeDateTimeFormatter words;
};

Distance distance(Date date, Date relativeTo, const Formats& formats) {
    if (std::isnan(secondsSince1970(date)) || std::isnan(secondsSince1970(relativeTo)))
        return {};
    icutext::Status status;
    const std::unique_ptr<icu::Calendar> calendar(formats.calendar->clone());
    for (const auto& [field, unit] : unitsFromLargest) {
        calendar->setTime(icutext::icuDate(relativeTo), status);
        const std::int32_t count = calendar->fieldDifference(icutext::icuDate(date), field, status);
        status.check("count on a calendar");
        if (count != 0)
            return {.count = count, .unit = unit};
    }
    return {};
}

} // namespace

std::string formatRelativeDate(Date date, Date relativeTo, const UserLocale& locale) {
    const auto& formats = icutext::formatFor<Formats>(locale);
    const auto [count, unit] = distance(date, relativeTo, formats);
    icutext::Status status;
    icu::UnicodeString text;
    formats.words.formatNumeric(count, unit, text, status);
    status.check("format a relative date");
    return icutext::toUtf8(text);
}

} // namespace tallyglass
