#include "Tallyglass/Screens/ItemInBackups.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/QtMain/Until.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <filesystem>

namespace tallyglass {
namespace {

using testing::ElementsAre;

class ItemLookup : public testing::Test {
protected:
    [[nodiscard]] std::string root(const std::string& backup) const { return (folder / backup).string(); }

    const test::TemporaryFolder folder;
    test::FakeWorkspace workspace;
    ItemInBackups item;
};

TEST_F(ItemLookup, findsTheItemBelowTheVolumeThatHasIt) {
    folder.write("old/Applications/Users/alex/app", "");
    folder.write("old/Data/Users/alex/notes", "");
    EXPECT_EQ(ItemInBackups::find(root("old"), "/Users/alex/notes"), folder / "old/Data/Users/alex/notes");
    EXPECT_EQ(ItemInBackups::find(root("old"), "/Users/alex"), folder / "old/Applications/Users/alex");
    EXPECT_FALSE(ItemInBackups::find(root("old"), "/Users/alex/other"));
    EXPECT_FALSE(ItemInBackups::find(root("new"), "/Users/alex/notes"));
    EXPECT_EQ(ItemInBackups::find(root("old"), root("old")), folder / "old");
}

TEST_F(ItemLookup, findsALinkThatLeadsNowhere) {
    std::filesystem::create_directories(folder / "old/Data");
    std::filesystem::create_symlink("/nowhere", folder / "old/Data/link");
    EXPECT_EQ(ItemInBackups::find(root("old"), "/link"), folder / "old/Data/link");
}

TEST_F(ItemLookup, showsTheItemOnlyWhereItIs) {
    folder.write("new/Data/added", "");
    item.setWorkspace(&workspace);
    item.look("/added", QString::fromStdString(root("old")), QString::fromStdString(root("new")));
    test::until([this] { return item.isInNewer(); });
    EXPECT_FALSE(item.isInOlder());
    item.showInOlder();
    item.showInNewer();
    EXPECT_THAT(workspace.requests, ElementsAre(fmt::format("reveal {}/Data/added", root("new"))));

    item.look("/other", QString(), QString::fromStdString(root("new")));
    EXPECT_FALSE(item.isInNewer()) << "it isn't known yet";
}

} // namespace
} // namespace tallyglass
