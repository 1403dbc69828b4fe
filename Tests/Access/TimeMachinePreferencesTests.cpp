#include "TallyglassKit/Access/TimeMachinePreferences.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

// The settings read from a domain with these entries.
std::optional<TMSettings> settingsOf(const std::string& entries) {
    const test::TemporaryFolder folder;
    folder.write("Library/Preferences/com.apple.TimeMachine.plist",
                 "<plist><dict>" + entries + "</dict></plist>");
    return TimeMachinePreferences().read(SystemPaths(folder.path()));
}

std::string destinations(const std::string& elements) {
    return "<key>Destinations</key><array>" + elements + "</array>";
}

// A destination "A" with these further entries.
TMDestination destinationOf(const std::string& entries) {
    return settingsOf(destinations("<dict><key>DestinationID</key><string>A</string>" + entries + "</dict>"))
        .value()
        .destinations.at(0);
}

TEST(TimeMachinePreferences, readEveryFieldOfADestination) {
    const auto destination = destinationOf(
        "<key>DestinationUUIDs</key><array><string>U-1</string><string>U-2</string></array>"
        "<key>LastKnownVolumeName</key><string>Büro</string><key>NetworkURL</key><string>smb://nas/b</string>"
        "<key>BytesUsed</key><integer>1805307203584</integer><key>BytesAvailable</key><real>12.0</real>"
        "<key>LastKnownEncryptionState</key><string>Encrypted</string>"
        "<key>FilesystemTypeName</key><string>apfs</string>"
        "<key>ConsistencyScanDate</key><date>2026-07-20T12:29:43Z</date>"
        "<key>SnapshotDates</key><array><date>2026-07-21T00:00:00Z</date><date>2026-07-20T12:29:43Z</date></"
        "array>"
        "<key>AttemptDates</key><array><date>2026-07-20T12:29:43Z</date></array>"
        "<key>RESULT</key><integer>18</integer><key>BackupAlias</key><data>AQ==</data>");

    const Date date = dateSince1970(1784550583);
    EXPECT_EQ(destination, (TMDestination{.id = "A",
                                          .destinationUUID = "U-1",
                                          .volumeName = "Büro",
                                          .networkURL = "smb://nas/b",
                                          .kind = TMDestination::Kind::network,
                                          .bytesUsed = 1805307203584,
                                          .bytesAvailable = 12,
                                          .isEncrypted = true,
                                          .filesystemTypeName = "apfs",
                                          .consistencyScanDate = date,
                                          .snapshotDates = {date, dateSince1970(1784592000)},
                                          .attemptDates = {date},
                                          .lastResult = 18}));
}

TEST(TimeMachinePreferences, keepsADestinationWithWrongTypesThroughout) {
    const TMDestination bare{.id = "A", .kind = TMDestination::Kind::local};
    EXPECT_EQ(destinationOf(""), bare);
    EXPECT_EQ(
        destinationOf("<key>DestinationUUIDs</key><array><string>U-1</string><integer>2</integer></array>"
                      "<key>LastKnownVolumeName</key><integer>1</integer><key>NetworkURL</key><data/>"
                      "<key>BytesUsed</key><real>12.5</real><key>BytesAvailable</key><string>12</string>"
                      "<key>LastKnownEncryptionState</key><true/><key>FilesystemTypeName</key><array/>"
                      "<key>ConsistencyScanDate</key><string>2026-07-20T12:29:43Z</string>"
                      "<key>SnapshotDates</key><array><date>2026-07-20T12:29:43Z</date><string/></array>"
                      "<key>AttemptDates</key><dict/><key>RESULT</key><string>abc</string>"),
        bare);
    EXPECT_EQ(destinationOf("<key>DestinationUUIDs</key><array/>"), bare);
}

TEST(TimeMachinePreferences, takesByteCountsThatFitExactly) {
    const auto used = [](const std::string& value) {
        return destinationOf("<key>BytesUsed</key>" + value).bytesUsed;
    };
    EXPECT_EQ(used("<integer>9223372036854775807</integer>"), 9223372036854775807);
    EXPECT_FALSE(used("<integer>9223372036854775808</integer>"));
    EXPECT_FALSE(used("<real>1e30</real>"));
    EXPECT_FALSE(used("<real>nan</real>"));
    EXPECT_EQ(used("<true/>"), 1) << "a boolean is a number on this platform";
}

