#include "Tallyglass/Controls/Lists/ListChanges.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <random>
#include <string>

namespace tallyglass {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Rows = std::vector<std::string>;

constexpr auto removal = ListChange::Kind::remove;
constexpr auto insertion = ListChange::Kind::insert;

/// As a list model makes the changes, one after the other.
template <typename Key>
std::vector<Key> changed(std::vector<Key> rows, const std::vector<Key>& after) {
    for (const ListChange& change : listChanges(rows, after)) {
        const auto at = rows.begin() + change.first;
        if (change.kind == removal)
            rows.erase(at, at + change.count);
        else
            rows.insert(at, after.begin() + change.first, after.begin() + change.first + change.count);
    }
    return rows;
}

TEST(ListChanges, areNoneForEqualLists) {
    EXPECT_THAT(listChanges(Rows{}, Rows{}), IsEmpty());
    EXPECT_THAT(listChanges(Rows{"a", "a", "b"}, Rows{"a", "a", "b"}), IsEmpty());
}

TEST(ListChanges, joinNeighboursAndRemoveFromTheEnd) {
    EXPECT_THAT(listChanges(Rows{"a", "b", "c", "d", "e"}, Rows{"c", "d"}),
                ElementsAre(ListChange{removal, 4, 1}, ListChange{removal, 0, 2}));
    EXPECT_THAT(listChanges(Rows{"c"}, Rows{"a", "b", "c", "d"}),
                ElementsAre(ListChange{insertion, 0, 2}, ListChange{insertion, 3, 1}));
}

TEST(ListChanges, replaceWhatMovedAndLeaveTheOthers) {
    EXPECT_THAT(listChanges(Rows{"a", "b", "c", "d"}, Rows{"d", "a", "b", "c"}),
                ElementsAre(ListChange{removal, 3, 1}, ListChange{insertion, 0, 1}));
}

TEST(ListChanges, keepAsManyOfEqualRowsAsThereAre) {
    EXPECT_THAT(listChanges(Rows{"a", "a", "b"}, Rows{"a", "b", "b"}),
                ElementsAre(ListChange{removal, 1, 1}, ListChange{insertion, 2, 1}));
}

TEST(ListChanges, turnAnyListIntoAnyOther) {
    std::mt19937 random(7);
    const auto list = [&] {
        std::vector<int> rows(random() % 12);
        std::ranges::generate(rows, [&] { return static_cast<int>(random() % 8); });
        return rows;
    };
    for (int round = 0; round < 2000; ++round) {
        const auto before = list();
        const auto after = list();
        ASSERT_EQ(changed(before, after), after) << testing::PrintToString(before);
    }
}

} // namespace
} // namespace tallyglass
