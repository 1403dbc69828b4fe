#include "TallyglassKit/Insight/Treemap.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>

namespace tallyglass::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

std::vector<TreemapTile> layout(const std::vector<TreemapItem>& items, const Rect& rect) {
    return Treemap::layout(items, rect);
}

/// The rules of the algorithm word for word, with every row measured afresh.
struct PlainLayout {
    static double worst(const std::vector<double>& row, double side) {
        const double sum = std::accumulate(row.begin(), row.end(), 0.0);
        if (row.empty() || !(sum > 0) || !(std::ranges::min(row) > 0))
            return infinity;
        return std::max(side * side * std::ranges::max(row) / (sum * sum),
                        sum * sum / (side * side * std::ranges::min(row)));
    }

    static std::vector<TreemapTile> of(std::vector<TreemapItem> items, Rect rect) {
        std::erase_if(items, [](const auto& item) { return !(item.value > 0) || std::isinf(item.value); });
        std::ranges::stable_sort(items, std::greater(), &TreemapItem::value);
        double total = 0;
        for (const auto& item : items)
            total += item.value;
        std::vector<double> areas;
        for (const auto& item : items)
            areas.push_back(item.value * rect.width * rect.height / total);

        std::vector<TreemapTile> tiles;
        for (std::size_t start = 0; start < items.size();) {
            const double side = std::min(rect.width, rect.height);
            if (!(side > 0))
                break;
            std::vector<double> row{areas[start]};
            while (start + row.size() < items.size()) {
                auto longer = row;
                longer.push_back(areas[start + row.size()]);
                if (!(worst(longer, side) <= worst(row, side)))
                    break;
                row = longer;
            }
            const double sum = std::accumulate(row.begin(), row.end(), 0.0);
            const bool isColumn = rect.height <= rect.width;
            const double thickness = sum / side;
            double offset = 0;
            for (std::size_t index = 0; index < row.size(); ++index) {
                const double length = row[index] / thickness;
                const auto& item = items[start + index];
                tiles.push_back({item.id, item.label, item.value,
                                 isColumn ? Rect{rect.x, rect.y + offset, thickness, length}
                                          : Rect{rect.x + offset, rect.y, length, thickness}});
                offset += length;
            }
            (isColumn ? rect.x : rect.y) += thickness;
            double& rest = isColumn ? rect.width : rect.height;
            rest = std::max(rest - thickness, 0.0);
            start += row.size();
        }
        return tiles;
    }
};

void expectNear(const Rect& found, const Rect& expected) {
    EXPECT_NEAR(found.x, expected.x, 1e-6);
    EXPECT_NEAR(found.y, expected.y, 1e-6);
    EXPECT_NEAR(found.width, expected.width, 1e-6);
    EXPECT_NEAR(found.height, expected.height, 1e-6);
}

/// Fails unless the tiles lie in `rect` and cover each of many points exactly once.
void expectTiling(const std::vector<TreemapTile>& tiles, const Rect& rect, std::mt19937& random) {
    constexpr double slack = 1e-6;
    double area = 0;
    for (const auto& [id, label, value, place] : tiles) {
        area += place.width * place.height;
        EXPECT_GE(place.x, rect.x - slack);
        EXPECT_GE(place.y, rect.y - slack);
        EXPECT_LE(place.x + place.width, rect.x + rect.width + slack);
        EXPECT_LE(place.y + place.height, rect.y + rect.height + slack);
    }
    EXPECT_NEAR(area, rect.width * rect.height, area * 1e-9);
    for (int count = 0; count < 100; ++count) {
        const double x = std::uniform_real_distribution(rect.x, rect.x + rect.width)(random);
        const double y = std::uniform_real_distribution(rect.y, rect.y + rect.height)(random);
        const auto covers = [&](double margin) {
            return std::ranges::count_if(tiles, [&](const TreemapTile& tile) {
                const Rect& place = tile.rect;
                return x > place.x - margin && x < place.x + place.width + margin && y > place.y - margin &&
                       y < place.y + place.height + margin;
            });
        };
        EXPECT_GE(covers(slack), 1) << x << " " << y;  // no gap
        EXPECT_LE(covers(-slack), 1) << x << " " << y; // no overlap
    }
}

