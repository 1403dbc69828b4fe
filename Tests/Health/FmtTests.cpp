#include "TallyglassKit/Health/Fmt.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <iterator>
#include <limits>
#include <thread>
#include <vector>

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

TEST(Fmt, formatsInTheLocaleOfEachThread) {
    const std::vector<UserLocale> locales{
        {"en_US", "UTC"}, {"de_DE", "Europe/Berlin"}, {"en_US", "Asia/Tokyo"}};
    const auto words = [](const UserLocale& locale) {
        const Date date = dateSince1970(1'795'376'280);
        return Fmt::size(0, locale) + Fmt::size(12'345'678, locale) +
               Fmt::duration(4'200.0, DurationStyle::full, locale) +
               Fmt::duration(93'600.0, DurationStyle::abbreviated, locale) +
               Fmt::relative(date, dateSince1970(1'795'300'000), locale) + Fmt::timestamp(date, locale);
    };
    std::vector<std::string> expected;
    std::ranges::transform(locales, std::back_inserter(expected), words);
    std::atomic<int> wrong = 0;
    {
        std::vector<std::jthread> threads;
        for (std::size_t thread = 0; thread < 8; ++thread)
            threads.emplace_back([&, thread] {
                for (std::size_t call = 0; call < 20; ++call) {
                    const auto index = (thread + call / 5) % locales.size();
                    wrong += words(locales[index]) != expected[index];
                }
            });
    }
    EXPECT_NE(expected[0], expected[1]);
    EXPECT_NE(expected[0], expected[2]);
    EXPECT_EQ(wrong, 0);
}

} // namespace tallyglass
