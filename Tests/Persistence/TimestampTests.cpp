#include "TallyglassKit/Persistence/Timestamp.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace tallyglass;

namespace {

std::string text(double seconds) {
    return std::string(std::string_view(TimestampText(dateSince1970(seconds))));
}

std::optional<double> seconds(std::string_view text) {
    const auto date = parseTimestamp(text);
    return date ? std::optional(secondsSince1970(*date)) : std::nullopt;
}

TEST(Timestamp, isWrittenInUTCToTheMillisecond) {
    EXPECT_EQ(text(0), "1970-01-01 00:00:00.000");
    EXPECT_EQ(text(1772154528.25), "2026-02-27 01:08:48.250");
    EXPECT_EQ(text(951868799.9996), "2000-03-01 00:00:00.000");
    EXPECT_EQ(text(-0.001), "1969-12-31 23:59:59.999");
}

TEST(Timestamp, staysInTheYearsThatItsFormHas) {
    EXPECT_EQ(text(1e300), "9999-12-31 23:59:59.999");
    EXPECT_EQ(text(-std::numeric_limits<double>::infinity()), "0000-01-01 00:00:00.000");
    EXPECT_EQ(text(std::nan("")), "1970-01-01 00:00:00.000");
}

TEST(Timestamp, isReadBackAsTheSameDate) {
    for (const double base : {-62167219200.0, -1.0, 0.0, 1772154528.0, 253402300799.0})
        for (int millisecond = 0; millisecond < 1000; ++millisecond) {
            const double moment = (base * 1000 + millisecond) / 1000;
            ASSERT_EQ(seconds(text(moment)), moment);
        }
}

TEST(Timestamp, isReadInRelatedForms) {
    EXPECT_EQ(seconds("1970-01-02"), 86400);
    EXPECT_EQ(seconds("1970-01-01 00:01"), 60);
    EXPECT_EQ(seconds("1970-01-01T00:00:01Z"), 1);
    EXPECT_EQ(seconds("1970-01-01 00:00:00.5"), 0.5);
    EXPECT_EQ(seconds("1970-01-01 01:00:00 +0100"), 0);
    EXPECT_EQ(seconds("1970-01-01 01:00:00.250-01:30"), 9000.25);
}

TEST(Timestamp, isAbsentForOtherText) {
    for (const char* unreadable : {"", "now", "1970", "1970-13-01", "1970-02-30", "1970-01-01 ",
                                   "1970-01-01 24:00", "1970-01-01 00:00:00.", "1970-01-01 00:00:00x",
                                   "1970-01-01 00:00:00Zx", "-1970-01-01", "1970-01-01 00:00:00+1"})
        EXPECT_EQ(seconds(unreadable), std::nullopt) << unreadable;
}

} // namespace
