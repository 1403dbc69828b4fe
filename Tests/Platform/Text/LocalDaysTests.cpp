#include "TallyglassKit/Platform/Text/LocalDays.h"

#include <gmock/gmock.h>

#include <cmath>

namespace tallyglass {

namespace {

using namespace std::chrono;

std::vector<local_days> days(std::vector<double> seconds, const char* timeZone) {
    std::vector<Date> dates;
    for (const double second : seconds)
        dates.push_back(dateSince1970(second));
    return localDays(dates, {.identifier = "en_US", .timeZone = timeZone});
}

constexpr local_days november22 = local_days(year(2026) / November / 22);

} // namespace

TEST(LocalDays, beginAtTheMidnightOfTheTimeZone) {
    constexpr double midnight = 1'795'305'600; // of 2026-11-22 in UTC
    EXPECT_THAT(days({midnight - 0.5, midnight}, "UTC"),
                testing::ElementsAre(november22 - std::chrono::days(1), november22));
    EXPECT_THAT(days({midnight + 15 * 3600 - 1, midnight + 15 * 3600}, "Asia/Tokyo"),
                testing::ElementsAre(november22, november22 + std::chrono::days(1)));
}

TEST(LocalDays, followSummerTime) {
    constexpr double summerMidnight = 1'782'252'000; // 2026-06-23 22:00 UTC
    EXPECT_THAT(days({summerMidnight - 1, summerMidnight}, "Europe/Berlin"),
                testing::ElementsAre(local_days(year(2026) / June / 23), local_days(year(2026) / June / 24)));
}

TEST(LocalDays, surviveEveryDate) {
    const auto result = days({-1e300, -1, std::nan(""), 1e300}, "UTC");

    EXPECT_LT(result[0], result[1]);
    EXPECT_EQ(result[1], local_days(year(1969) / December / 31));
    EXPECT_EQ(result[2], local_days(year(1970) / January / 1));
    EXPECT_GT(result[3], november22);
}

} // namespace tallyglass
