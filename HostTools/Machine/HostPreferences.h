// The machine's preference file: its settings, and for each destination the attempts, backups, result and
// space used. The file is a binary property list with Time Machine's own keys, and a few of this program's
// own, which other readers ignore:
//
//   SourceVolumeName   the volume's name inside backups
//   NextResult         the next backup ends with this result code
//   CopyLimit          the most KiB a second that a backup copies
//   Destinations[] / Quota   the bytes that the destination is said to have; otherwise its file system's
//
// HostPreferences is a value; any thread. Changes go through edit(), one process at a time.

#pragma once

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/MachinePaths.h"
#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

struct HostDestination {
    std::string id;
    std::string uuid; ///< names the folder of its backups
    std::string name; ///< of its volume
    std::string filesystem;
    std::int64_t bytesUsed = 0;
    std::int64_t bytesAvailable = 0;
    std::optional<std::int64_t> quota;
    std::optional<std::int64_t> result;
    std::vector<Date> snapshotDates;
    std::vector<Date> attemptDates;

    /// Updates the backups and the used space from the folder. With a quota, that is the size and the used
    /// space is what its backups have written; otherwise both are the file system's.
    void refresh(const std::filesystem::path& folder);

    bool operator==(const HostDestination&) const = default;
};

struct HostPreferences {
    std::vector<std::string> sources; ///< folders that are backed up, as absolute paths of the host
    std::string volumeName;           ///< their volume's name inside a backup
    std::vector<std::string> skipPaths;
    std::vector<std::string> excludedPaths;
    std::string currentDestinationID;
    std::vector<HostDestination> destinations;
    std::optional<std::int64_t> nextResult;
    std::optional<std::int64_t> copyLimit; ///< KiB a second

    /// The destination for backups and listings: the current one, else the first.
    [[nodiscard]] const HostDestination* current() const;
    [[nodiscard]] HostDestination* destination(const std::string& id);

    /// The contents of the file; empty if it is missing. Throws Error if it is invalid.
    [[nodiscard]] static HostPreferences load(const MachinePaths& machine);

    /// Reads, changes and replaces the file under a lock, so that no change is lost. If `change` throws, the
    /// file is unchanged. Unknown keys are preserved.
    static HostPreferences edit(const MachinePaths& machine,
                                const std::function<void(HostPreferences&)>& change,
                                Durability durability = Durability::disk);
};

} // namespace tallyglass
