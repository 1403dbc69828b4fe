#include "Tallyglass/Models/Internal/FixtureMachine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace tallyglass {
namespace {

constexpr double minute = 60;
constexpr double hour = 60 * minute;
constexpr double day = 24 * hour;
constexpr std::int64_t gigabyte = 1'000'000'000;

using Machine = FixtureMachine;

/// Numbers that look random and are the same everywhere, which the library's distributions don't promise.
class Dice {
public:
    /// 0 to below 1.
    double roll() { return static_cast<double>(m_engine() >> 11U) * 0x1p-53; }
    double between(double low, double high) { return low + (high - low) * roll(); }

private:
    std::mt19937_64 m_engine{20};
};

Date before(Date date, double seconds) {
    return date - std::chrono::duration<double>(seconds);
}

/// Backups about every `interval` seconds, the last of them 38 minutes ago.
std::vector<Date> regularSnapshots(Date now, std::size_t count, double interval) {
    Dice dice;
    std::vector<Date> dates;
    for (Date date = before(now, 38 * minute); dates.size() < count;
         date = before(date, interval * dice.between(0.85, 1.15)))
        dates.push_back(date);
    std::ranges::reverse(dates);
    return dates;
}

/// A row for each backup: the first of everything, most of them small and a few large.
std::vector<BackupManifestEntry> manifestOf(const AscendingDates& snapshots) {
    Dice dice;
    std::vector<BackupManifestEntry> rows;
    for (const Date date : snapshots) {
        const bool isInitial = rows.empty();
        const double weight = dice.roll();
        const double gigabytes = isInitial ? 742 : 0.18 + 9 * std::pow(weight, 6) + 1.4 * weight;
        const auto size = static_cast<std::int64_t>(gigabytes * static_cast<double>(gigabyte));
        rows.push_back(BackupManifestEntry{
            .completionDate = before(date, dice.between(-20, 20)),
            .startDate = before(date, isInitial ? 9 * hour : dice.between(3, 14) * minute),
            .changedCount =
                isInitial ? 2'418'906 : static_cast<std::int64_t>(900 + 21'000 * weight * dice.roll()),
            .changedLogicalSize = size - size / 9,
            .changedPhysicalSize = size,
            .isInitialBackup = isInitial,
        });
    }
    return rows;
}

void setSnapshots(Machine& machine, const std::vector<Date>& dates) {
    TMDestination& destination = machine.settings.destinations.front();
    destination.snapshotDates = dates;
    destination.attemptDates = dates;
    machine.manifest = manifestOf(destination.snapshotDates);
}

void setUsed(TMDestination& destination, double fraction) {
    constexpr std::int64_t total = 2'000 * gigabyte;
    destination.bytesUsed = static_cast<std::int64_t>(static_cast<double>(total) * fraction);
    destination.bytesAvailable = total - *destination.bytesUsed;
}

Machine healthy(Date now) {
    Machine machine;
    machine.settings = TMSettings{
        .autoBackupEnabled = true,
        .autoBackupInterval = day,
        .requiresACPower = true,
        .skipPaths = {"/Users/alex/Downloads", "/Users/alex/Library/Caches", "/Users/alex/Virtual Machines"},
        .destinations = {TMDestination{
            .id = "6D8A4C1E-53F0-4B0B-9C34-2C1B7A9E0F52",
            .destinationUUID = "6D8A4C1E-53F0-4B0B-9C34-2C1B7A9E0F52",
            .volumeName = "Backup Disk",
            .kind = TMDestination::Kind::local,
            .isEncrypted = true,
            .filesystemTypeName = "apfs",
            .consistencyScanDate = before(now, 6 * day),
            .lastResult = 0,
        }}};
    setUsed(machine.settings.destinations.front(), 0.62);
    setSnapshots(machine, regularSnapshots(now, 60, day));
    return machine;
}

Machine warning(Date now) {
    Machine machine = healthy(now);
    TMDestination& destination = machine.settings.destinations.front();
    setUsed(destination, 0.88);
    destination.lastResult = 1009;
    auto dates = regularSnapshots(now, 60, day);
    dates.erase(dates.begin() + 43, dates.begin() + 47);
    dates.erase(dates.begin() + 20, dates.begin() + 26);
    setSnapshots(machine, dates);
    return machine;
}

Machine critical(Date now) {
    Machine machine = healthy(now);
    TMDestination& destination = machine.settings.destinations.front();
    setUsed(destination, 0.97);
    destination.lastResult = 1001;
    auto dates = regularSnapshots(now, 48, day);
    dates.resize(dates.size() - 3);
    dates.erase(dates.begin() + 30, dates.begin() + 35);
    setSnapshots(machine, dates);
    auto attempts = dates;
    for (const double age : {2.1 * day, 1.6 * day, 0.9 * day, 0.3 * day})
        attempts.push_back(before(now, age));
    attempts.push_back(before(dates[18], 9 * hour));
    destination.attemptDates = attempts;
    machine.statusFailure = "The backup disk could not be reached.";
    return machine;
}

Machine running(Date now) {
    Machine machine = healthy(now);
    machine.status = BackupStatus{.isRunning = true,
                                  .percent = 0.42,
                                  .phase = "Copying",
                                  .bytesCopied = 3'180'000'000,
                                  .totalBytes = 7'570'000'000,
                                  .filesCopied = 18'204,
                                  .totalFiles = 43'011,
                                  .timeRemaining = 8 * minute,
                                  .numberOfChangedItems = 43'011};
    machine.rate = BackupRate{.bytesPerSecond = 41'300'000, .filesPerSecond = 216};
    return machine;
}

Machine stopping(Date now) {
    Machine machine = running(now);
    machine.status.isStopping = true;
    machine.rate.reset();
    return machine;
}

Machine withoutManifest(Date now) {
    Machine machine = healthy(now);
    machine.manifest.clear();
    return machine;
}

/// Without the permission and the helper.
Machine locked(Date now) {
    Machine machine = withoutManifest(now);
    machine.access = FDAStatus::denied;
    return machine;
}

Machine noDestination(Date) {
    return {};
}

/// Some eight years of a laptop's life: a rhythm, holidays, failures.
Machine longHistory(Date now) {
    Machine machine = healthy(now);
    auto dates = regularSnapshots(now, 3'060, day);
    for (const std::ptrdiff_t start : {2'400, 1'500, 700})
        dates.erase(dates.begin() + start, dates.begin() + start + 20);
    setSnapshots(machine, dates);
    auto attempts = dates;
    for (std::size_t index = 160; index < dates.size(); index += 330)
        attempts.push_back(before(dates[index], 11 * hour));
    machine.settings.destinations.front().attemptDates = attempts;
    return machine;
}

Machine fresh(Date now) {
    Machine machine = healthy(now);
    setSnapshots(machine, regularSnapshots(now, 1, day));
    return machine;
}

Machine longWords(Date now) {
    Machine machine = running(now);
    TMDestination& destination = machine.settings.destinations.front();
    destination.volumeName = "The Very Large and Rather Old Backup Volume of the Whole Family — Räume im "
                             "Erdgeschoß, 家族のバックアップ (second shelf, left of the printer)";
    destination.networkURL = "smb://backup-operator@network-attached-storage.basement.example-household.test/"
                             "Shared%20Folders/Time%20Machine%20Backups%20of%20Every%20Computer";
    destination.kind = TMDestination::Kind::network;
    machine.status.phase = "PreparingSourceVolumesAndVerifyingIncompleteBackups";
    machine.settings.skipPaths = {
        "/Users/alexandra-konstantinopolskaya/Library/Application Support/An Application with a Remarkably "
        "Long Name/Caches and Temporary Items/2026/November/Intermediate Renderings/Version 17 (final, "
        "really)/scratch.noindex",
        "/Volumes/A Disk/Unterlagen/Steuererklärungsvorbereitungsarbeitsgemeinschaft/Zwischenablage",
        "/" + std::string(240, 'x'),
    };
    machine.stopFailure = "tmutil: the destination “The Very Large and Rather Old Backup Volume of the Whole "
                          "Family” could not be mounted because the server "
                          "network-attached-storage.basement.example-household.test didn’t answer within the "
                          "time allowed.";
    machine.access = FDAStatus::indeterminate;
    return machine;
}

Machine network(Date now) {
    Machine machine = withoutManifest(now);
    TMDestination& destination = machine.settings.destinations.front();
    destination.kind = TMDestination::Kind::network;
    destination.networkURL = "smb://alex@nas.local/Backups";
    return machine;
}

/// With the helper's copy of the manifest, so that finding the backups doesn't need a tmutil that answers.
Machine withHelper(Date now) {
    Machine machine = healthy(now);
    machine.hasHelper = true;
    return machine;
}

Machine withoutInfo(Date now) {
    Machine machine = healthy(now);
    machine.infoFailure = "tmutil: the destination could not be mounted.";
    return machine;
}

Machine lockedWithoutInfo(Date now) {
    Machine machine = locked(now);
    machine.infoFailure = "tmutil: destinationinfo requires Full Disk Access privileges.";
    return machine;
}

struct Session {
    std::string_view name;
    Machine (*make)(Date now);
};

constexpr auto sessions = std::to_array<Session>({
    {"healthy", healthy},
    {"warning", warning},
    {"critical", critical},
    {"running", running},
    {"stopping", stopping},
    {"locked", locked},
    {"no-destination", noDestination},
    {"long", longHistory},
    {"fresh", fresh},
    {"words-long", longWords},
    {"compare-ready", healthy},
    {"compare-running", healthy},
    {"compare-results", healthy},
    {"compare-metadata", healthy},
    {"compare-none", healthy},
    {"compare-many", healthy},
    {"compare-failure", healthy},
    {"compare-backfill", healthy},
    {"changes-waiting", withHelper},
    {"changes-running", healthy},
    {"changes-results", healthy},
    {"changes-metadata", withoutManifest},
    {"changes-none", withoutManifest},
    {"changes-failure", healthy},
    {"changes-oldest", healthy},
    {"changes-network", network},
    {"history-results", healthy},
    {"history-many", healthy},
    {"history-none", healthy},
    {"history-running", withHelper},
    {"history-failure", healthy},
    {"exclusions-items", healthy},
    {"exclusions-failure", healthy},
    {"diagnostics-results", withoutInfo},
    {"diagnostics-running", healthy},
    {"diagnostics-denied", lockedWithoutInfo},
    {"diagnostics-failure", healthy},
});

} // namespace

std::span<const std::string_view> FixtureMachine::names() {
    static const auto names = [] {
        std::array<std::string_view, sessions.size()> result;
        std::ranges::transform(sessions, result.begin(), &Session::name);
        return result;
    }();
    return names;
}

std::optional<FixtureMachine> FixtureMachine::make(std::string_view name, Date now) {
    const auto session = std::ranges::find(sessions, name, &Session::name);
    if (session == sessions.end())
        return std::nullopt;
    return session->make(now);
}

} // namespace tallyglass
