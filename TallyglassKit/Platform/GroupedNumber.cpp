#include "TallyglassKit/Platform/GroupedNumber.h"

#include "TallyglassKit/Platform/Icu.h"

#include <unicode/numberformatter.h>

namespace tallyglass {

std::string formatGrouped(std::int64_t number, const UserLocale& locale) {
    icutext::Status status;
    const auto text = icu::number::NumberFormatter::withLocale(icutext::icuLocale(locale))
                          .formatInt(number, status)
                          .toString(status);
    status.check("format a number");
    return icutext::toUtf8(text);
}

} // namespace tallyglass
