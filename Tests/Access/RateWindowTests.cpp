#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/RateWindow.h"

#include <gtest/gtest.h>

#include <limits>

namespace tallyglass {
namespace {

class Rate : public testing::Test {
protected:
    const std::optional<BackupRate>& at(double second, std::optional<std::int64_t> bytes,
                                        std::optional<std::int64_t> files = {}, bool isRunning = true) {
        m_window.take(BackupStatus{.isRunning = isRunning, .bytesCopied = bytes, .filesCopied = files},
                      dateSince1970(1e9 + second));
        return m_window.rate();
    }

    RateWindow m_window;
};

TEST_F(Rate, needsTwoReadingsASecondApart) {
    EXPECT_FALSE(at(0, 1000, 10));
    EXPECT_FALSE(at(0.5, 2000, 20));
    EXPECT_EQ(at(1, 3000, 30), (BackupRate{.bytesPerSecond = 2000, .filesPerSecond = 20}));
    EXPECT_EQ(at(4, 9000, 50), (BackupRate{.bytesPerSecond = 2000, .filesPerSecond = 10}));
}

TEST_F(Rate, isTheMeanOverTheLastThirtySeconds) {
    at(0, 1'000'000);
    at(10, 1'000'100);
    EXPECT_EQ(at(30, 1'000'300).value().bytesPerSecond, 10); // from second 0, which is just within
    EXPECT_EQ(at(40, 1'001'000).value().bytesPerSecond, 30); // from second 10
    EXPECT_FALSE(at(100, 2'000'000));                        // all others have left the window
}

TEST_F(Rate, isZeroWhileCountersFallAndIsKeptForAShortSpan) {
    at(0, 5000, 50);
    EXPECT_EQ(at(2, 1000, 10), BackupRate());
    at(4, 9000);
    EXPECT_EQ(at(4.25, 9500).value().bytesPerSecond, 4500 / 4.25);
}

TEST_F(Rate, isAbsentWithoutABackupAndBeforeItsFirstByte) {
    at(0, 1000);
    EXPECT_TRUE(at(2, 2000));
    EXPECT_FALSE(at(4, 2000, {}, false));
    EXPECT_FALSE(at(6, 2500)); // the old readings are gone
    EXPECT_TRUE(at(8, 2600));
    EXPECT_FALSE(at(10, 0));
    EXPECT_FALSE(at(12, std::nullopt));
    EXPECT_FALSE(at(14, 10));
}

TEST_F(Rate, acceptsCountersOfAnySize) {
    at(0, 1, std::numeric_limits<std::int64_t>::min());
    EXPECT_GT(at(2, std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max())
                  .value()
                  .filesPerSecond,
              9e18);
}

} // namespace
} // namespace tallyglass
