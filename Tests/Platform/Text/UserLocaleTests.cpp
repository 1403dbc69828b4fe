#include "TallyglassKit/Platform/Text/GroupedNumber.h"
#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>

namespace tallyglass {

namespace {

/// Exits with status 0 if the user's locale, read afresh in such an environment, is the one expected.
void checkCurrent(const char* language, const char* timeZone, const UserLocale& expected) {
    setenv("LC_ALL", language, 1);
    setenv("TZ", timeZone, 1);
    std::exit(UserLocale::current() == expected ? 0 : 1);
}

} // namespace

// A process reads its environment once, so each case has a process of its own.
TEST(UserLocale, isTheEnvironmentsOrElseEnglish) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    const auto success = testing::ExitedWithCode(0);
    EXPECT_EXIT(checkCurrent("de_AT.UTF-8", "Europe/Vienna", {"de_AT", "Europe/Vienna"}), success, "");
    for (const char* none : {"C", "POSIX", "C.UTF-8"})
        EXPECT_EXIT(checkCurrent(none, "Asia/Tokyo", {"en_US", "Asia/Tokyo"}), success, "") << none;
}

TEST(GroupedNumber, groupsDigitsAsTheLocaleDoes) {
    EXPECT_EQ(formatGrouped(12'345, {.identifier = "en_US", .timeZone = ""}), "12,345");
    EXPECT_EQ(formatGrouped(999, {.identifier = "en_US", .timeZone = ""}), "999");
    EXPECT_EQ(formatGrouped(12'345, {.identifier = "de_DE", .timeZone = ""}), "12.345");
    EXPECT_EQ(
        formatGrouped(std::numeric_limits<std::int64_t>::min(), {.identifier = "en_US", .timeZone = ""}),
        "-9,223,372,036,854,775,808");
}

} // namespace tallyglass
