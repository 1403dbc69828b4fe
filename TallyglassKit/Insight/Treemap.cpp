// Areas are taken in descending order into a row along the shorter side of the free rectangle, as long as the
// worst aspect ratio in the row doesn't grow; then the row is placed and what remains is the free rectangle.
// As the first area of a row is its largest and the last its smallest, the ratio needs nothing but the sum
// beside them, and a row of any length takes linear time.

#include "TallyglassKit/Insight/Treemap.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace tallyglass {

namespace {

using Cell = Treemap::Cell;

struct Weight {
    std::size_t index = 0;
    double value = 0; ///< first the weight, then the area
};

/// Descending, those that can be drawn only.
std::vector<Weight> drawable(std::span<const double> weights) {
    std::vector<Weight> result;
    result.reserve(weights.size());
    for (std::size_t index = 0; index < weights.size(); ++index)
        if (std::isfinite(weights[index]) && weights[index] > 0)
            result.push_back({index, weights[index]});
    if (!std::ranges::is_sorted(result, std::greater(), &Weight::value))
        std::ranges::stable_sort(result, std::greater(), &Weight::value);
    return result;
}

/// The row of a layout that takes areas, largest first.
struct Row {
    double sum = 0;
    double largest = 0;
    double smallest = 0;

    void add(double area) {
        sum += area;
        largest = std::max(largest, area);
        smallest = area;
    }

    [[nodiscard]] double worstRatio(double side) const {
        if (!(sum > 0) || !(smallest > 0))
            return std::numeric_limits<double>::infinity();
        return std::max(side * side * largest / (sum * sum), sum * sum / (side * side * smallest));
    }
};

/// Places the row at the left or upper edge of `free` and takes it away from there.
void place(std::span<const Weight> row, double sum, Rect& free, std::vector<Cell>& cells) {
    if (!(sum > 0))
        return;
    if (free.height <= free.width) {
        const double width = sum / free.height;
        double y = free.y;
        for (const Weight& item : row) {
            const double height = item.value / width;
            cells.push_back({item.index, {free.x, y, width, height}});
            y += height;
        }
        free.x += width;
        free.width = std::max(free.width - width, 0.0);
    } else {
        const double height = sum / free.width;
        double x = free.x;
        for (const Weight& item : row) {
            const double width = item.value / height;
            cells.push_back({item.index, {x, free.y, width, height}});
            x += width;
        }
        free.y += height;
        free.height = std::max(free.height - height, 0.0);
    }
}

} // namespace

std::vector<Cell> Treemap::layout(std::span<const double> weights, const Rect& rect) {
    std::vector<Cell> cells;
    if (!(rect.width > 0) || !(rect.height > 0))
        return cells;
    auto items = drawable(weights);
    double sum = 0;
    for (const Weight& item : items)
        sum += item.value;
    for (Weight& item : items)
        item.value = item.value * rect.width * rect.height / sum;

    cells.reserve(items.size());
    Rect free = rect;
    for (std::span<const Weight> rest = items; !rest.empty();) {
        const double side = std::min(free.width, free.height);
        if (!(side > 0))
            break;
        Row row;
        row.add(rest.front().value);
        double worst = row.worstRatio(side);
        std::size_t count = 1;
        for (; count < rest.size(); ++count) {
            Row longer = row;
            longer.add(rest[count].value);
            const double worstOfLonger = longer.worstRatio(side);
            if (!(worstOfLonger <= worst))
                break;
            row = longer;
            worst = worstOfLonger;
        }
        place(rest.first(count), row.sum, free, cells);
        rest = rest.subspan(count);
    }
    return cells;
}

std::vector<TreemapTile> Treemap::layout(std::span<const TreemapItem> items, const Rect& rect) {
    std::vector<double> weights(items.size());
    std::ranges::transform(items, weights.begin(), &TreemapItem::value);
    std::vector<TreemapTile> tiles;
    const auto cells = layout(weights, rect);
    tiles.reserve(cells.size());
    for (const auto& [index, place] : cells) {
        const TreemapItem& item = items[index];
        tiles.emplace_back(item.id, item.label, item.value, place);
    }
    return tiles;
}

} // namespace tallyglass
