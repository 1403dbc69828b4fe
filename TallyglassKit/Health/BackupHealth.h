// The verdict on one destination's backups, drawn from when they were made, when they were tried, how full
// the destination is and how the last one ended. Values; any thread. Nothing is kept between two analyses.

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
    /// In the order of gravity.
    enum class Level { healthy = 0, warning = 1, critical = 2 };

    /// A stretch without a backup that the rhythm around it didn't promise.
    struct Gap {
        Date start; ///< the older snapshot that bounds it
        Date end;   ///< the newer one
        [[nodiscard]] double duration() const { return (end - start).count(); } ///< seconds
        friend bool operator==(const Gap&, const Gap&) = default;
    };

    static constexpr double defaultSuccessWindow = 3600; ///< seconds
    static constexpr double defaultGapTolerance = 2.5;   ///< times the local median

    /// Attempts that no backup followed in time, oldest first.
    std::vector<Date> suspectedFailedAttempts = {};
    std::vector<Gap> gaps = {}; ///< oldest first
    /// Seconds; negative when the newest snapshot lies in the future.
    std::optional<double> timeSinceLastBackup = {};
    std::optional<double> medianInterval = {};         ///< seconds between neighbouring snapshots
    std::optional<double> usedFraction = {};           ///< of the destination, 0 to 1
    std::optional<std::int64_t> lastBackupResult = {}; ///< the destination's, unchanged

    /// Judges `destination` as of `now`. An attempt counts as failed when no snapshot follows it within
    /// `successWindow` seconds; an interval is a gap when it is longer than `gapTolerance` times the median
    /// of the intervals around it. Takes time linear in attempts and snapshots, but for the sort of the
    /// median.
    [[nodiscard]] static BackupHealth analyze(const TMDestination& destination, Date now,
                                              double successWindow = defaultSuccessWindow,
                                              double gapTolerance = defaultGapTolerance);

    [[nodiscard]] bool lastBackupFailed() const; ///< true for deferrals too
    [[nodiscard]] std::optional<std::string_view> lastBackupReason() const;
    [[nodiscard]] bool lastBackupWasDeferred() const;
    [[nodiscard]] Level level() const;

    /// The sentence that the user reads first.
    [[nodiscard]] std::string summary() const;

    friend bool operator==(const BackupHealth&, const BackupHealth&) = default;

private:
    [[nodiscard]] bool isAlmostFull() const;
    [[nodiscard]] bool isFillingUp() const;
    [[nodiscard]] bool isOverdue() const;
};

[[nodiscard]] std::string_view rawValue(BackupHealth::Level level);

} // namespace tallyglass
