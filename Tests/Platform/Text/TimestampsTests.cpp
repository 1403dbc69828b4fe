#include "TallyglassKit/Platform/Text/Timestamps.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tallyglass {

namespace {

const UserLocale english{.identifier = "en_US", .timeZone = "UTC"};
constexpr Date evening = dateSince1970(1'795'376'280); // 2026-11-22 19:38:00 UTC

} // namespace

TEST(Timestamps, showAnAbbreviatedDateAndAShortTime) {
    EXPECT_EQ(formatTimestamp(evening, english), "Nov 22, 2026 at 7:38\u202FPM");
    EXPECT_EQ(formatMonthAndDay(evening, english), "Nov 22");
    EXPECT_EQ(formatMonthAndYear(evening, english), "Nov 2026");
}

TEST(Timestamps, followTheTimeZoneAndTheLocale) {
    EXPECT_EQ(formatTimestamp(evening, {.identifier = "en_US", .timeZone = "Asia/Tokyo"}),
              "Nov 23, 2026 at 4:38\u202FAM");
    EXPECT_EQ(formatTimestamp(evening, {.identifier = "de_DE", .timeZone = "Europe/Berlin"}),
              "22. Nov. 2026 um 20:38");
    EXPECT_EQ(formatMonthAndDay(evening, {.identifier = "de_DE", .timeZone = "Europe/Berlin"}), "22. Nov.");
}

TEST(Timestamps, surviveEveryDate) {
    EXPECT_EQ(formatTimestamp(dateSince1970(std::nan("")), english), "—");
    EXPECT_EQ(formatTimestamp(dateSince1970(HUGE_VAL), english),
              formatTimestamp(dateSince1970(1e300), english));
}

TEST(Iso8601, isInUtcWithMilliseconds) {
    EXPECT_EQ(formatIso8601(dateSince1970(1'795'376'280.123)), "2026-11-22T19:38:00.123Z");
    EXPECT_EQ(formatIso8601(dateSince1970(0)), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(formatIso8601(dateSince1970(-0.25)), "1969-12-31T23:59:59.750Z");
    EXPECT_EQ(formatIso8601(dateSince1970(1'795'391'999.9996)), "2026-11-23T00:00:00.000Z");
}

TEST(Iso8601, isAbsentOutsideTheYearsOfFourDigits) {
    EXPECT_EQ(formatIso8601(dateSince1970(-62'167'219'200)), "0000-01-01T00:00:00.000Z");
    EXPECT_EQ(formatIso8601(dateSince1970(253'402'300'799)), "9999-12-31T23:59:59.000Z");
    for (const double seconds : {-62'167'219'201.0, 253'402'300'800.0, std::nan(""), HUGE_VAL, -HUGE_VAL})
        EXPECT_EQ(formatIso8601(dateSince1970(seconds)), std::nullopt) << seconds;
}

} // namespace tallyglass
