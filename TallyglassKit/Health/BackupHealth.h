// The assessment of one destination's backups, from the dates of snapshots and attempts, the used space and
// the last result. Values; any thread. Analyses are stateless.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

struct TMDestination;

struct BackupHealth {
    /// In ascending order of severity.
    enum class Level { healthy = 0, warning = 1, critical = 2 };

    /// An interval between snapshots that is unusually long for its neighbourhood.
    struct Gap {
        Date start;                                                             ///< the older snapshot
        Date end;                                                               ///< the newer snapshot
        [[nodiscard]] double duration() const { return (end - start).count(); } ///< seconds
        friend bool operator==(const Gap&, const Gap&) = default;
    };

    static constexpr double defaultSuccessWindow = 3600; ///< seconds
    static constexpr double defaultGapTolerance = 2.5;   ///< times the local median

    /// Attempts without a snapshot in time, oldest first.
    std::vector<Date> suspectedFailedAttempts = {};
    std::vector<Gap> gaps = {}; ///< oldest first
    /// Seconds; negative if the newest snapshot is in the future.
    std::optional<double> timeSinceLastBackup = {};
    std::optional<double> medianInterval = {};         ///< seconds between consecutive snapshots
    std::optional<double> usedFraction = {};           ///< of the destination, 0 to 1
    std::optional<std::int64_t> lastBackupResult = {}; ///< the destination's, unchanged

    /// Assesses `destination` as of `now`. An attempt counts as failed if no snapshot follows within
    /// `successWindow` seconds; an interval is a gap if it is longer than `gapTolerance` times the median of
    /// the intervals around it. Takes linear time, except for sorting to find the median.
    [[nodiscard]] static BackupHealth analyze(const TMDestination& destination, Date now,
                                              double successWindow = defaultSuccessWindow,
                                              double gapTolerance = defaultGapTolerance);

    [[nodiscard]] bool lastBackupFailed() const; ///< true for deferrals too
    [[nodiscard]] std::optional<std::string_view> lastBackupReason() const;
    [[nodiscard]] bool lastBackupWasDeferred() const;
    [[nodiscard]] Level level() const;

    /// The headline for the user.
    [[nodiscard]] std::string summary() const;

    friend bool operator==(const BackupHealth&, const BackupHealth&) = default;

private:
    [[nodiscard]] bool isAlmostFull() const;
    [[nodiscard]] bool isFillingUp() const;
    [[nodiscard]] bool isOverdue() const;
};

[[nodiscard]] std::string_view rawValue(BackupHealth::Level level);

} // namespace tallyglass
