#include "Tallyglass/Screens/FileHistory/PresenceCells.h"

#include <algorithm>
#include <cmath>

namespace tallyglass {

namespace {

constexpr double smallestPitch = 5;
constexpr double largestPitch = 40;

PresenceCell merged(std::span<const Presence> backups) {
    PresenceCell cell;
    for (const Presence& version : backups) {
        if (version)
            cell.version = version;
        else
            cell.hasMissing = true;
    }
    return cell;
}

} // namespace

PresenceCells PresenceCells::fitting(std::span<const Presence> backups, double width) {
    PresenceCells result;
    if (backups.empty() || width < smallestPitch)
        return result;
    const auto most = static_cast<std::size_t>(width / smallestPitch);
    result.backupsPerCell = (backups.size() + most - 1) / most;
    for (std::size_t first = 0; first < backups.size(); first += result.backupsPerCell)
        result.cells.push_back(
            merged(backups.subspan(first, std::min(result.backupsPerCell, backups.size() - first))));
    result.pitch = std::min(largestPitch, width / static_cast<double>(result.cells.size()));
    return result;
}

std::optional<std::size_t> PresenceCells::backupAt(double x, std::size_t backupCount) const {
    if (x < 0 || pitch <= 0)
        return std::nullopt;
    const auto cell = static_cast<std::size_t>(x / pitch);
    if (cell >= cells.size())
        return std::nullopt;
    return std::min((cell + 1) * backupsPerCell, backupCount) - 1;
}

} // namespace tallyglass
