// The state of the running backup for other processes: a small file that is replaced as the backup
// progresses, a lock that is released when the backup's process ends, and a request to stop.
//
// RunState is a value. Operations may be called from any process and thread; only the holder of the lock
// writes the state.

#pragma once

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/Snapshots.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tallyglass {

class MachinePaths;

enum class BackupPhase { starting, findingVolume, findingChanges, copying, finishing };

/// The phase in the spelling of `tmutil status`.
[[nodiscard]] std::string_view phaseName(BackupPhase phase);

struct RunState {
    BackupPhase phase = BackupPhase::starting;
    Date stateChange;
    std::string destinationID; ///< empty in the early phases
    std::string mountPoint;
    std::optional<double> fractionDone; ///< of finding the changes
    std::int64_t changedItems = 0;
    std::int64_t bytes = 0;
    std::int64_t totalBytes = 0;
    std::int64_t files = 0;
    std::int64_t totalFiles = 0;
    std::optional<double> timeRemaining;

    bool operator==(const RunState&) const = default;

    /// The output of `tmutil status`, without its heading.
    [[nodiscard]] std::string statusText(bool isStopping) const;
    [[nodiscard]] static std::string idleStatusText();
};

struct RunFiles {
    /// The lock of the running backup; absent while another process holds it.
    [[nodiscard]] static std::optional<FileLock> take(const MachinePaths& machine);

    static void write(const MachinePaths& machine, const RunState& state);
    static void clear(const MachinePaths& machine);
    /// The state of the running backup; absent if there is none.
    [[nodiscard]] static std::optional<RunState> read(const MachinePaths& machine);

    static void requestStop(const MachinePaths& machine);
    [[nodiscard]] static bool isStopRequested(const MachinePaths& machine);
};

} // namespace tallyglass
