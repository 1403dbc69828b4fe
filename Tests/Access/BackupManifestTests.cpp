#include "TallyglassKit/Access/BackupManifest.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

// An XML manifest whose array has these elements.
std::string array(const std::string& elements) {
    return "<plist><array>" + elements + "</array></plist>";
}

std::string backup(const std::string& date, const std::string& entries = "") {
    return "<date>" + date + "</date><dict>" + entries + "</dict>";
}

std::string stats(const std::string& entries) {
    return "<key>stats</key><dict>" + entries + "</dict>";
}

TEST(BackupManifest, readsEveryFieldOfABackup) {
    const auto entries = BackupManifest::parse(array(backup(
        "2026-07-20T12:29:43Z",
        "<key>startDate</key><date>2026-07-20T12:20:00Z</date><key>uniqueSize</key><integer>4096</integer>"
        "<key>xid</key><integer>77</integer><key>volumes</key><array/>" +
            stats("<key>changed</key><dict><key>count</key><integer>12</integer><key>logicalSize</key>"
                  "<real>34.9</real><key>physicalSize</key><integer>56</integer></dict>"
                  "<key>propagated</key><dict><key>count</key><integer>5</integer></dict>"))));

    const BackupManifestEntry expected{.completionDate = dateSince1970(1784550583),
                                       .startDate = dateSince1970(1784550000),
                                       .changedCount = 12,
                                       .changedLogicalSize = 34,
                                       .changedPhysicalSize = 56,
                                       .uniqueSize = 4096,
                                       .xid = 77,
                                       .isInitialBackup = false};
    ASSERT_EQ(entries, std::vector{expected});
    EXPECT_EQ(entries[0].id(), 1784550583);
    EXPECT_EQ(entries[0].duration(), 583);
}

TEST(BackupManifest, countsNothingForUnreadableValues) {
    const BackupManifestEntry bare{.completionDate = dateSince1970(1784550583)};
    for (const std::string& entries :
         {std::string(),
          std::string(
              "<key>stats</key><array/><key>startDate</key><string>x</string>"
              "<key>xid</key><string>1</string><key>uniqueSize</key><date>2026-07-20T12:29:43Z</date>"),
          stats("<key>changed</key><integer>1</integer><key>propagated</key><array/>"),
          stats("<key>changed</key><dict><key>count</key><string>1</string><key>logicalSize</key>"
                "<integer>18446744073709551615</integer><key>physicalSize</key><real>1e30</real></dict>")})
        EXPECT_EQ(BackupManifest::parse(array(backup("2026-07-20T12:29:43Z", entries))), std::vector{bare})
            << entries;
    EXPECT_EQ(bare.duration(), std::nullopt);
}

TEST(BackupManifest, knowsTheInitialBackupByWhatWasPropagated) {
    const auto isInitial = [](const std::string& count) {
        return BackupManifest::parse(array(backup("2026-07-20T12:29:43Z",
                                                  stats("<key>propagated</key><dict>" + count + "</dict>"))))
            .at(0)
            .isInitialBackup;
    };
    EXPECT_TRUE(isInitial("<key>count</key><integer>0</integer>"));
    EXPECT_TRUE(isInitial("<key>count</key><string>5</string>"));
    EXPECT_TRUE(isInitial(""));
    EXPECT_FALSE(isInitial("<key>count</key><integer>5</integer>"));
    EXPECT_FALSE(isInitial("<key>count</key><integer>-5</integer>"));
}

TEST(BackupManifest, walksInPairs) {
    EXPECT_TRUE(BackupManifest::parse(array("")).empty());
    EXPECT_TRUE(BackupManifest::parse(array("<date>2026-07-20T12:29:43Z</date>")).empty());
    EXPECT_EQ(
        BackupManifest::parse(array(backup("2026-07-20T12:29:43Z") + "<date>2026-07-21T00:00:00Z</date>"))
            .size(),
        1);
    // An invalid pair is skipped as a whole, even if a date and a dictionary then follow at odd positions.
    EXPECT_TRUE(BackupManifest::parse(array("<true/>" + backup("2026-07-20T12:29:43Z") + "<true/>")).empty());
    EXPECT_EQ(BackupManifest::parse(array("<true/><dict/>" + backup("2026-07-20T12:29:43Z"))).size(), 1);
}

TEST(BackupManifest, sortsByCompletionAndKeepsTheOrderOfEquals) {
    const auto xid = [](int number) {
        return "<key>xid</key><integer>" + std::to_string(number) + "</integer>";
    };
    const auto entries = BackupManifest::parse(
        array(backup("2026-07-22T00:00:00Z", xid(1)) + backup("2026-07-21T00:00:00Z", xid(2)) +
              backup("2026-07-22T00:00:00Z", xid(3)) + backup("2026-07-20T00:00:00Z", xid(4))));

    std::vector<std::int64_t> order;
    for (const auto& entry : entries)
        order.push_back(*entry.xid);
    EXPECT_EQ(order, (std::vector<std::int64_t>{4, 2, 1, 3}));
}

TEST(BackupManifest, saysWhyItCanNotBeRead) {
    const auto description = [](std::string_view data) -> std::string {
        try {
            (void)BackupManifest::parse(data);
        } catch (const BackupManifestError& error) {
            EXPECT_EQ(error.value(), BackupManifestError::Case::unreadable);
            return error.errorDescription();
        }
        return "nothing was thrown";
    };
    EXPECT_EQ(description("<plist><dict/></plist>"),
              "Could not read the backup manifest: Unexpected manifest shape.");
    EXPECT_EQ(description("").rfind("Could not read the backup manifest: ", 0), 0);
    EXPECT_GT(description("bplist00").size(), std::string("Could not read the backup manifest: ").size());
}

} // namespace
} // namespace tallyglass
