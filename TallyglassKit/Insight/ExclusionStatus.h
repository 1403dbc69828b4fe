// Whether an item is left out of backups, and why. A value; any thread.

#pragma once

#include "TallyglassKit/Platform/RawValue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tallyglass {

enum class ExclusionState : std::uint8_t { included, excluded, unknown };

[[nodiscard]] std::string_view rawValue(ExclusionState state);
template <>
[[nodiscard]] std::optional<ExclusionState> fromRawValue<ExclusionState>(std::string_view raw);

enum class ExclusionReason : std::uint8_t {
    ownMarker,      ///< the item itself has the exclusion attribute
    inherited,      ///< none of the others: a parent folder is excluded, or the system excludes the location
    systemSkipPath, ///< the item is, or is in, one of the settings' skip paths
};

/// Identified by its path.
struct ExclusionStatus {
    std::string path; ///< as it was asked for
    ExclusionState state = ExclusionState::unknown;
    std::optional<ExclusionReason> reason = {}; ///< only of an excluded item

    [[nodiscard]] bool isExcluded() const { return state == ExclusionState::excluded; }
    /// Whether the item's own exclusion can be switched: it is included, or excluded by its own marker.
    [[nodiscard]] bool canToggle() const;
    /// The sentence for the user.
    [[nodiscard]] std::string_view explanation() const;

    friend bool operator==(const ExclusionStatus&, const ExclusionStatus&) = default;
};

} // namespace tallyglass
