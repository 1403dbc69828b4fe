#include "Tallyglass/Screens/FileHistory/PresenceCell.h"

#include <gtest/gtest.h>

#include <array>

namespace tallyglass {

TEST(PresenceCell, showsTheNewestVersionAndTellsGaps) {
    const std::array<Presence, 4> backups{0, std::nullopt, 1, std::nullopt};
    EXPECT_EQ(PresenceCell::of(backups), (PresenceCell{.version = 1, .hasMissing = true}));
    EXPECT_EQ(PresenceCell::of(std::span(backups).first(1)), (PresenceCell{.version = 0}));
    EXPECT_EQ(PresenceCell::of(std::span(backups).last(1)), (PresenceCell{.hasMissing = true}));
}

} // namespace tallyglass
