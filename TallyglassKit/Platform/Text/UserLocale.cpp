#include "TallyglassKit/Platform/Text/UserLocale.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <cstring>

namespace tallyglass {

namespace {

UserLocale readFromEnvironment() {
    const icu::Locale language = icu::Locale::getDefault();
    const bool isNone = *language.getLanguage() == '\0' || std::strcmp(language.getVariant(), "POSIX") == 0;

    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createDefault());
    icu::UnicodeString zoneName;
    zone->getID(zoneName);
    return {.identifier = isNone ? "en_US" : language.getName(), .timeZone = icutext::toUtf8(zoneName)};
}

} // namespace

const UserLocale& UserLocale::current() {
    static const UserLocale locale = readFromEnvironment();
    return locale;
}

} // namespace tallyglass
