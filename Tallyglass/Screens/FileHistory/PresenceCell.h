// What one or more neighbouring backups hold of the traced item. Values; any thread.

#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace tallyglass {

/// What one backup holds: the index of a version's span, or nothing where the item is missing.
using Presence = std::optional<std::size_t>;

struct PresenceCell {
    Presence version = {};   ///< of the newest of its backups that has one
    bool hasMissing = false; ///< in one of its backups the item is missing

    [[nodiscard]] static PresenceCell of(std::span<const Presence> backups) {
        PresenceCell cell;
        for (const Presence& version : backups) {
            if (version)
                cell.version = version;
            else
                cell.hasMissing = true;
        }
        return cell;
    }
    friend bool operator==(const PresenceCell&, const PresenceCell&) = default;
};

} // namespace tallyglass
