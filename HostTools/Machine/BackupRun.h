// One backup from its attempt to its record: finds what has changed, copies it into a folder that isn't a
// backup yet, gives that its name when it is whole, and writes down what it cost. Whenever this process dies,
// the backups before are as they were, and the attempt is on record.
//
// One thread. Only one backup runs on a machine at a time; the object holds the lock that sees to it, also
// across a fork.

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
    struct Surroundings {
        Clock clock = systemTime;
        Durability durability = Durability::disk;
        std::unique_ptr<SnapshotCopier> copier; ///< rsync's without one
        /// Told of each state as it is written.
        std::function<void(const RunState&)> watch;
    };

    /// Takes the lock, clears what a dead backup left, and records the attempt. Absent when a backup runs
    /// already. Throws Error without a destination or sources.
    [[nodiscard]] static std::optional<BackupRun>
    begin(const MachinePaths& machine, Surroundings surroundings, const std::string& destinationID = "");

    /// Makes the backup and records how it ended. Returns its result code, 0 for a whole backup.
    std::int64_t perform();

    /// The open file that holds the lock.
    [[nodiscard]] int lockDescriptor() const { return m_lock.descriptor(); }

    /// Why the last perform() failed; empty after a success.
    [[nodiscard]] const std::string& failure() const { return m_failure; }

private:
    struct Survey; // what has changed since the last backup
    struct Cost;   // what the finished copy holds

    BackupRun(const MachinePaths& machine, Surroundings surroundings, FileLock lock);

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
    Surroundings m_surroundings;
    FileLock m_lock;
    HostPreferences m_preferences;
    HostDestination m_destination;
    std::filesystem::path m_folder; ///< the destination's
    std::filesystem::path m_work;   ///< the backup in the making
    std::optional<Snapshot> m_previous;
    Date m_start;
    RunState m_state;
    std::string m_failure;
};

/// The folder in whose terms the logical paths of a machine's backups are: its root when its sources lie in
/// there, else "/".
[[nodiscard]] std::filesystem::path liveRootOf(const MachinePaths& machine,
                                               const HostPreferences& preferences);

} // namespace tallyglass
