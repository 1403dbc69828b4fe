// Creates a machine at a root, or adds a destination to an existing one.

#pragma once

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/MachinePaths.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

struct MachineSetup {
    std::vector<std::filesystem::path> sources; ///< existing folders; all in the machine's root, or none
    std::filesystem::path destination;          ///< created if missing
    std::string destinationName;                ///< of its volume; if empty, the folder's name
    std::string volumeName; ///< of the sources' volume inside backups; if empty, unchanged
    std::optional<std::int64_t> quota;
    std::function<std::string()> makeUUID; ///< random if empty
    Durability durability = Durability::disk;
};

/// Sources replace the previous ones. An existing destination is unchanged; a new one becomes the current
/// one, including backups in its folder. Throws Error for invalid settings.
void setUpMachine(const MachinePaths& machine, const MachineSetup& setup);

/// A random UUID in upper case.
[[nodiscard]] std::string randomUUID();

struct Permission {
    /// Whether programs of this machine may read backups: whether the canary file can be opened.
    [[nodiscard]] static bool isGranted(const MachinePaths& machine);
    static void grant(const MachinePaths& machine);
    static void revoke(const MachinePaths& machine);
};

} // namespace tallyglass
