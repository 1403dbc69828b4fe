#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <unicode/numberformatter.h>

namespace tallyglass {

namespace {

struct Grouping {
    explicit Grouping(const UserLocale& locale)
        : format(icu::number::NumberFormatter::withLocale(icutext::icuLocale(locale))) {}

    icu::number::LocalizedNumberFormatter format;
};

} // namespace

std::string formatGrouped(std::int64_t number, const UserLocale& locale) {
    icutext::Status status;
    const auto text = icutext::formatFor<Grouping>(locale).format.formatInt(number, status).toString(status);
    status.check("format a number");
    return icutext::toUtf8(text);
}

} // namespace tallyglass
