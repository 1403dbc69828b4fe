#include "Tallyglass/Controls/Charts/CellLayout.h"

#include <algorithm>

namespace tallyglass {

namespace {

constexpr double smallestPitch = 5;
constexpr double largestPitch = 40;

std::size_t quotientRoundedUp(std::size_t dividend, std::size_t divisor) {
    return (dividend + divisor - 1) / divisor;
}

} // namespace

CellLayout CellLayout::fitting(std::size_t itemCount, double width) {
    CellLayout layout{.itemCount = itemCount};
    if (itemCount == 0 || width < smallestPitch)
        return layout;
    layout.itemsPerCell = quotientRoundedUp(itemCount, static_cast<std::size_t>(width / smallestPitch));
    layout.cellCount = quotientRoundedUp(itemCount, layout.itemsPerCell);
    layout.pitch = std::min(largestPitch, width / static_cast<double>(layout.cellCount));
    return layout;
}

std::optional<std::size_t> CellLayout::itemAt(double x) const {
    if (x < 0 || pitch <= 0)
        return std::nullopt;
    const auto cell = static_cast<std::size_t>(x / pitch);
    if (cell >= cellCount)
        return std::nullopt;
    return firstItemOf(cell + 1) - 1;
}

std::size_t CellLayout::firstItemOf(std::size_t cell) const {
    return std::min(cell * itemsPerCell, itemCount);
}

} // namespace tallyglass
