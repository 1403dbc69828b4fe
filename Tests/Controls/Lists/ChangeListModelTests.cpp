#include "Tallyglass/Controls/Lists/ChangeListModel.h"
#include "Tallyglass/Controls/Lists/ChangeRowContent.h"

#include <gmock/gmock.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace tallyglass {
namespace {

using testing::ElementsAre;

ChangeRecord change(const std::string& path, std::int64_t size = 1, ChangeKind kind = ChangeKind::added) {
    return {std::nullopt, "id", path, kind, false, size, size, std::nullopt};
}

std::vector<ChangeRecord> changes(const std::vector<std::string>& paths) {
    std::vector<ChangeRecord> rows;
    for (const auto& path : paths)
        rows.push_back(change(path));
    return rows;
}

class ChangeList : public testing::Test {
protected:
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.push_back(content(row).fileName.toStdString());
        return names;
    }
    [[nodiscard]] ChangeRowContent content(int row) const {
        return model.data(model.index(row), Qt::UserRole).value<ChangeRowContent>();
    }

    ChangeListModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy inserted{&model, &QAbstractItemModel::rowsInserted};
    QSignalSpy removed{&model, &QAbstractItemModel::rowsRemoved};
    QSignalSpy differed{&model, &QAbstractItemModel::dataChanged};
    QSignalSpy reset{&model, &QAbstractItemModel::modelReset};
};

TEST_F(ChangeList, tellsOnlyOfTheRowsThatComeAndGo) {
    model.setRows(changes({"/a", "/b", "/c", "/d"}));
    EXPECT_EQ(inserted.size(), 1);

    model.setRows(changes({"/b", "/d", "/e"}));

    EXPECT_THAT(names(), ElementsAre("b", "d", "e"));
    EXPECT_EQ(removed.size(), 2);
    EXPECT_EQ(inserted.size(), 2);
    EXPECT_TRUE(differed.isEmpty());
    EXPECT_TRUE(reset.isEmpty());
}

TEST_F(ChangeList, tellsOfARowThatDiffersOnTheScreen) {
    auto rows = changes({"/a", "/b"});
    model.setRows(rows);
    rows[1].size = 2000;
    model.setRows(rows);
    ASSERT_EQ(differed.size(), 1);
    EXPECT_EQ(differed[0][0].toModelIndex().row(), 1);
    EXPECT_EQ(content(1).size, "2 KB");
    EXPECT_EQ(inserted.size(), 1);
}

TEST_F(ChangeList, keepsTheCurrentRowWithItsPath) {
    model.setRows(changes({"/a", "/b", "/c"}));
    model.setCurrentRow(2);
    QSignalSpy moved(&model, &ChangeListModel::currentRowChanged);

    model.setRows(changes({"/c"}));
    EXPECT_EQ(model.currentRow(), 0);
    model.setRows(changes({"/a"}));
    EXPECT_EQ(model.currentRow(), -1);
    model.setRows(changes({"/a", "/b", "/c"}));
    EXPECT_EQ(model.currentRow(), 2);
    EXPECT_EQ(moved.size(), 3);

    model.setCurrentRow(-1);
    model.setRows(changes({"/c"}));
    EXPECT_EQ(model.currentRow(), -1);
}

TEST_F(ChangeList, knowsTheNewIndexOfEachRow) {
    model.setRows(changes({"/a", "/b", "/c", "/d"}));
    model.setRows(changes({"/0", "/b", "/b2", "/d"}));
    EXPECT_EQ(model.rowAfterReplacement(0), 1) << "the next one that stayed";
    EXPECT_EQ(model.rowAfterReplacement(1), 1);
    EXPECT_EQ(model.rowAfterReplacement(2), 3);
    EXPECT_EQ(model.rowAfterReplacement(3), 3);
    model.setRows(changes({"/0"}));
    EXPECT_EQ(model.rowAfterReplacement(3), 0) << "none stayed after it";
    model.setRows({});
    EXPECT_EQ(model.rowAfterReplacement(0), -1);
}

TEST(ChangeRow, isSpokenWithItsKindSizeAndFolder) {
    const auto content = changeRowContent(change("/Users/alex/letter.txt", 12'000, ChangeKind::removed));
    EXPECT_EQ(content.symbol, "minus.circle.fill");
    EXPECT_EQ(content.label, "Removed, letter.txt");
    EXPECT_EQ(content.value, "12 KB, in /Users/alex");

    auto bare = change("letter.txt");
    bare.size.reset();
    EXPECT_EQ(changeRowContent(bare).value, "—");
    EXPECT_EQ(changeRowContent(bare).label, "Added, letter.txt");
}

} // namespace
} // namespace tallyglass