TEST(Treemap, drawsNothingWithoutAreaOrWeight) {
    const std::vector<TreemapItem> items{{"a", "A", 1}};
    EXPECT_THAT(layout({}, {0, 0, 10, 10}), IsEmpty());
    EXPECT_THAT(layout({{"a", "", 0}, {"b", "", -1}, {"c", "", nan}, {"d", "", infinity}}, {0, 0, 10, 10}),
                IsEmpty());
    for (const Rect& rect : {Rect{0, 0, 0, 10}, Rect{0, 0, 10, 0}, Rect{0, 0, -1, 10}, Rect{0, 0, nan, 10}})
        EXPECT_THAT(layout(items, rect), IsEmpty());
}

TEST(Treemap, placesAFewItemsAsTheAlgorithmSays) {
    EXPECT_THAT(layout({{"a", "A", 7}}, {1, 2, 30, 20}),
                ElementsAre(TreemapTile{"a", "A", 7, {1, 2, 30, 20}}));
    // One tile alone, or both in a column, are twice as long as wide: a tie extends the row.
    EXPECT_THAT(
        layout({{"a", "A", 3}, {"no", "", nan}, {"b", "B", 3}}, {0, 0, 10, 10}),
        ElementsAre(TreemapTile{"a", "A", 3, {0, 0, 10, 5}}, TreemapTile{"b", "B", 3, {0, 5, 10, 5}}));
    // The example of the paper that describes the algorithm.
    const std::vector<double> weights{6, 6, 4, 3, 2, 2, 1};
    const auto cells = Treemap::layout(weights, {0, 0, 6, 4});
    ASSERT_EQ(cells.size(), 7U);
    expectNear(cells[0].rect, {0, 0, 3, 2});
    expectNear(cells[1].rect, {0, 2, 3, 2});
    expectNear(cells[2].rect, {3, 0, 12.0 / 7, 7.0 / 3});
    expectNear(cells[3].rect, {3 + 12.0 / 7, 0, 9.0 / 7, 7.0 / 3});
}

TEST(Treemap, agreesWithItsRulesForRandomItems) {
    std::mt19937 random(42);
    for (int round = 0; round < 200; ++round) {
        std::vector<TreemapItem> items;
        const auto count = std::uniform_int_distribution(1, 60)(random);
        const bool hasTies = round % 3 == 0;
        for (int index = 0; index < count; ++index) {
            const double value = std::exp(std::uniform_real_distribution(0.0, 20.0)(random));
            items.push_back(
                {std::to_string(index), "label", hasTies ? std::ceil(std::log(value)) - 1 : value});
        }
        const Rect rect{std::uniform_real_distribution(-50.0, 50.0)(random), 3,
                        std::uniform_real_distribution(1.0, 2000.0)(random),
                        std::uniform_real_distribution(1.0, 2000.0)(random)};

        const auto tiles = layout(items, rect);

        const auto expected = PlainLayout::of(items, rect);
        ASSERT_EQ(tiles.size(), expected.size());
        for (std::size_t index = 0; index < tiles.size(); ++index) {
            EXPECT_EQ(tiles[index].id, expected[index].id);
            EXPECT_EQ(tiles[index].value, expected[index].value);
            expectNear(tiles[index].rect, expected[index].rect);
        }
        expectTiling(tiles, rect, random);
        std::ranges::shuffle(items, random);
        if (!hasTies) {
            EXPECT_EQ(layout(items, rect), tiles);
        }
    }
}

/// In one row of equal items the algorithm as it is usually written takes quadratic time: hours here.
TEST(Treemap, laysOutAMillionItemsEvenInOneRow) {
    constexpr std::size_t count = 1'000'000;
    const std::vector<double> equal(count, 1);
    std::mt19937 random(1);
    std::vector<double> various(count);
    for (double& weight : various)
        weight = std::exp(std::uniform_real_distribution(0.0, 20.0)(random));

    EXPECT_EQ(Treemap::layout(equal, {0, 0, 1e-3, 1e6}).size(), count);
    double area = 0;
    for (const auto& [index, rect] : Treemap::layout(various, {0, 0, 1600, 900}))
        area += rect.width * rect.height;
    EXPECT_NEAR(area, 1600 * 900, 1);
}

} // namespace
} // namespace tallyglass::test
