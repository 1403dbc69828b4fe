#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupName.h"
#include "TallyglassKit/Platform/Error.h"

#include <gtest/gtest.h>

#include <vector>

namespace tallyglass::test {
namespace {

std::string root(const std::string& stamp) {
    return "/Volumes/.timemachine/U/" + stamp + ".backup/" + stamp + ".backup";
}

const std::vector<std::string> roots = {"/Volumes/disk/Backups.backupdb/host/2011-08-26-104514",
                                        root("2026-11-22-110000"), root("2026-11-22-170000"),
                                        root("2026-11-23-110917")};

std::string failure(std::string_view name, const std::vector<std::string>& backups = roots) {
    try {
        return std::to_string(BackupName::find(name, backups));
    } catch (const Error& error) {
        return error.errorDescription();
    }
}

TEST(BackupName, isTheStampAndWhatFollows) {
    EXPECT_EQ(BackupName::of(roots[3]), "2026-11-23-110917");
    EXPECT_EQ(BackupName::of(roots[3] + "/Data/Users"), "2026-11-23-110917/Data/Users");
    EXPECT_EQ(BackupName::of(roots[0]), "2011-08-26-104514");
    EXPECT_EQ(BackupName::of("/elsewhere/folder/"), "/elsewhere/folder/");
    EXPECT_EQ(BackupName::of("name"), "name");
    EXPECT_EQ(BackupName::of(""), "");
}

TEST(BackupName, findsABackupByAllThatAPersonMayType) {
    for (std::size_t index = 0; index < roots.size(); ++index) {
        EXPECT_EQ(BackupName::find(roots[index], roots), index);
        EXPECT_EQ(BackupName::find(roots[index] + "/", roots), index);
        EXPECT_EQ(BackupName::find(BackupName::of(roots[index]), roots), index);
        EXPECT_EQ(BackupName::find("latest~" + std::to_string(3 - index), roots), index);
    }
    EXPECT_EQ(BackupName::find("2026-11-23", roots), 3U);
    EXPECT_EQ(BackupName::find("2026-11-23-110917.backup", roots), 3U);
    EXPECT_EQ(BackupName::find("2011", roots), 0U);
    EXPECT_EQ(BackupName::find("latest", roots), 3U);
    EXPECT_EQ(BackupName::find("oldest", roots), 0U);
}

TEST(BackupName, tellsWhatAnUnknownOneMayHaveMeant) {
    const std::vector<std::string> two = {root("2026-11-22-110000"), root("2026-11-23-110917")};

    EXPECT_EQ(failure("2026-11-31", two),
              "There is no backup 2026-11-31; the last are 2026-11-22-110000, 2026-11-23-110917.");
    EXPECT_EQ(failure("2000", two),
              "There is no backup 2000; the first are 2026-11-22-110000, 2026-11-23-110917.");
    EXPECT_EQ(failure("2026-11-22-12", two),
              "There is no backup 2026-11-22-12; the nearest are 2026-11-22-110000, 2026-11-23-110917.");
    EXPECT_EQ(failure("latest~2", two), "There is no backup latest~2; there are 2.");
    for (const char* name : {"latest~", "latest~-1", "latest~1x", "latests", "", "/elsewhere"})
        EXPECT_TRUE(failure(name, two).starts_with("There is no backup " + std::string(name) + "; the "))
            << name;
    for (const char* name : {"latest", "latest~1", "oldest", "2026"})
        EXPECT_EQ(failure(name, {}), BackupListing::message());
}

TEST(BackupName, showsTheNamesAroundAnUnknownOneOnly) {
    std::vector<std::string> many;
    for (int day = 10; day < 30; ++day)
        many.push_back(root("2026-11-" + std::to_string(day) + "-110000"));

    EXPECT_EQ(failure("2026-11-20-12", many),
              "There is no backup 2026-11-20-12; the nearest are 2026-11-19-110000, 2026-11-20-110000, "
              "2026-11-21-110000, 2026-11-22-110000, 2026-11-23-110000.");
    EXPECT_TRUE(failure("2027", many).ends_with("2026-11-28-110000, 2026-11-29-110000."))
        << failure("2027", many);
}

TEST(BackupName, listsWhatAnAmbiguousOneCouldBe) {
    EXPECT_EQ(failure("2026-11-22"), "2026-11-22 could be 2026-11-22-110000, 2026-11-22-170000.");
    const std::vector<std::string> many(8, root("2026-11-22-110000"));
    EXPECT_TRUE(failure("2026", many).ends_with(" and 3 more.")) << failure("2026", many);
}

} // namespace
} // namespace tallyglass::test
