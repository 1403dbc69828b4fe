#include "TallyglassKit/Access/TMDestination.h"

#include <gtest/gtest.h>

#include <limits>

namespace tallyglass {
namespace {

constexpr auto most = std::numeric_limits<std::int64_t>::max();

TEST(TMDestination, holdsItsDatesInAscendingOrder) {
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    const TMDestination destination{
        .snapshotDates = {dateSince1970(3), dateSince1970(notANumber), dateSince1970(1), dateSince1970(2.5)},
        .attemptDates = std::vector{dateSince1970(9), dateSince1970(-1)}};

    EXPECT_EQ(destination.snapshotDates.values(),
              (std::vector{dateSince1970(1), dateSince1970(2.5), dateSince1970(3)}));
    EXPECT_EQ(destination.attemptDates.front(), dateSince1970(-1));
    EXPECT_EQ(destination.latestSnapshot(), dateSince1970(3));
    EXPECT_EQ(TMDestination{}.latestSnapshot(), std::nullopt);
    EXPECT_EQ(destination, TMDestination(destination));
}

TEST(TMDestination, isShownByVolumeThenHost) {
    EXPECT_EQ((TMDestination{.volumeName = "Backups", .networkURL = "smb://nas/b"}.displayName()), "Backups");
    EXPECT_EQ((TMDestination{.volumeName = "", .networkURL = "smb://somehost/share"}.displayName()),
              "somehost");
    EXPECT_EQ((TMDestination{.networkURL = "smb:///share"}.displayName()), "Backup Destination");
    EXPECT_EQ(TMDestination{}.displayName(), "Backup Destination");
}

TEST(TMDestination, addsUpOnlyWhatIsKnownAndFits) {
    EXPECT_EQ((TMDestination{.bytesUsed = 3, .bytesAvailable = 1}.totalBytes()), 4);
    EXPECT_EQ((TMDestination{.bytesUsed = 3, .bytesAvailable = 1}.usedFraction()), 0.75);

    for (const TMDestination& destination :
         {TMDestination{.bytesUsed = 3}, TMDestination{.bytesAvailable = 1},
          TMDestination{.bytesUsed = most, .bytesAvailable = 1},
          TMDestination{.bytesUsed = -most, .bytesAvailable = -2}}) {
        EXPECT_EQ(destination.totalBytes(), std::nullopt);
        EXPECT_EQ(destination.usedFraction(), std::nullopt);
    }
}

TEST(TMDestination, hasNoUsedFractionOfNothing) {
    const TMDestination empty{.bytesUsed = 0, .bytesAvailable = 0};
    EXPECT_EQ(empty.totalBytes(), 0);
    EXPECT_EQ(empty.usedFraction(), std::nullopt);
    EXPECT_EQ((TMDestination{.bytesUsed = -3, .bytesAvailable = 1}.usedFraction()), std::nullopt);
}

} // namespace
} // namespace tallyglass
