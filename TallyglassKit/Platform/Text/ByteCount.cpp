#include "TallyglassKit/Platform/Text/ByteCount.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <unicode/measunit.h>
#include <unicode/numberformatter.h>
#include <unicode/rbnf.h>

#include <array>
#include <mutex>

namespace tallyglass {

namespace {

using icu::MeasureUnit;
using icu::number::NumberFormatter;
using icu::number::Precision;
using icu::number::Scale;

struct Unit {
    std::uint64_t largest; ///< the largest magnitude that still rounds to less than a thousand of this unit
    int powerOfTen;
    int fractionDigits;
};

constexpr std::array units{
    Unit{999, 0, 0},
    Unit{999'499, 3, 0},
    Unit{999'949'999, 6, 1},
    Unit{999'994'999'999, 9, 2},
    Unit{999'994'999'999'999, 12, 2},
    Unit{999'994'999'999'999'999, 15, 2},
    Unit{UINT64_MAX, 18, 2},
};

/// One locale's formatters. Immutable; any thread.
class Formats {
public:
    explicit Formats(const UserLocale& locale) : m_locale(icutext::icuLocale(locale)) {
        const std::array measures{MeasureUnit::getByte(),     MeasureUnit::getKilobyte(),
                                  MeasureUnit::getMegabyte(), MeasureUnit::getGigabyte(),
                                  MeasureUnit::getTerabyte(), MeasureUnit::getPetabyte()};
        for (std::size_t i = 0; i < units.size(); ++i) {
            auto& format = m_formats[i];
            format = NumberFormatter::withLocale(m_locale)
                         .scale(Scale::powerOfTen(-units[i].powerOfTen))
                         .precision(Precision::minMaxFraction(0, units[i].fractionDigits))
                         .roundingMode(UNUM_ROUND_HALFEVEN);
            if (i < measures.size())
                format = format.unit(measures[i])
                             .unitWidth(i == 0 ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_SHORT);
        }
    }

    [[nodiscard]] std::string text(std::int64_t bytes) const {
        if (bytes != 0)
            return icutext::toUtf8(numeric(bytes));
        // The most expensive one, and often not needed.
        std::call_once(m_zeroOnce, [this] { m_zero = spelledOutZero(); });
        return icutext::toUtf8(m_zero);
    }

private:
    [[nodiscard]] icu::UnicodeString numeric(std::int64_t bytes) const {
        // Negated as unsigned, since the minimum has no positive counterpart.
        const auto magnitude =
            bytes < 0 ? -static_cast<std::uint64_t>(bytes) : static_cast<std::uint64_t>(bytes);
        std::size_t unit = 0;
        while (magnitude > units[unit].largest)
            ++unit;
        return numeric(bytes, unit);
    }

    [[nodiscard]] icu::UnicodeString numeric(std::int64_t count, std::size_t unit) const {
        icutext::Status status;
        icu::UnicodeString text = m_formats[unit].formatInt(count, status).toString(status);
        status.check("format a byte count");
        if (units[unit].powerOfTen ==
            3) // the file style writes "KB" where the symbol is "kB", or "Ko" for "ko"
            text.findAndReplace(u"k", u"K");
        if (units[unit].powerOfTen == 18) // unknown to ICU; the symbol is international
            text.append(u" EB");
        return text;
    }

    /// The text for zero kilobytes with the numeral as a capitalised word.
    [[nodiscard]] icu::UnicodeString spelledOutZero() const {
        icutext::Status status;
        const icu::RuleBasedNumberFormat speller(icu::URBNF_SPELLOUT, m_locale, status);
        icu::UnicodeString word;
        speller.format(0, word);
        word.toTitle(nullptr, m_locale);
        const auto numeral = m_formats.back().formatInt(0, status).toString(status);
        status.check("spell out zero");
        return numeric(0, 1).findAndReplace(numeral, word);
    }

    const icu::Locale m_locale;
    std::array<icu::number::LocalizedNumberFormatter, units.size()> m_formats;
    mutable std::once_flag m_zeroOnce;
    mutable icu::UnicodeString m_zero;
};

} // namespace

std::string formatByteCount(std::int64_t bytes, const UserLocale& locale) {
    return icutext::formatFor<Formats>(locale).text(bytes);
}

} // namespace tallyglass
