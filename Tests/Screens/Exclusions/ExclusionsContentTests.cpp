#include "Tallyglass/Models/ExclusionsModel.h"
#include "Tallyglass/Screens/Exclusions/ExclusionListModel.h"
#include "Tallyglass/Screens/Exclusions/ExclusionsContent.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace tallyglass {
namespace {

using testing::SizeIs;

constexpr auto excluded = ExclusionState::excluded;

TEST(ExclusionRow, showsTheStateAndWhetherItCanBeChanged) {
    const auto included = exclusionRowContent({"/a", ExclusionState::included, {}}, {});
    EXPECT_EQ(included.path(), "/a");
    EXPECT_EQ(included.symbol, "checkmark.circle");
    EXPECT_EQ(included.detail, "Included in backups.");
    EXPECT_TRUE(included.canToggle);
    EXPECT_FALSE(included.isExcluded);
    EXPECT_EQ(included.toggleText, "Exclude");

    const auto marked = exclusionRowContent({"/a", excluded, ExclusionReason::ownMarker}, {});
    EXPECT_EQ(marked.symbol, "nosign");
    EXPECT_TRUE(marked.canToggle);
    EXPECT_TRUE(marked.isExcluded);
    EXPECT_EQ(marked.reason, "");
    EXPECT_EQ(marked.toggleText, "Include");

    const auto inherited = exclusionRowContent({"/a", excluded, ExclusionReason::inherited}, {});
    EXPECT_FALSE(inherited.canToggle);
    EXPECT_EQ(inherited.reason, "Inherited");
    EXPECT_EQ(exclusionRowContent({"/a", excluded, ExclusionReason::systemSkipPath}, {}).reason,
              "System rule");

    const auto gone = exclusionRowContent({"/a", ExclusionState::unknown, {}}, {});
    EXPECT_EQ(gone.symbol, "questionmark.circle");
    EXPECT_EQ(gone.reason, "");
    EXPECT_FALSE(gone.exists);
}

TEST(ExclusionRow, showsAChangeThatIsUnderWayAsIfItWereMade) {
    const auto excluding = exclusionRowContent({"/a", ExclusionState::included, {}}, true);
    EXPECT_TRUE(excluding.isChanging);
    EXPECT_TRUE(excluding.isExcluded);
    EXPECT_EQ(excluding.detail, "Excluding…");
    EXPECT_EQ(exclusionRowContent({"/a", excluded, ExclusionReason::ownMarker}, false).detail, "Including…");
}

TEST(ExclusionFailure, namesTheItem) {
    const test::ScriptedMachine machine;
    ExclusionsModel model(machine.environment());
    EXPECT_EQ(exclusionFailure(model), "");
    const auto failWith = [&](const char* text) {
        machine.fail("addexclusion", text);
        model.setExcluded(true, "/Users/alex/notes.txt");
        test::waitUntil([&] { return !model.isBusy(); });
        return exclusionFailure(model);
    };
    EXPECT_EQ(failWith("Not permitted\n"), "notes.txt: Not permitted");
    EXPECT_EQ(failWith("/Users/alex/notes.txt: Error (-50)\n"), "/Users/alex/notes.txt: Error (-50)");
}

TEST(ExclusionList, tellsOfTheRowsThatDiffer) {
    ExclusionListModel list;
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto row = [](const char* path, std::optional<bool> pending = {}) {
        return exclusionRowContent({path, ExclusionState::included, {}}, pending);
    };
    list.setRows({row("/a"), row("/b")});
    QSignalSpy changed(&list, &QAbstractItemModel::dataChanged);
    QSignalSpy inserted(&list, &QAbstractItemModel::rowsInserted);

    list.setRows({row("/a"), row("/b", true), row("/c")});
    EXPECT_THAT(changed, SizeIs(1));
    EXPECT_THAT(inserted, SizeIs(1));
    EXPECT_TRUE(list.itemAt("/b").isChanging);
    EXPECT_EQ(list.itemAt("/unheard-of").path(), "");
    EXPECT_EQ(list.data(list.index(2), Qt::UserRole).value<ExclusionRowContent>().path(), "/c");
}

} // namespace
} // namespace tallyglass
