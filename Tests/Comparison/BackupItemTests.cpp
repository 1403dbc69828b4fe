#include "TallyglassKit/Comparison/BackupItem.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace tallyglass {
namespace {

class BackupItem : public testing::Test {
protected:
    [[nodiscard]] std::string root(const std::string& backup) const { return (folder / backup).string(); }

    const test::TemporaryFolder folder;
};

TEST_F(BackupItem, findsTheItemBelowTheVolumeThatHasIt) {
    folder.write("old/Applications/Users/alex/app", "");
    folder.write("old/Data/Users/alex/notes", "");
    EXPECT_EQ(itemInBackup(root("old"), "/Users/alex/notes"), folder / "old/Data/Users/alex/notes");
    EXPECT_EQ(itemInBackup(root("old"), "/Users/alex"), folder / "old/Applications/Users/alex");
    EXPECT_FALSE(itemInBackup(root("old"), "/Users/alex/other"));
    EXPECT_FALSE(itemInBackup(root("new"), "/Users/alex/notes"));
    EXPECT_EQ(itemInBackup(root("old"), root("old")), folder / "old");
}

TEST_F(BackupItem, findsALinkThatLeadsNowhere) {
    std::filesystem::create_directories(folder / "old/Data");
    std::filesystem::create_symlink("/nowhere", folder / "old/Data/link");
    EXPECT_EQ(itemInBackup(root("old"), "/link"), folder / "old/Data/link");
}

} // namespace
} // namespace tallyglass
