#include "Tallyglass/Screens/FileHistory/PresenceCells.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST(PresenceCells, areOneForEachBackupWhereThereIsRoom) {
    const std::vector<Presence> backups{std::nullopt, 1, 1, 0};
    const auto cells = PresenceCells::fitting(backups, 400);
    EXPECT_EQ(cells.pitch, 40);
    EXPECT_THAT(cells.cells, ElementsAre(PresenceCell{std::nullopt, true}, PresenceCell{1}, PresenceCell{1},
                                         PresenceCell{0}));
    EXPECT_EQ(cells.backupAt(0, 4), 0U);
    EXPECT_EQ(cells.backupAt(159, 4), 3U);
    EXPECT_EQ(cells.backupAt(161, 4), std::nullopt);
    EXPECT_EQ(cells.backupAt(-1, 4), std::nullopt);
}

TEST(PresenceCells, mergeWhereThereIsLittleRoomAndTellGaps) {
    std::vector<Presence> backups(3000, Presence(0));
    backups[10] = std::nullopt;
    const auto cells = PresenceCells::fitting(backups, 700);
    EXPECT_THAT(cells.cells, SizeIs(testing::Le(140U)));
    EXPECT_GE(cells.pitch, 5);
    EXPECT_TRUE(cells.cells[cells.cellOf(10)].hasMissing);
    EXPECT_EQ(cells.cells[cells.cellOf(10)].version, 0U);
    EXPECT_FALSE(cells.cells.back().hasMissing);
    EXPECT_EQ(cells.backupAt(699, 3000), 2999U) << "the newest of a cell";
}

TEST(PresenceCells, areNoneWithoutBackupsOrRoom) {
    EXPECT_THAT(PresenceCells::fitting({}, 700).cells, SizeIs(0));
    EXPECT_THAT(PresenceCells::fitting(std::vector<Presence>(3), 0).cells, SizeIs(0));
}

} // namespace
} // namespace tallyglass
