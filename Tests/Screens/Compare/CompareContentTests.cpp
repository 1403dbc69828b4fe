#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Screens/Compare/BackupChoiceModel.h"
#include "Tallyglass/Screens/Compare/CompareContent.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Comparison comparison() {
    Comparison result("/old", "/new", {}, {}, 3, "key", Date());
    result.isPartial = false;
    result.addedCount = 12'345;
    result.bytesAdded = 5'000'000;
    result.modifiedCount = 7;
    result.removedCount = 1;
    result.bytesRemoved = 7'000'000;
    return result;
}

TEST(CompareSummary, hasFourNumbers) {
    const auto content = compareSummaryContent(comparison());
    EXPECT_THAT(content.tiles,
                ElementsAre(StatTileContent{"Added", "12,345", "5 MB", Theme::Role::healthy},
                            StatTileContent{"Modified", "7", "changed", Theme::Role::accent},
                            StatTileContent{"Removed", "1", "7 MB", Theme::Role::critical},
                            StatTileContent{"Net", "−2 MB", "size change", Theme::Role::text}));
    EXPECT_EQ(content.partialNote, "");
    EXPECT_EQ(content.depthNote, "Limited to depth 3 — changes nested deeper are not listed.");
}

TEST(CompareSummary, notesWhatIsIncomplete) {
    auto partial = comparison();
    partial.isPartial = true;
    partial.depth = 0;
    const auto content = compareSummaryContent(partial);
    EXPECT_EQ(content.partialNote, "This comparison did not finish, so the results below are incomplete.");
    EXPECT_EQ(content.depthNote, "");
}

class CompareResults : public testing::Test {
protected:
    void show(int rows) {
        const auto roots = machine.setBackups(2);
        std::vector<std::string> names;
        for (int row = 0; row < rows; ++row)
            names.push_back(std::to_string(row));
        machine.setAdded(roots[1], names);
        model.prepare();
        test::waitUntil([this] { return model.canRun(); });
        model.run(false);
        test::waitUntil([this] { return !model.progressText(); });
    }

    const test::ScriptedMachine machine;
    DiffModel model{machine.environment()};
};

TEST_F(CompareResults, saysWhenItShowsTheFirstThousandAlone) {
    show(1000);
    EXPECT_EQ(compareResultsContent(model, 0).limitNote, "");
    EXPECT_EQ(compareResultsContent(model, 0).shownCount, "1,000 shown");
    show(1001);
    EXPECT_EQ(compareResultsContent(model, 0).limitNote,
              "Showing the first 1,000 of 1,001. Narrow the filter to see more.");
    EXPECT_EQ(compareResultsContent(model, 0).shownCount, "1,001 shown");
}

TEST_F(CompareResults, countsMetadata) {
    show(2000);
    EXPECT_EQ(compareResultsContent(model, 0).metadataNote, "");
    EXPECT_EQ(compareResultsContent(model, 1200).metadataNote,
              "1,200 of 2,000 changes are metadata only (timestamps, extended attributes).");
}

TEST_F(CompareResults, saysThatNothingPassesTheFilter) {
    show(3);
    EXPECT_EQ(compareResultsContent(model, 0).emptyNote, "");
    model.setKindFilter({});
    EXPECT_EQ(compareResultsContent(model, 0).emptyNote, "No changes match the current filters.");
    EXPECT_EQ(compareResultsContent(model, 0).shownCount, "0 shown");
}

TEST_F(CompareResults, offersEachKind) {
    model.setKindFilter({ChangeKind::removed});
    EXPECT_THAT(compareResultsContent(model, 0).kinds,
                ElementsAre(KindToggle{"Added", "plus.circle.fill", Theme::Role::healthy, false},
                            KindToggle{"Removed", "minus.circle.fill", Theme::Role::critical, true},
                            KindToggle{"Modified", "pencil.circle.fill", Theme::Role::accent, false}));
}

TEST(BackupChoices, areNamedByTheirDateOrElseTheirFolder) {
    EXPECT_EQ(backupTitle({"/backups/x.backup", dateSince1970(1'795'376'280)}),
              "Nov 22, 2026 at 7:38\u202FPM");
    EXPECT_EQ(backupTitle({"/backups/x.backup/", {}}), "x.backup");
}

TEST(BackupChoices, tellOfABackupThatComesAndOneThatGoes) {
    BackupChoiceModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setChoices({{"/a", {}}, {"/b", {}}, {"/c", {}}});
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);

    model.setChoices({{"/b", {}}, {"/c", {}}, {"/d", {}}});

    EXPECT_EQ(model.indexOf("/c"), 1);
    EXPECT_EQ(model.indexOf("/a"), -1);
    EXPECT_EQ(model.indexOf({}), -1);
    EXPECT_EQ(model.pathAt(2), "/d");
    EXPECT_FALSE(model.pathAt(3));
    EXPECT_FALSE(model.pathAt(-1));
    EXPECT_EQ(model.data(model.index(2), Qt::DisplayRole).toString(), "d");
    EXPECT_THAT(reset, IsEmpty());
}

} // namespace
} // namespace tallyglass
