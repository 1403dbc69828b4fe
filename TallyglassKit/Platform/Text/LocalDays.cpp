#include "TallyglassKit/Platform/Text/LocalDays.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <cmath>

namespace tallyglass {

std::vector<std::chrono::local_days> localDays(std::span<const Date> dates, const UserLocale& locale) {
    using namespace std::chrono;
    const auto zone = icutext::icuTimeZone(locale);
    std::vector<local_days> result;
    result.reserve(dates.size());
    for (const Date date : dates) {
        const UDate moment = std::isnan(secondsSince1970(date)) ? 0 : icutext::icuDate(date);
        std::int32_t standardOffset = 0;
        std::int32_t daylightSaving = 0;
        icutext::Status status;
        zone->getOffset(moment, false, standardOffset, daylightSaving, status);
        status.check("find the day of a date");
        const local_time<milliseconds> local(
            milliseconds(static_cast<std::int64_t>(moment) + standardOffset + daylightSaving));
        result.push_back(floor<days>(local));
    }
    return result;
}

} // namespace tallyglass
