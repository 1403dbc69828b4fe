#include "TallyglassKit/Health/BackupHealth.h"

#include "TallyglassKit/Access/TMDestination.h"
#include "TallyglassKit/Health/BackupResultCode.h"

#include <fmt/core.h>

#include <algorithm>
#include <span>

namespace tallyglass {

namespace {

constexpr double almostFullFraction = 0.95;
constexpr double fillingUpFraction = 0.85;
constexpr double overdueSeconds = 172800;

constexpr std::size_t medianWindow = 5;     // intervals before, or after, the examined one
constexpr std::size_t smallestBaseline = 3; // the fewest intervals for a median

/// Takes its list by value, to sort it.
std::optional<double> median(std::vector<double> values) {
    if (values.empty())
        return std::nullopt;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    if (values.size() % 2 == 1)
        return *middle;
    return (*std::max_element(values.begin(), middle) + *middle) * 0.5;
}

/// Both lists are ascending, so the first snapshot that isn't earlier than the attempt only moves forward.
std::vector<Date> suspectedAttempts(const std::vector<Date>& attempts, const std::vector<Date>& snapshots,
                                    Date now, double successWindow) {
    std::vector<Date> suspected;
    auto next = snapshots.begin();
    for (const Date attempt : attempts) {
        if (snapshots.empty() || attempt < snapshots.front() || !((now - attempt).count() > successWindow))
            continue;
        next = std::find_if(next, snapshots.end(), [&](Date snapshot) { return snapshot >= attempt; });
        if (next == snapshots.end() || (*next - attempt).count() > successWindow)
            suspected.push_back(attempt);
    }
    return suspected;
}

std::vector<BackupHealth::Gap> intervalsBetween(const std::vector<Date>& snapshots) {
    std::vector<BackupHealth::Gap> intervals;
    for (std::size_t index = 1; index < snapshots.size(); ++index)
        if (snapshots[index] > snapshots[index - 1])
            intervals.push_back({snapshots[index - 1], snapshots[index]});
    return intervals;
}

std::vector<BackupHealth::Gap> gapsAmong(const std::vector<BackupHealth::Gap>& intervals,
                                         std::span<const double> seconds, double tolerance) {
    std::vector<BackupHealth::Gap> gaps;
    for (std::size_t index = 0; index < seconds.size(); ++index) {
        const auto before = std::min(index, medianWindow);
        const auto baseline =
            before >= smallestBaseline
                ? seconds.subspan(index - before, before)
                : seconds.subspan(index, std::min(medianWindow + 1, seconds.size() - index));
        const double local = median({baseline.begin(), baseline.end()}).value_or(0);
        if (local > 0 && seconds[index] > tolerance * local)
            gaps.push_back(intervals[index]);
    }
    return gaps;
}

} // namespace

BackupHealth BackupHealth::analyze(const TMDestination& destination, Date now, double successWindow,
                                   double gapTolerance) {
    const std::vector<Date>& snapshots = destination.snapshotDates;
    const auto intervals = intervalsBetween(snapshots);
    std::vector<double> seconds(intervals.size());
    std::ranges::transform(intervals, seconds.begin(), &Gap::duration);

    BackupHealth health;
    health.suspectedFailedAttempts =
        suspectedAttempts(destination.attemptDates, snapshots, now, successWindow);
    health.gaps = gapsAmong(intervals, seconds, gapTolerance);
    if (!snapshots.empty())
        health.timeSinceLastBackup = (now - snapshots.back()).count();
    health.medianInterval = median(std::move(seconds));
    health.usedFraction = destination.usedFraction();
    health.lastBackupResult = destination.lastResult;
    return health;
}

bool BackupHealth::lastBackupFailed() const {
    return lastBackupResult && !BackupResultCode{*lastBackupResult}.isSuccess();
}

std::optional<std::string_view> BackupHealth::lastBackupReason() const {
    return lastBackupResult ? BackupResultCode{*lastBackupResult}.reason() : std::nullopt;
}

bool BackupHealth::lastBackupWasDeferred() const {
    return lastBackupResult && BackupResultCode{*lastBackupResult}.isDeferral();
}

bool BackupHealth::isAlmostFull() const {
    return usedFraction && *usedFraction >= almostFullFraction;
}
bool BackupHealth::isFillingUp() const {
    return usedFraction && *usedFraction >= fillingUpFraction;
}
bool BackupHealth::isOverdue() const {
    return timeSinceLastBackup && *timeSinceLastBackup > overdueSeconds;
}

BackupHealth::Level BackupHealth::level() const {
    if (isAlmostFull() || isOverdue())
        return Level::critical;
    if (lastBackupFailed() || !suspectedFailedAttempts.empty() || !gaps.empty() || isFillingUp())
        return Level::warning;
    return Level::healthy;
}

std::string BackupHealth::summary() const {
    if (isAlmostFull())
        return "Destination almost full";
    if (isOverdue())
        return "No recent backup";
    if (level() == Level::healthy)
        return "Backups healthy";
    if (suspectedFailedAttempts.size() == 1)
        return "1 backup may have failed";
    if (!suspectedFailedAttempts.empty())
        return fmt::format("{} backups may have failed", suspectedFailedAttempts.size());
    if (lastBackupWasDeferred())
        return "Last backup was skipped";
    if (lastBackupFailed())
        return "Last backup didn't complete";
    if (!gaps.empty())
        return "Irregular backup schedule";
    return "Destination filling up";
}

std::string_view rawValue(BackupHealth::Level level) {
    switch (level) {
    case BackupHealth::Level::healthy:
        return "healthy";
    case BackupHealth::Level::warning:
        return "warning";
    case BackupHealth::Level::critical:
        return "critical";
    }
    return {};
}

} // namespace tallyglass
