// Lays out weighted items as tiles within a rectangle, with areas in proportion to their values and shapes
// close to squares: the squarified treemap of Bruls, Huizing and van Wijk. Static operations only; any
// thread.
//
// Tiles are in descending order of their values, equal ones in the order of the items. Items whose value is
// 0, negative, infinite or not a number have no tile. There are no gaps between tiles.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace tallyglass {

/// The origin is the top left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    friend bool operator==(const Rect&, const Rect&) = default;
};

struct TreemapItem {
    std::string id;    ///< the caller's
    std::string label; ///< the caller's
    double value = 0;

    friend bool operator==(const TreemapItem&, const TreemapItem&) = default;
};

struct TreemapTile {
    std::string id;
    std::string label;
    double value = 0;
    Rect rect;

    friend bool operator==(const TreemapTile&, const TreemapTile&) = default;
};

struct Treemap {
    [[nodiscard]] static std::vector<TreemapTile> layout(std::span<const TreemapItem> items,
                                                         const Rect& rect);

    /// The place of one of several weights.
    struct Cell {
        std::size_t index = 0; ///< of the weight
        Rect rect;

        friend bool operator==(const Cell&, const Cell&) = default;
    };
    /// The same for mere weights.
    [[nodiscard]] static std::vector<Cell> layout(std::span<const double> weights, const Rect& rect);
};

} // namespace tallyglass
