#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "Tests/Access/FakeRunner.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tallyglass {
namespace {

constexpr std::string_view copying = R"(Backup session status:
{
    BackupPhase = Copying;
    ClientID = "com.apple.backupd";
    DateOfStateChange = "2026-02-27 01:11:08 +0000";
    DestinationMountPoint = "/Volumes/Backups of mini";
    NumberOfChangedItems = 12;
    Percent = "0.1";
    Progress =     {
        Percent = "0.5918951939599612";
        TimeRemaining = "148.7789304643575";
        "_raw_totalBytes" = 1805307203584;
        bytes = 831418368;
        files = 457;
        sizingFreePreflight = 1;
        totalBytes = 1805307203584;
        totalFiles = 10159895;
    };
    Running = 1;
    Stopping = 0;
}
)";

// The status of a dictionary with these entries.
BackupStatus statusOf(const std::string& entries) {
    return BackupStatus::parse("{" + entries + "}").value();
}

TEST(BackupStatus, readsABackupThatCopies) {
    const BackupStatus expected{.isRunning = true,
                                .percent = 0.5918951939599612,
                                .phase = "Copying",
                                .bytesCopied = 831418368,
                                .totalBytes = 1805307203584,
                                .filesCopied = 457,
                                .totalFiles = 10159895,
                                .timeRemaining = 148.7789304643575,
                                .numberOfChangedItems = 12,
                                .isStopping = false};
    EXPECT_EQ(BackupStatus::parse(copying), expected);
}

TEST(BackupStatus, isIdleWithoutEntries) {
    EXPECT_EQ(BackupStatus::parse("{ }"), BackupStatus::idle);
    EXPECT_EQ(statusOf("ClientID = \"com.apple.backupd\"; Percent = \"-1\"; Running = 0;"),
              BackupStatus::idle);
}

TEST(BackupStatus, isAbsentInTextWithoutADictionary) {
    for (const char* text : {"", "Backup session status:", "{", "{ Running = 1", "{ Running = 1 }", "{} x",
                             "a {heading} with braces:\n{ Running = 1; }", "{ Running = 1; }}", "{ = 1; }"})
        EXPECT_FALSE(BackupStatus::parse(text)) << text;
}

TEST(BackupStatus, runsAndStopsUnlessTheNumberIsZero) {
    EXPECT_TRUE(statusOf("Running = 2;").isRunning);
    EXPECT_TRUE(statusOf("Running = \"-0.5\";").isRunning);
    EXPECT_FALSE(statusOf("Running = \"0.0\";").isRunning);
    EXPECT_FALSE(statusOf("Running = YES;").isRunning);
    EXPECT_FALSE(statusOf("running = 1; Progress = { Running = 1; };").isRunning);
    EXPECT_TRUE(statusOf("Stopping = 1;").isStopping);
}

TEST(BackupStatus, takesPercentFromZeroOn) {
    EXPECT_EQ(statusOf("Percent = 0;").percent, 0);
    EXPECT_EQ(statusOf("Percent = \"3.8e-05\";").percent, 3.8e-05);
    EXPECT_FALSE(statusOf("Percent = \"-1\";").percent);
    EXPECT_FALSE(statusOf("Percent = nan;").percent);
}

TEST(BackupStatus, fallsBackToTheTopLevelByPresenceAlone) {
    EXPECT_EQ(statusOf("bytes = 5;").bytesCopied, 5);
    EXPECT_EQ(statusOf("bytes = 5; Progress = 1;").bytesCopied, 5);
    EXPECT_EQ(statusOf("bytes = 5; Progress = { bytes = abc; };").bytesCopied, 5);
    EXPECT_FALSE(statusOf("Percent = 1; Progress = { Percent = \"-1\"; };").percent);
    EXPECT_FALSE(statusOf("bytes = 5; Progress = { bytes = \"1e30\"; };").bytesCopied);
}

TEST(BackupStatus, keepsTimeAndChangedItemsWhereTheyBelong) {
    EXPECT_FALSE(statusOf("TimeRemaining = 120;").timeRemaining);
    EXPECT_EQ(statusOf("Progress = { TimeRemaining = 120; };").timeRemaining, 120);
    EXPECT_FALSE(statusOf("Progress = { TimeRemaining = 0; };").timeRemaining);
    EXPECT_FALSE(statusOf("Progress = { NumberOfChangedItems = 3; };").numberOfChangedItems);
}

TEST(BackupStatus, losesOnlyTheFieldThatIsUnreadable) {
    const auto status =
        statusOf("Percent = abc; BackupPhase = (Copying); files = \" 7\"; totalFiles = \"9.9\";"
                 "bytes = inf; totalBytes = \"-9.9\"; NumberOfChangedItems = 9223372036854775808;"
                 "Running = 1;");
    EXPECT_EQ(status, (BackupStatus{.isRunning = true, .totalBytes = -9, .totalFiles = 9}));
}

TEST(BackupStatus, takesNumbersOfEveryKind) {
    const auto list =
        PropertyList::parse("<plist><dict><key>Running</key><true/><key>bytes</key><real>7.9</real>"
                            "<key>files</key><integer>7</integer><key>BackupPhase</key>"
                            "<integer>1</integer><key>Percent</key><date>2026-01-01T00:00:00Z</date>"
                            "</dict></plist>");

    EXPECT_EQ(BackupStatus::parse(list.root()),
              (BackupStatus{.isRunning = true, .bytesCopied = 7, .filesCopied = 7}));
}

TEST(TMUtilRunnerStatus, isIdleForOutputThatCanNotBeRead) {
    const test::FakeRunner runner("tmutil says nothing of use\n");
    EXPECT_EQ(runner->status(), BackupStatus::idle);
    EXPECT_EQ(runner.calls(), (std::vector<test::FakeRunner::Arguments>{{"status"}}));
}

TEST(TMUtilRunnerStatus, failsAsTheRunFails) {
    EXPECT_THROW((void)test::FakeRunner(1, "no")->status(), TMUtilError);
    const test::FakeRunner cancelled([](std::stop_token) -> TMUtilResult { throw Cancelled(); });
    EXPECT_THROW((void)cancelled->status(), Cancelled);
}

TEST(TMUtilRunnerBackup, startsAndStopsByTheVerbsAlone) {
    const test::FakeRunner runner("dropped");
    runner->startBackup();
    runner->stopBackup();
    EXPECT_EQ(runner.calls(), (std::vector<test::FakeRunner::Arguments>{{"startbackup"}, {"stopbackup"}}));
}

} // namespace
} // namespace tallyglass
