#include "HostTools/Machine/MachineSetup.h"

#include "HostTools/Machine/HostPreferences.h"
#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/core.h>
#include <linux/magic.h>
#include <sys/vfs.h>

#include <algorithm>
#include <array>
#include <random>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

/// The folder's canonical path, or for one in the machine its path under the machine's root.
fs::path settledFolder(const MachinePaths& machine, const fs::path& folder) {
    const fs::path real = fs::canonical(folder);
    const fs::path root = fs::canonical(machine.root());
    return isWithin(real.string(), root.string())
               ? (machine.root() / real.lexically_relative(root)).lexically_normal()
               : real;
}

std::string textOf(const fs::path& folder) {
    std::string text = folder;
    if (text.size() > 1 && text.ends_with('/'))
        text.pop_back();
    return text;
}

/// A link that is relative where possible, so that it survives moving the machine.
void link(const MachinePaths& machine, const fs::path& target, const fs::path& place) {
    if (fs::is_symlink(place) || place == target)
        return;
    fs::create_directories(place.parent_path());
    const bool isInside = isWithin(target.string(), machine.root().string());
    fs::create_directory_symlink(isInside ? target.lexically_relative(place.parent_path()) : target, place);
}

std::string filesystemName(const fs::path& folder) {
    struct statfs status {};
    if (statfs(folder.c_str(), &status) != 0)
        return "";
    switch (status.f_type) {
    case EXT4_SUPER_MAGIC:
        return "ext4";
    case XFS_SUPER_MAGIC:
        return "xfs";
    case BTRFS_SUPER_MAGIC:
        return "btrfs";
    case TMPFS_MAGIC:
        return "tmpfs";
    case OVERLAYFS_SUPER_MAGIC:
        return "overlay";
    case NFS_SUPER_MAGIC:
        return "nfs";
    default:
        return "";
    }
}

std::vector<std::string> settledSources(const MachinePaths& machine, const std::vector<fs::path>& sources) {
    std::vector<std::string> result;
    for (const fs::path& source : sources) {
        if (!fs::is_directory(source))
            throw Error(fmt::format("{} is no folder.", source.string()));
        result.push_back(textOf(settledFolder(machine, source)));
    }
    const auto inside = std::ranges::count_if(
        result, [&](const std::string& source) { return isWithin(source, machine.root().string()); });
    if (inside != 0 && static_cast<std::size_t>(inside) != result.size())
        throw Error("The sources must lie either all in the machine's root or all outside it.");
    return result;
}

HostDestination* knownDestination(const MachinePaths& machine, HostPreferences& preferences,
                                  const fs::path& folder) {
    const auto found = std::ranges::find_if(preferences.destinations, [&](const HostDestination& known) {
        std::error_code missing;
        return fs::equivalent(machine.backups(known.uuid), folder, missing);
    });
    return found == preferences.destinations.end() ? nullptr : &*found;
}

HostDestination& addDestination(const MachinePaths& machine, HostPreferences& preferences,
                                const MachineSetup& setup, const fs::path& folder) {
    const std::string name =
        setup.destinationName.empty() ? folder.filename().string() : setup.destinationName;
    if (name.find('/') != std::string::npos || name.starts_with('.'))
        throw Error(fmt::format("A destination can't be named {}.", name));
    const bool isTaken = std::ranges::any_of(
        preferences.destinations, [&](const HostDestination& other) { return other.name == name; });
    if (isTaken)
        throw Error(fmt::format("There is a destination named {} already.", name));
    const auto makeUUID = setup.makeUUID ? setup.makeUUID : randomUUID;
    HostDestination& added = preferences.destinations.emplace_back();
    added.id = makeUUID();
    added.uuid = makeUUID();
    added.name = name;
    added.filesystem = filesystemName(folder);
    link(machine, folder, machine.backups(added.uuid));
    link(machine, folder, machine.mountPoint(name));
    return added;
}

void linkTool(const MachinePaths& machine) {
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / "tmutil";
    std::error_code failure;
    fs::create_directories(machine.tool().parent_path());
    if (fs::exists(program) && !fs::equivalent(program, machine.tool(), failure)) {
        fs::remove(machine.tool());
        fs::create_symlink(program, machine.tool());
    }
}

} // namespace

void setUpMachine(const MachinePaths& machine, const MachineSetup& setup) {
    fs::create_directories(machine.root());
    const auto sources = settledSources(machine, setup.sources);
    fs::create_directories(setup.destination);
    const fs::path folder = textOf(settledFolder(machine, setup.destination));
    if (!fs::exists(machine.preferences()))
        Permission::grant(machine);
    linkTool(machine);

    HostPreferences::edit(
        machine,
        [&](HostPreferences& preferences) {
            if (!sources.empty())
                preferences.sources = sources;
            if (preferences.sources.empty())
                throw Error("There is nothing to back up: name a source.");
            if (!setup.volumeName.empty())
                preferences.volumeName = setup.volumeName;
            HostDestination* destination = knownDestination(machine, preferences, folder);
            if (!destination) {
                destination = &addDestination(machine, preferences, setup, folder);
                preferences.currentDestinationID = destination->id;
            }
            if (setup.quota)
                destination->quota = setup.quota;
            destination->refresh(folder);
        },
        setup.durability);
}

std::string randomUUID() {
    std::random_device random;
    std::array<std::uint32_t, 4> words{random(), random(), random(), random()};
    words[1] = (words[1] & 0xFFFF0FFF) | 0x4000;
    words[2] = (words[2] & 0x3FFFFFFF) | 0x80000000;
    return fmt::format("{:08X}-{:04X}-{:04X}-{:04X}-{:04X}{:08X}", words[0], words[1] >> 16,
                       words[1] & 0xFFFF, words[2] >> 16, words[2] & 0xFFFF, words[3]);
}

bool Permission::isGranted(const MachinePaths& machine) {
    return FullDiskAccessProbe::probe(machine.permissionCanary()) == FDAStatus::granted;
}

void Permission::grant(const MachinePaths& machine) {
    replaceFile(machine.permissionCanary(), "");
}

void Permission::revoke(const MachinePaths& machine) {
    fs::remove(machine.permissionCanary());
}

} // namespace tallyglass
