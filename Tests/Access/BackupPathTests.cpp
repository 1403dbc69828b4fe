#include "TallyglassKit/Access/BackupPath.h"
#include "Tests/Support/TimeZone.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace tallyglass {
namespace {

const std::string root = "/Volumes/.timemachine/ABC/2026-07-20-122943.backup/2026-07-20-122943.backup";

TEST(BackupPath, splitsIntoVolumeAndLogicalPath) {
    const test::TimeZone zone("UTC");

    const auto path = BackupPath::split(root + "/Macintosh HD - Data/Users/ann/a b.txt", root);

    ASSERT_TRUE(path);
    EXPECT_EQ(path->root, root);
    EXPECT_EQ(path->volume, "Macintosh HD - Data");
    EXPECT_EQ(path->logicalPath, "/Users/ann/a b.txt");
    EXPECT_EQ(path->timestamp, dateSince1970(1784550583));
}

TEST(BackupPath, hasNoVolumeAtTheRootItself) {
    for (const std::string& path : {root, root + "/"}) {
        const auto split = BackupPath::split(path, root);
        ASSERT_TRUE(split) << path;
        EXPECT_FALSE(split->volume) << path;
        EXPECT_EQ(split->logicalPath, "") << path;
    }
}

TEST(BackupPath, hasNoLogicalPathAtTheVolumeItself) {
    const auto split = BackupPath::split(root + "/Macintosh HD", root);

    ASSERT_TRUE(split);
    EXPECT_EQ(split->volume, "Macintosh HD");
    EXPECT_EQ(split->logicalPath, "");
}

TEST(BackupPath, keepsSlashesSoThatThePartsMakeThePathAgain) {
    for (const std::string rest : {"HD/", "HD//a", "/a", "HD/a/", "HD/a//b"}) {
        const auto split = BackupPath::split("/r/" + rest, "/r");
        ASSERT_TRUE(split && split->volume) << rest;
        EXPECT_EQ(*split->volume + split->logicalPath, rest);
    }
}

TEST(BackupPath, comparesRootsAsPlainText) {
    EXPECT_FALSE(BackupPath::split("/backups/b/HD", "/backups/a"));
    EXPECT_FALSE(BackupPath::split("/backups", "/backups/a"));

    const auto middle = BackupPath::split("/backups/2026/HD/x", "/backups/20");
    ASSERT_TRUE(middle);
    EXPECT_EQ(middle->volume, "26");
    EXPECT_EQ(middle->logicalPath, "/HD/x");
}

TEST(BackupPath, splitsAtTheLongestRootFirst) {
    const std::vector<std::string> roots{"/backups/20", "/elsewhere", "/backups/2026", "/backups"};

    const auto split = BackupPath::split("/backups/2026/HD/x", roots);

    ASSERT_TRUE(split);
    EXPECT_EQ(split->root, "/backups/2026");
    EXPECT_EQ(split->volume, "HD");
    EXPECT_FALSE(BackupPath::split("/other", roots));
    EXPECT_FALSE(BackupPath::split("/other", std::vector<std::string>{}));
}

TEST(BackupPath, viewsAreTheSamePartsOfTheGivenText) {
    const std::string path = root + "/HD/x";
    const std::vector<std::string> roots{"/Volumes", root};

    const auto view = BackupPath::splitView(path, roots);

    ASSERT_TRUE(view);
    EXPECT_EQ(view->root, root);
    EXPECT_EQ(view->volume, "HD");
    EXPECT_EQ(view->logicalPath, "/x");
    EXPECT_EQ(view->logicalPath.data() + 2, path.data() + path.size());
}

TEST(BackupPath, hasNoTimestampUnderARootOfAnotherForm) {
    for (const std::string other :
         {"/Volumes/disk/Backups.backupdb/host/2011-08-26-104514", "/2026-07-20.backup", "/.backup",
          "/2026-07-20-122943.backup2", "/x2026-07-20-122943.backup", "/2026-07-20-122943 .backup",
          "/2026-07-20-12294a.backup", "/2026-07-20T122943.backup", "/2026-7-20-122943.backup", "/", ""}) {
        const auto split = BackupPath::split(other + "/HD", other);
        ASSERT_TRUE(split) << other;
        EXPECT_FALSE(split->timestamp) << other;
    }
}

TEST(BackupPath, refusesStampsThatNoClockShows) {
    const test::TimeZone zone("Europe/Berlin");

    for (const char* stamp :
         {"2026-13-01-000000", "2026-00-01-000000", "2026-02-29-000000", "2026-04-31-000000",
          "2026-04-00-000000", "2026-04-01-240000", "2026-04-01-006000", "2026-04-01-000060",
          "0000-01-01-000000", "2026-03-29-023000"})
        EXPECT_FALSE(BackupPath::dateOfStamp(stamp)) << stamp;
    EXPECT_TRUE(BackupPath::dateOfStamp("2028-02-29-000000"));
}

TEST(BackupPath, readsStampsAsLocalTime) {
    const test::TimeZone zone("Europe/Berlin");

    EXPECT_EQ(BackupPath::dateOfStamp("2026-01-15-120000"), dateSince1970(1768474800)); // UTC + 1
    EXPECT_EQ(BackupPath::dateOfStamp("2026-07-15-120000"), dateSince1970(1784109600)); // UTC + 2
    EXPECT_EQ(BackupPath::dateOfStamp("2026-03-29-015959"), dateSince1970(1774745999));
    EXPECT_EQ(BackupPath::dateOfStamp("2026-03-29-030000"), dateSince1970(1774746000));
    EXPECT_EQ(BackupPath::dateOfStamp("2026-10-25-023000"), dateSince1970(1792891800))
        << "the second showing";
}

TEST(BackupPath, rebuildsTheRootThatSpellsADate) {
    const test::TimeZone zone("Pacific/Apia");

    const Date date = dateSince1970(1784550583.75);
    const std::string rebuilt = BackupPath::reconstructRoot("ABC-1", date);

    EXPECT_EQ(rebuilt, "/Volumes/.timemachine/ABC-1/2026-07-21-012943.backup/2026-07-21-012943.backup");
    EXPECT_EQ(BackupPath::timestampOfRoot(rebuilt), dateSince1970(1784550583));
    EXPECT_EQ(BackupPath::timestampOfRoot(rebuilt + "/"), dateSince1970(1784550583));
}

TEST(BackupPath, stampsEveryHourOfTheYearSoThatItReadsBack) {
    for (const char* name :
         {"UTC", "America/St_Johns", "Australia/Lord_Howe", "Pacific/Apia", "Europe/Dublin"}) {
        const test::TimeZone zone(name);
        int ambiguous = 0;
        for (double seconds = 1324000000; seconds < 1324000000 + 366 * 86400.0; seconds += 1800) {
            const auto read = BackupPath::dateOfStamp(BackupPath::stamp(dateSince1970(seconds)));
            ASSERT_TRUE(read) << name << " " << seconds;
            ambiguous += *read != dateSince1970(seconds);
        }
        EXPECT_LE(ambiguous, 2) << name << ": only the hour that is shown twice has another date";
    }
}

TEST(BackupPath, stampsAnyDateWithoutHarm) {
    const test::TimeZone zone("America/New_York");
    using Limits = std::numeric_limits<double>;

    EXPECT_EQ(BackupPath::stamp(dateSince1970(-0.5)), "1969-12-31-185959");
    EXPECT_EQ(BackupPath::stamp(dateSince1970(Limits::infinity())).substr(0, 4), "9999");
    EXPECT_EQ(BackupPath::stamp(dateSince1970(-Limits::max())).substr(0, 4), "0001");
    EXPECT_EQ(BackupPath::stamp(dateSince1970(Limits::quiet_NaN())), "1969-12-31-190000");
}

TEST(BackupPath, tellsFromTheTextWhatLiesInABackup) {
    for (const char* path :
         {"/Volumes/.timemachine/U/anything", "/root/Volumes/.timemachine", "2026-07-20-122943.backup",
          "/disk/2026-07-20-122943.backup/Data/file", "/Volumes/disk/Backups.backupdb/host"})
        EXPECT_TRUE(BackupPath::isInBackup(path)) << path;
    for (const char* path : {"", "/", "/Users/me/notes.backup", "/Volumes/.timemachines",
                             "/2026-07-20-122943/file", "/2026-13-20-122943.backup/file"})
        EXPECT_FALSE(BackupPath::isInBackup(path)) << path;
}

} // namespace
} // namespace tallyglass
