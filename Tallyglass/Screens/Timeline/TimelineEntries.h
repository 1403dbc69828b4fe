// What the timeline charts: every backup of a destination in order of time, and between them the attempts
// that are suspected to have failed. An index means a position in that list, and nothing else.
//
// Values and free functions of them; any thread.

#pragma once

#include "TallyglassKit/Access/BackupManifest.h"
#include "TallyglassKit/Platform/Date.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tallyglass {

struct BackupHealth;
struct TMDestination;

/// What the bars measure, in the order of the picker.
enum class TimelineMetric { interval, changeSize, changeCount };

inline constexpr std::array allTimelineMetrics{TimelineMetric::interval, TimelineMetric::changeSize,
                                               TimelineMetric::changeCount};

struct TimelineEntry {
    std::uint64_t id = 0;                             ///< no other entry of this process has it
    Date date = {};                                   ///< of the snapshot or the attempt
    std::optional<double> intervalHours = {};         ///< since the snapshot before
    bool isGap = false;                               ///< ends an unusually long stretch
    std::optional<BackupManifestEntry> manifest = {}; ///< the manifest's row of this backup
    bool isFailure = false;                           ///< a suspected failed attempt, not a backup

    [[nodiscard]] bool isInitialBackup() const { return manifest && manifest->isInitialBackup; }
    /// The oldest backup that there is.
    [[nodiscard]] bool isFirstBackup() const { return !isFailure && !intervalHours; }
    /// Whether both show the same: all but the identity.
    [[nodiscard]] bool showsSameAs(const TimelineEntry& other) const;
};

/// The entries in ascending order of date, none without a snapshot. Takes time linear in its arguments as
/// long as they ascend, which all but the manifest must.
[[nodiscard]] std::vector<TimelineEntry> timelineEntries(const TMDestination& destination,
                                                         const BackupHealth& health,
                                                         std::span<const BackupManifestEntry> manifest);

/// Hours, bytes or files. The initial backup has none of the latter two: beside it all others would vanish.
[[nodiscard]] std::optional<double> timelineValue(const TimelineEntry& entry, TimelineMetric metric);

/// The first entry that is an initial backup; null if there is none.
[[nodiscard]] const TimelineEntry* initialEntry(std::span<const TimelineEntry> entries);

/// Every index whose entry is a backup.
[[nodiscard]] std::vector<std::size_t> selectableIndices(std::span<const TimelineEntry> entries);

/// `index` if it is that of a backup, as only those can be selected.
[[nodiscard]] std::optional<std::size_t> selectableIndex(std::span<const TimelineEntry> entries,
                                                         std::optional<std::size_t> index);

/// The entry nearest to a position on the axis, on which entries stand at 0, 1, 2 and so on.
[[nodiscard]] std::optional<std::size_t> indexAtPosition(std::span<const TimelineEntry> entries,
                                                         double position);

/// Where the selection goes from `current` by `steps` backups, at most to the first or the last. From
/// nowhere it goes to the last. Absent only if nothing can be selected.
[[nodiscard]] std::optional<std::size_t> movedSelection(std::span<const TimelineEntry> entries,
                                                        std::optional<std::size_t> current,
                                                        std::ptrdiff_t steps);

/// The backup of this date, to find a selection again in a new list.
[[nodiscard]] std::optional<std::size_t> indexOfBackup(std::span<const TimelineEntry> entries, Date date);

} // namespace tallyglass
