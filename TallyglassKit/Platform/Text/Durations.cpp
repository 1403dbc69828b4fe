#include "TallyglassKit/Platform/Text/Durations.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <unicode/listformatter.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>

#include <array>
#include <cstdint>
#include <vector>

namespace tallyglass {

namespace {

struct Unit {
    std::int64_t seconds;
    icu::MeasureUnit measure;
};

constexpr std::size_t unitCount = 3;
const std::array<Unit, unitCount>& allUnits() {
    static const std::array<Unit, unitCount> units{{{86400, icu::MeasureUnit::getDay()},
                                                    {3600, icu::MeasureUnit::getHour()},
                                                    {60, icu::MeasureUnit::getMinute()}}};
    return units;
}

/// Indices of the units of a text, the larger one first.
std::vector<std::size_t> allowed(DurationUnits units) {
    switch (units) {
    case DurationUnits::minutes:
        return {2};
    case DurationUnits::hoursAndMinutes:
        return {1, 2};
    case DurationUnits::daysAndHours:
        return {0, 1};
    }
    return {};
}

/// One locale's formatters in one style. Immutable; any thread.
template <DurationStyle style>
class Format {
public:
    explicit Format(const UserLocale& userLocale) {
        constexpr bool isFull = style == DurationStyle::full;
        const auto locale = icutext::icuLocale(userLocale);
        for (std::size_t i = 0; i < unitCount; ++i)
            m_counts[i] = icu::number::NumberFormatter::withLocale(locale)
                              .unit(allUnits()[i].measure)
                              .unitWidth(isFull ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_NARROW);
        icutext::Status status;
        m_list.reset(icu::ListFormatter::createInstance(
            locale, ULISTFMT_TYPE_UNITS, isFull ? ULISTFMT_WIDTH_WIDE : ULISTFMT_WIDTH_NARROW, status));
        status.check("format a duration");
    }

    [[nodiscard]] std::string text(std::int64_t seconds, DurationUnits units) const {
        icutext::Status status;
        std::vector<icu::UnicodeString> parts;
        const auto candidates = allowed(units);
        for (const std::size_t unit : candidates) {
            const std::int64_t count = seconds / allUnits()[unit].seconds;
            seconds %= allUnits()[unit].seconds;
            const bool isLastChance = unit == candidates.back() && parts.empty();
            if (count != 0 || isLastChance)
                parts.push_back(m_counts[unit].formatInt(count, status).toString(status));
        }
        icu::UnicodeString text;
        m_list->format(parts.data(), static_cast<std::int32_t>(parts.size()), text, status);
        status.check("format a duration");
        return icutext::toUtf8(text);
    }

private:
    std::array<icu::number::LocalizedNumberFormatter, unitCount> m_counts;
    std::unique_ptr<const icu::ListFormatter> m_list;
};

} // namespace

std::optional<std::string> formatDuration(double seconds, DurationUnits units, DurationStyle style,
                                          const UserLocale& locale) {
    constexpr double tooLong = 0x1p63;
    if (!(seconds >= 0 && seconds < tooLong)) // also for NaN
        return std::nullopt;
    const auto whole = static_cast<std::int64_t>(seconds);
    return style == DurationStyle::full
               ? icutext::formatFor<Format<DurationStyle::full>>(locale).text(whole, units)
               : icutext::formatFor<Format<DurationStyle::abbreviated>>(locale).text(whole, units);
}

} // namespace tallyglass
