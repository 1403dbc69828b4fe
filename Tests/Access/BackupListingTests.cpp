#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Platform/Error.h"
#include "Tests/Access/FakeRunner.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using Paths = std::vector<std::string>;

TEST(BackupListing, keepsRealRootsInTheOrderOfTheLines) {
    const test::FakeRunner runner("\n/b/2.backup\n   \n\t/a/1 x.backup \t\n\n/c\r\n\xc3/d");

    EXPECT_EQ(runner->backupPathsThrowing(), (Paths{"/b/2.backup", "/a/1 x.backup", "/c\r", "\uFFFD/d"}));
    EXPECT_EQ(runner.calls(), (std::vector<Paths>{{"listbackups", "-m"}}));
}

TEST(BackupListing, isEmptyForNoOutput) {
    EXPECT_EQ(test::FakeRunner("")->backupPathsThrowing(), Paths{});
    EXPECT_EQ(test::FakeRunner("\n \n\t")->backupPathsThrowing(), Paths{});
}

TEST(BackupListing, failsOnlyInTheThrowingForm) {
    const test::FakeRunner failing(1, "No backups found for host.");
    const test::FakeRunner cancelled([](std::stop_token) -> TMUtilResult { throw Cancelled(); });

    EXPECT_THROW((void)failing->backupPathsThrowing(), TMUtilError);
    EXPECT_THROW((void)cancelled->backupPathsThrowing(), Cancelled);
    EXPECT_EQ(failing->backupPaths(), Paths{});
    EXPECT_EQ(cancelled->backupPaths(), Paths{});
}

TEST(BackupListing, saysWhatAnEmptyListMayMean) {
    EXPECT_EQ(BackupListing::message(),
              "No backups were found on this destination. If it's a network destination, check that it is "
              "switched on and reachable.");
    EXPECT_EQ(BackupListing::message(nullptr), BackupListing::message());
}

TEST(BackupListing, asksForFullDiskAccessWhereItIsMissing) {
    const test::FakeRunner runner(80, "tmutil: listbackups requires Full Disk Access privileges.\n");
    std::exception_ptr failure;
    try {
        (void)runner->backupPathsThrowing();
    } catch (...) {
        failure = std::current_exception();
    }

    EXPECT_EQ(BackupListing::message(failure),
              "Listing backups needs Full Disk Access. Grant it to Tallyglass in System Settings > Privacy & "
              "Security > Full Disk Access. Updating the app can reset this, so it may need granting again.");
}

TEST(BackupListing, describesEveryOtherFailure) {
    EXPECT_EQ(BackupListing::message(TMUtilError::commandFailed(1, " No luck.\n", {"listbackups"})),
              "Backups couldn't be listed: No luck.");
    EXPECT_EQ(BackupListing::message(TMUtilError::launchFailed("gone")),
              "Backups couldn't be listed: Could not run tmutil: gone");
    EXPECT_EQ(BackupListing::message(std::make_exception_ptr(Cancelled())),
              "Backups couldn't be listed: Cancelled");
}

} // namespace
} // namespace tallyglass
