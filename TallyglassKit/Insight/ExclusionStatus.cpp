#include "TallyglassKit/Insight/ExclusionStatus.h"

namespace tallyglass {

std::string_view rawValue(ExclusionState state) {
    switch (state) {
    case ExclusionState::included:
        return "included";
    case ExclusionState::excluded:
        return "excluded";
    case ExclusionState::unknown:
        break;
    }
    return "unknown";
}

template <>
std::optional<ExclusionState> fromRawValue<ExclusionState>(std::string_view raw) {
    for (const auto state : {ExclusionState::included, ExclusionState::excluded, ExclusionState::unknown})
        if (raw == rawValue(state))
            return state;
    return std::nullopt;
}

bool ExclusionStatus::canToggle() const {
    return state != ExclusionState::unknown &&
           reason.value_or(ExclusionReason::ownMarker) == ExclusionReason::ownMarker;
}

std::string_view ExclusionStatus::explanation() const {
    if (state == ExclusionState::included)
        return "Included in backups.";
    if (state == ExclusionState::unknown)
        return "This item no longer exists.";
    if (!reason)
        return "Excluded";
    switch (*reason) {
    case ExclusionReason::ownMarker:
        return "Excluded — this item is marked directly.";
    case ExclusionReason::inherited:
        return "Excluded because a parent folder is excluded, or macOS excludes this location by default. "
               "Remove the exclusion from the parent instead.";
    case ExclusionReason::systemSkipPath:
        break;
    }
    return "Excluded by a system-wide rule. Changing it requires administrator privileges, which this app "
           "does "
           "not request.";
}

} // namespace tallyglass
