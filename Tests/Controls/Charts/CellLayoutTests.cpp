#include "Tallyglass/Controls/Charts/CellLayout.h"

#include <gtest/gtest.h>

namespace tallyglass {

TEST(CellLayout, hasOneCellForEachItemWhereThereIsRoom) {
    const auto layout = CellLayout::fitting(4, 400);
    EXPECT_EQ(layout.cellCount, 4U);
    EXPECT_EQ(layout.pitch, 40);
    EXPECT_EQ(layout.itemAt(0), 0U);
    EXPECT_EQ(layout.itemAt(159), 3U);
    EXPECT_EQ(layout.itemAt(161), std::nullopt);
    EXPECT_EQ(layout.itemAt(-1), std::nullopt);
}

TEST(CellLayout, mergesNeighboursWhereThereIsLittleRoom) {
    const auto layout = CellLayout::fitting(3001, 700);
    EXPECT_LE(layout.cellCount, 140U);
    EXPECT_GE(layout.pitch, 5);
    EXPECT_EQ(layout.itemAt(699), 3000U) << "the last of the last cell";
    EXPECT_EQ(layout.itemAt(1), layout.firstItemOf(1) - 1) << "the last of the first cell";
    EXPECT_EQ(layout.cellOf(3000), layout.cellCount - 1);
    EXPECT_EQ(layout.firstItemOf(layout.cellCount), 3001U) << "where the last cell ends";
}

TEST(CellLayout, hasNoCellsWithoutItemsOrRoom) {
    EXPECT_EQ(CellLayout::fitting(0, 700).cellCount, 0U);
    EXPECT_EQ(CellLayout::fitting(3, 0).cellCount, 0U);
    EXPECT_EQ(CellLayout::fitting(3, 0).itemAt(0), std::nullopt);
}

} // namespace tallyglass
