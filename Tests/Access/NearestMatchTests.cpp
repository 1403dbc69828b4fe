#include "TallyglassKit/Access/NearestMatch.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tallyglass {
namespace {

using Items = std::vector<std::optional<double>>;

std::optional<std::size_t> index(double target, const Items& items,
                                 double tolerance = NearestMatch::backupTolerance) {
    return NearestMatch::index(dateSince1970(target), items, tolerance, [](std::optional<double> seconds) {
        return seconds ? std::optional(dateSince1970(*seconds)) : std::nullopt;
    });
}

TEST(NearestMatch, takesTheNearestOfAnUnsortedList) {
    EXPECT_EQ(index(1000, {2000, std::nullopt, 1100, 0, 990}), 4);
}

TEST(NearestMatch, includesTheToleranceItself) {
    EXPECT_EQ(index(1000, {1300}), 0);
    EXPECT_EQ(index(1000, {700}), 0);
    EXPECT_EQ(index(1000, {1300.5}), std::nullopt);
}

TEST(NearestMatch, takesTheFirstOfTwoEquallyNear) {
    EXPECT_EQ(index(1000, {1010, 990}), 0);
    EXPECT_EQ(index(1000, {990, 1010}), 0);
}

TEST(NearestMatch, findsNothingWithoutDates) {
    EXPECT_EQ(index(1000, {}), std::nullopt);
    EXPECT_EQ(index(1000, {std::nullopt, std::nullopt}), std::nullopt);
}

TEST(NearestMatch, skipsDifferencesThatAreNaN) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();

    EXPECT_EQ(index(1000, {infinity, notANumber, 1001}), 2);
    EXPECT_EQ(index(1000, {infinity}, infinity), std::nullopt);
    EXPECT_EQ(index(notANumber, {1000}, infinity), std::nullopt);
}

} // namespace
} // namespace tallyglass
