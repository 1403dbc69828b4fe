#include "TallyglassKit/Platform/Text/Icu.h"

#include "TallyglassKit/Platform/Error.h"

#include <fmt/core.h>

#include <algorithm>
#include <cmath>

namespace tallyglass::icutext {

void Status::check(const char* purpose) const {
    if (isFailure())
        throw Error(fmt::format("ICU could not {}: {}", purpose, errorName()));
}

icu::Locale icuLocale(const UserLocale& locale) {
    return icu::Locale(locale.identifier.c_str());
}

std::unique_ptr<icu::TimeZone> icuTimeZone(const UserLocale& locale) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(fromUtf8(locale.timeZone)));
    if (*zone ==
        icu::TimeZone::getUnknown()) // TZ names a file or a rule, which only the default time zone supports
        zone.reset(icu::TimeZone::createDefault());
    return zone;
}

UDate icuDate(Date date) {
    constexpr double furthest = 8.64e15; // a hundred million days: ICU's limit is a little higher
    return std::clamp(std::round(secondsSince1970(date) * 1000), -furthest, furthest);
}

std::string toUtf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

icu::UnicodeString fromUtf8(std::string_view text) {
    return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

} // namespace tallyglass::icutext
