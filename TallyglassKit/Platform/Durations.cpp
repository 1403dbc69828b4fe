#include "TallyglassKit/Platform/Durations.h"

#include "TallyglassKit/Platform/Icu.h"

#include <unicode/measfmt.h>
#include <unicode/measunit.h>
#include <unicode/measure.h>

#include <cstdint>
#include <vector>

namespace tallyglass {

namespace {

struct Unit {
    std::int64_t seconds;
    icu::MeasureUnit measure;
};

/// Largest first.
std::vector<Unit> allowed(DurationUnits units) {
    using icu::MeasureUnit;
    switch (units) {
    case DurationUnits::minutes:
        return {{60, MeasureUnit::getMinute()}};
    case DurationUnits::hoursAndMinutes:
        return {{3600, MeasureUnit::getHour()}, {60, MeasureUnit::getMinute()}};
    case DurationUnits::daysAndHours:
        return {{86400, MeasureUnit::getDay()}, {3600, MeasureUnit::getHour()}};
    }
    return {};
}

} // namespace

std::optional<std::string> formatDuration(double seconds, DurationUnits units, DurationStyle style,
                                          const UserLocale& locale) {
    constexpr double tooLong = 0x1p63;
    if (!(seconds >= 0 && seconds < tooLong)) // holds for what is no number, too
        return std::nullopt;

    icutext::Status status;
    std::vector<icu::Measure> measures;
    const std::vector<Unit> candidates = allowed(units);
    auto rest = static_cast<std::int64_t>(seconds);
    for (const Unit& unit : candidates) {
        const std::int64_t count = rest / unit.seconds;
        rest %= unit.seconds;
        const bool isLastChance = &unit == &candidates.back() && measures.empty();
        if (count != 0 || isLastChance)
            measures.emplace_back(icu::Formattable(count), new icu::MeasureUnit(unit.measure), status);
    }

    const icu::MeasureFormat format(
        icutext::icuLocale(locale),
        style == DurationStyle::full ? UMEASFMT_WIDTH_WIDE : UMEASFMT_WIDTH_NARROW, status);
    icu::UnicodeString text;
    icu::FieldPosition anywhere;
    format.formatMeasures(measures.data(), static_cast<std::int32_t>(measures.size()), text, anywhere,
                          status);
    status.check("format a duration");
    return icutext::toUtf8(text);
}

} // namespace tallyglass
