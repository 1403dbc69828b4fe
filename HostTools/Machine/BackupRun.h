// Makes a backup: records the attempt, finds changes, copies to an incomplete folder, renames that when it is
// complete, and records the result. If this process dies at any time, the previous backups are intact, and
// the attempt is recorded.
//
// One thread. Only one backup runs on a machine at a time; the object holds the lock for that, also across a
// fork.

#pragma once

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/HostPreferences.h"
#include "HostTools/Machine/MachinePaths.h"
#include "HostTools/Machine/RunState.h"
#include "HostTools/Machine/SnapshotCopier.h"
#include "HostTools/Machine/Snapshots.h"
#include "TallyglassKit/Platform/Clock.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tallyglass {

class BackupRun {
public:
    struct Environment {
        Clock clock = systemTime;
        Durability durability = Durability::disk;
        std::unique_ptr<SnapshotCopier> copier; ///< RsyncCopier if null
        /// Called for each state that is written.
        std::function<void(const RunState&)> watch;
    };

    /// Takes the lock, cleans up after a killed backup, and records the attempt. Absent if a backup is
    /// already running. Throws Error without a destination or sources.
    [[nodiscard]] static std::optional<BackupRun> begin(const MachinePaths& machine, Environment environment,
                                                        const std::string& destinationID = "");

    /// Makes the backup and records its result. Returns the result code, 0 for a success.
    std::int64_t perform();

    /// The descriptor of the lock file.
    [[nodiscard]] int lockDescriptor() const { return m_lock.fd(); }

    /// Why the last perform() failed; empty after a success.
    [[nodiscard]] const std::string& failure() const { return m_failure; }

private:
    struct Survey; // what has changed since the last backup
    struct Cost;   // the contents of the finished copy

    BackupRun(const MachinePaths& machine, Environment environment, FileLock lock);

    void makeBackup();
    void checkStart();
    [[nodiscard]] Survey survey();
    void checkSpace(const Survey& survey) const;
    void copy(const Survey& survey);
    void finish();
    void completeVolumeFolder() const;
    [[nodiscard]] Cost measure();
    void commit(Date completion);
    void record(const Cost& cost, Date completion);
    void end(std::int64_t result);

    HostPreferences edit(const std::function<void(HostPreferences&)>& change) const;
    void show(BackupPhase phase);
    void write();
    void stopIfAsked() const;
    void removeLeftovers() const;
    [[nodiscard]] std::filesystem::path liveRoot() const;
    [[nodiscard]] std::vector<std::string> logicalSources() const;
    [[nodiscard]] std::filesystem::path previousVolume() const;

    MachinePaths m_machine;
    Environment m_environment;
    FileLock m_lock;
    HostPreferences m_preferences;
    HostDestination m_destination;
    std::filesystem::path m_folder; ///< of the destination
    std::filesystem::path m_work;   ///< of the backup in progress
    std::optional<Snapshot> m_previous;
    Date m_start;
    RunState m_state;
    std::string m_failure;
};

/// The folder that logical paths in a machine's backups are relative to: its root if its sources are inside,
/// else "/".
[[nodiscard]] std::filesystem::path liveRootOf(const MachinePaths& machine,
                                               const HostPreferences& preferences);

} // namespace tallyglass
