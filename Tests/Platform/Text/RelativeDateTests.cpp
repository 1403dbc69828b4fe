#include "TallyglassKit/Platform/Text/RelativeDate.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tallyglass {

namespace {

const UserLocale newYork{.identifier = "en_US", .timeZone = "America/New_York"};
constexpr double now =
    1'795'376'280.125; // 2026-11-22 14:38 in New York, three weeks after the clocks went back
constexpr double hour = 3600;
constexpr double day = 86400;

std::string after(double seconds, double reference = now) {
    return formatRelativeDate(dateSince1970(reference + seconds), dateSince1970(reference), newYork);
}

} // namespace

TEST(RelativeDate, takesTheLargestUnitThatFits) {
    EXPECT_EQ(after(-1), "1 second ago");
    EXPECT_EQ(after(-59), "59 seconds ago");
    EXPECT_EQ(after(-60), "1 minute ago");
    EXPECT_EQ(after(-2 * hour), "2 hours ago");
    EXPECT_EQ(after(-day), "1 day ago");
    EXPECT_EQ(after(-7 * day), "1 week ago");
    EXPECT_EQ(after(-29 * day - hour), "4 weeks ago");
    EXPECT_EQ(after(-31 * day - hour), "1 month ago");
    EXPECT_EQ(after(-365 * day), "1 year ago");
    EXPECT_EQ(after(2 * hour), "in 2 hours");
}

TEST(RelativeDate, isCutOffRatherThanRounded) {
    EXPECT_EQ(after(-7199), "1 hour ago");
    EXPECT_EQ(after(-7 * day + 1), "6 days ago");
    EXPECT_EQ(after(119), "in 1 minute");
}

TEST(RelativeDate, readsAsTheFutureWithinASecond) {
    EXPECT_EQ(after(0), "in 0 seconds");
    EXPECT_EQ(after(-0.5), "in 0 seconds");
    EXPECT_EQ(after(0.5), "in 0 seconds");
}

TEST(RelativeDate, countsDaysOnTheCalendar) {
    constexpr double noonAfterTheChange =
        1'793'552'400; // 2026-11-01 12:00, eleven hours after 1:00 came twice
    EXPECT_EQ(after(-25 * hour, noonAfterTheChange), "1 day ago");
    EXPECT_EQ(after(-24 * hour, noonAfterTheChange), "24 hours ago");
}

TEST(RelativeDate, survivesDatesBeyondTheCalendar) {
    EXPECT_EQ(after(-HUGE_VAL), after(-1e300));
    EXPECT_TRUE(after(-HUGE_VAL).ends_with(" years ago")) << after(-HUGE_VAL);
    EXPECT_EQ(after(std::nan("")), "in 0 seconds");
}

TEST(RelativeDate, followsTheLocale) {
    EXPECT_EQ(
        formatRelativeDate(dateSince1970(0), dateSince1970(7200), {.identifier = "de_DE", .timeZone = "UTC"}),
        "vor 2 Stunden");
}

} // namespace tallyglass
