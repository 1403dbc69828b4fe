#include "TallyglassKit/Platform/Text/Durations.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tallyglass {

namespace {

const UserLocale english{.identifier = "en_US", .timeZone = "UTC"};
const UserLocale german{.identifier = "de_DE", .timeZone = "UTC"};

} // namespace

TEST(Durations, leaveOutUnitsThatAreZeroUnlessAllAre) {
    const auto hours = [](double seconds) {
        return formatDuration(seconds, DurationUnits::hoursAndMinutes, DurationStyle::full, english);
    };
    EXPECT_EQ(hours(3600 + 60), "1 hour, 1 minute");
    EXPECT_EQ(hours(7200), "2 hours");
    EXPECT_EQ(hours(120), "2 minutes");
    EXPECT_EQ(hours(59), "0 minutes");
}

TEST(Durations, keepToTheAllowedUnits) {
    EXPECT_EQ(formatDuration(90 * 60, DurationUnits::minutes, DurationStyle::abbreviated, english), "90m");
    EXPECT_EQ(formatDuration(1e9 * 86400, DurationUnits::daysAndHours, DurationStyle::full, english),
              "1,000,000,000 days");
}

TEST(Durations, areAbsentIfNegativeOrTooLong) {
    for (const double seconds : {-1.0, std::nan(""), HUGE_VAL, 0x1p63})
        EXPECT_EQ(formatDuration(seconds, DurationUnits::minutes, DurationStyle::full, english),
                  std::nullopt);
}

TEST(Durations, followTheLocale) {
    EXPECT_EQ(formatDuration(4200, DurationUnits::hoursAndMinutes, DurationStyle::full, german),
              "1 Stunde, 10 Minuten");
}

} // namespace tallyglass
