#include "TallyglassKit/Platform/RelativeDate.h"

#include "TallyglassKit/Platform/Icu.h"

#include <unicode/calendar.h>
#include <unicode/reldatefmt.h>

#include <cmath>
#include <utility>

namespace tallyglass {

namespace {

struct Distance {
    std::int32_t count = 0; ///< negative before the moment of reference
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
};

constexpr std::pair<UCalendarDateFields, URelativeDateTimeUnit> unitsFromLargest[] = {
    {UCAL_YEAR, UDAT_REL_UNIT_YEAR},         {UCAL_MONTH, UDAT_REL_UNIT_MONTH},
    {UCAL_WEEK_OF_YEAR, UDAT_REL_UNIT_WEEK}, {UCAL_DATE, UDAT_REL_UNIT_DAY},
    {UCAL_HOUR, UDAT_REL_UNIT_HOUR},         {UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
    {UCAL_SECOND, UDAT_REL_UNIT_SECOND},
};

Distance distance(Date date, Date relativeTo, const UserLocale& locale) {
    if (std::isnan(secondsSince1970(date)) || std::isnan(secondsSince1970(relativeTo)))
        return {};
    icutext::Status status;
    const std::unique_ptr<icu::Calendar> calendar(icu::Calendar::createInstance(
        icutext::icuTimeZone(locale).release(), icutext::icuLocale(locale), status));
    status.check("count on a calendar");
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
    const auto [count, unit] = distance(date, relativeTo, locale);
    icutext::Status status;
    const icu::RelativeDateTimeFormatter formatter(icutext::icuLocale(locale), nullptr, UDAT_STYLE_LONG,
                                                   UDISPCTX_CAPITALIZATION_NONE, status);
    icu::UnicodeString text;
    formatter.formatNumeric(count, unit, text, status);
    status.check("format a relative date");
    return icutext::toUtf8(text);
}

} // namespace tallyglass
