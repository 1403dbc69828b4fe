#include "Tallyglass/Screens/Context/ItemInBackups.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/QtMain/EventLoop.h"
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

TEST_F(ItemLookup, showsTheItemOnlyWhereItIs) {
    folder.write("new/Data/added", "");
    item.setWorkspace(&workspace);
    item.look("/added", QString::fromStdString(root("old")), QString::fromStdString(root("new")));
    test::waitUntil([this] { return item.isInNewer(); });
    EXPECT_FALSE(item.isInOlder());
    item.showInOlder();
    item.showInNewer();
    EXPECT_THAT(workspace.requests, ElementsAre(fmt::format("reveal {}/Data/added", root("new"))));

    item.look("/other", QString(), QString::fromStdString(root("new")));
    EXPECT_FALSE(item.isInNewer()) << "it isn't known yet";
}

} // namespace
} // namespace tallyglass