TEST(TimeMachinePreferences, readsEncryptionFromTheWordAlone) {
    const auto isEncrypted = [](const std::string& word) {
        return destinationOf("<key>LastKnownEncryptionState</key><string>" + word + "</string>").isEncrypted;
    };
    EXPECT_EQ(isEncrypted("encrypted"), true);
    EXPECT_EQ(isEncrypted("NotEncrypted"), false);
    EXPECT_EQ(isEncrypted("Encrypted "), false);
    EXPECT_EQ(isEncrypted(""), false);
}

TEST(TimeMachinePreferences, readsResultsFromNumbersAndText) {
    const auto result = [](const std::string& value) {
        return destinationOf("<key>RESULT</key>" + value).lastResult;
    };
    EXPECT_EQ(result("<integer>0</integer>"), 0);
    EXPECT_EQ(result("<string>0</string>"), 0);
    EXPECT_EQ(result("<string>-5</string>"), -5);
    EXPECT_EQ(result("<real>70.9</real>"), 70);
    for (const char* value : {"<string>abc</string>", "<string>1.0</string>", "<string> 1</string>",
                              "<real>1e30</real>", "<integer>18446744073709551615</integer>", "<array/>"})
        EXPECT_FALSE(result(value)) << value;
}

TEST(TimeMachinePreferences, dropsWhatHasNoIdentifier) {
    const auto settings =
        settingsOf(destinations("<dict><key>DestinationID</key><string>A</string></dict>"
                                "<dict><key>DestinationID</key><integer>1</integer></dict><dict/>"
                                "<dict><key>DestinationID</key><string>B</string></dict>"));
    ASSERT_TRUE(settings);
    ASSERT_EQ(settings->destinations.size(), 2);
    EXPECT_EQ(settings->destinations[1].id, "B");
}

TEST(TimeMachinePreferences, takesNoDestinationsFromAListWithAnythingElse) {
    const auto mixed =
        destinations("<dict><key>DestinationID</key><string>A</string></dict><string>B</string>");
    EXPECT_FALSE(settingsOf(mixed));
    EXPECT_EQ(settingsOf(mixed + "<key>AutoBackup</key><false/>"), TMSettings{});
}

TEST(TimeMachinePreferences, areAbsentWithoutEntries) {
    EXPECT_FALSE(settingsOf(""));
    EXPECT_FALSE(settingsOf("<key>RequiresACPower</key><true/>" + destinations("<dict/>")));
    EXPECT_EQ(settingsOf("<key>AutoBackup</key><array/>"), TMSettings{});
    EXPECT_FALSE(TimeMachinePreferences().read(SystemPaths("/nowhere")));
}

TEST(TimeMachinePreferences, readTheSettings) {
    EXPECT_EQ(
        settingsOf(
            "<key>AutoBackup</key><integer>1</integer><key>AutoBackupInterval</key><integer>3600</integer>"
            "<key>RequiresACPower</key><string>YES</string>"
            "<key>SkipPaths</key><array><string>/b</string><string>/a</string></array>"),
        (TMSettings{.autoBackupEnabled = true,
                    .autoBackupInterval = 3600,
                    .requiresACPower = true,
                    .skipPaths = {"/b", "/a"}}));
    EXPECT_EQ(settingsOf(
                  "<key>AutoBackup</key><true/><key>AutoBackupInterval</key><date>2026-07-20T12:29:43Z</date>"
                  "<key>SkipPaths</key><array><string>/a</string><integer>1</integer></array>"),
              TMSettings{.autoBackupEnabled = true});
}

TEST(TimeMachinePreferences, takesOnlyAnIntervalThatIsANumberOfSeconds) {
    const auto interval = [](const std::string& value) {
        return settingsOf("<key>AutoBackup</key><true/><key>AutoBackupInterval</key>" + value)
            ->autoBackupInterval;
    };
    EXPECT_EQ(interval("<real>0.5</real>"), 0.5);
    EXPECT_EQ(interval("<string>3600</string>"), 3600);
    EXPECT_FALSE(interval("<string>hourly</string>"));
    EXPECT_FALSE(interval("<real>nan</real>"));
}

TEST(TimeMachinePreferences, readAnotherDomainInItsPlace) {
    const test::TemporaryFolder folder;
    folder.write("Library/Preferences/com.example.Other.plist",
                 "<plist><dict><key>AutoBackup</key><true/></dict></plist>");
    EXPECT_EQ(TimeMachinePreferences{.suiteName = "com.example.Other"}.read(SystemPaths(folder.path())),
              TMSettings{.autoBackupEnabled = true});
}

} // namespace
} // namespace tallyglass
