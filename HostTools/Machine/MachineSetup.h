// Makes a machine at a root, or adds a destination to the one that is there.

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
    std::filesystem::path destination;          ///< is made when it is missing
    std::string destinationName;                ///< of its volume; the folder's name when empty
    std::string volumeName;                     ///< of the sources' volume inside backups; empty keeps it
    std::optional<std::int64_t> quota;
    std::function<std::string()> makeUUID; ///< random ones without it
    Durability durability = Durability::disk;
};

/// Sources replace those before. A destination that the machine has already stays what it is; a new one
/// becomes the current one, and backups that its folder holds come with it. Throws Error when something can't
/// be used.
void setUpMachine(const MachinePaths& machine, const MachineSetup& setup);

/// A random UUID in capitals.
[[nodiscard]] std::string randomUUID();

struct Permission {
    /// Whether programs of this machine may read backups: whether the canary file can be opened.
    [[nodiscard]] static bool isGranted(const MachinePaths& machine);
    static void grant(const MachinePaths& machine);
    static void revoke(const MachinePaths& machine);
};

} // namespace tallyglass
