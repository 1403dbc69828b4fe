#include "TallyglassKit/Health/Fmt.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tallyglass {

namespace {

const UserLocale english{.identifier = "en_US", .timeZone = "UTC"};
constexpr double infinity = std::numeric_limits<double>::infinity();

std::string abbreviated(std::optional<double> seconds) {
    return Fmt::duration(seconds, DurationStyle::abbreviated, english);
}

} // namespace

TEST(Fmt, showsADashForAnAbsentSizeAndAWordForZero) {
    EXPECT_EQ(Fmt::size(std::nullopt, english), "—");
    EXPECT_EQ(Fmt::size(0, english), "Zero KB");
    EXPECT_EQ(Fmt::size(1'234'567'898, english), "1.23 GB");
}

TEST(Fmt, neverShowsLessThanAMinute) {
    for (const double seconds : {0.0, -5.0, 30.0, 59.9, 60.0, 119.9, -infinity})
        EXPECT_EQ(abbreviated(seconds), "1m") << seconds;
}

TEST(Fmt, choosesTheUnitsOfADurationByMagnitude) {
    EXPECT_EQ(abbreviated(3599), "59m");
    EXPECT_EQ(abbreviated(3599.9), "59m");
    EXPECT_EQ(abbreviated(3600), "1h");
    EXPECT_EQ(abbreviated(4200), "1h 10m");
    EXPECT_EQ(abbreviated(86399), "23h 59m");
    EXPECT_EQ(abbreviated(86400), "1d");
    EXPECT_EQ(abbreviated(86400 + 3599), "1d");
    EXPECT_EQ(abbreviated(9 * 86400 + 2 * 3600), "9d 2h");
    EXPECT_EQ(Fmt::duration(4200, DurationStyle::full, english), "1 hour, 10 minutes");
    EXPECT_EQ(Fmt::duration(2 * 86400 + 3600, DurationStyle::full, english), "2 days, 1 hour");
}

TEST(Fmt, showsADashForADurationThatCantBeTold) {
    EXPECT_EQ(abbreviated(std::nullopt), "—");
    EXPECT_EQ(abbreviated(infinity), "—");
    EXPECT_EQ(abbreviated(std::nan("")), "—");
    EXPECT_EQ(abbreviated(1e300), "—");
}

TEST(Fmt, showsNeverForAnAbsentDate) {
    EXPECT_EQ(Fmt::relative(std::nullopt, dateSince1970(0), english), "Never");
    EXPECT_EQ(Fmt::relative(std::nullopt, dateSince1970(infinity), english), "Never");
    EXPECT_EQ(Fmt::relative(dateSince1970(0), dateSince1970(7200), english), "2 hours ago");
}

TEST(Fmt, showsATimestampInTheTimeZone) {
    EXPECT_EQ(Fmt::timestamp(dateSince1970(1'795'376'280), english), "Nov 22, 2026 at 7:38\u202FPM");
}

} // namespace tallyglass
