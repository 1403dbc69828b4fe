// Where the cells of a strip are: one for each item, the first left, or one for several neighbours where
// there is no room for that many. A value; any thread.

#pragma once

#include <cstddef>
#include <optional>

namespace tallyglass {

struct CellLayout {
    std::size_t itemCount = 0;
    std::size_t itemsPerCell = 1; ///< the last cell may have fewer
    std::size_t cellCount = 0;
    double pitch = 0; ///< pixels from one cell to the next

    /// Cells are between 5 and 40 pixels wide, with the gap beside them.
    [[nodiscard]] static CellLayout fitting(std::size_t itemCount, double width);

    /// The item at this position, of several the last; nothing beyond the last cell.
    [[nodiscard]] std::optional<std::size_t> itemAt(double x) const;

    [[nodiscard]] std::size_t cellOf(std::size_t item) const { return item / itemsPerCell; }
    /// The items of a cell are those from its first one to the next cell's.
    [[nodiscard]] std::size_t firstItemOf(std::size_t cell) const;

    friend bool operator==(const CellLayout&, const CellLayout&) = default;
};

} // namespace tallyglass
