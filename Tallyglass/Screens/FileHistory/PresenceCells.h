// The cells of the presence strip: one per backup, oldest left, or one for several neighbours where there is
// no room for that many. Values; any thread.

#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tallyglass {

/// What one backup holds: the index of a version's span, or nothing where the item is missing.
using Presence = std::optional<std::size_t>;

struct PresenceCell {
    Presence version;        ///< of the newest of its backups that has one
    bool hasMissing = false; ///< in one of its backups the item is missing
    friend bool operator==(const PresenceCell&, const PresenceCell&) = default;
};

struct PresenceCells {
    std::size_t backupsPerCell = 1; ///< the last cell may have fewer
    double pitch = 0;               ///< pixels from one cell to the next
    std::vector<PresenceCell> cells;

    /// Cells are between 5 and 40 pixels wide, with the gap beside them.
    [[nodiscard]] static PresenceCells fitting(std::span<const Presence> backups, double width);

    /// The backup at this position, of several the newest; nothing beyond the last cell. Requires: the same
    /// count of backups.
    [[nodiscard]] std::optional<std::size_t> backupAt(double x, std::size_t backupCount) const;
    [[nodiscard]] std::size_t cellOf(std::size_t backup) const { return backup / backupsPerCell; }
};

} // namespace tallyglass
