// The locations of Time Machine's files of a host machine, under its root.
//
// A value; any thread. All paths are real paths of the host.

#pragma once

#include "TallyglassKit/Access/FullDiskAccessProbe.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace tallyglass {

class MachinePaths {
public:
    explicit MachinePaths(SystemPaths paths) : m_paths(std::move(paths)) {}

    /// The machine for a program started as `invocation`: the path before "/usr/bin/tmutil" is the root, so
    /// that each machine's own link selects it; else the root of this process's environment.
    [[nodiscard]] static MachinePaths ofInvocation(std::string_view invocation);

    [[nodiscard]] std::filesystem::path root() const { return m_paths.root(); }
    [[nodiscard]] std::filesystem::path under(std::string_view absolute) const {
        return m_paths.path(absolute);
    }

    [[nodiscard]] std::filesystem::path preferences() const {
        return under("/Library/Preferences/com.apple.TimeMachine.plist");
    }
    /// The canary file that can be opened only with the permission to read backups.
    [[nodiscard]] std::filesystem::path permissionCanary() const {
        return under(FullDiskAccessProbe::canaryPath);
    }
    [[nodiscard]] std::filesystem::path tool() const { return under("/usr/bin/tmutil"); }
    /// The folder for the running backup's lock, state and lists.
    [[nodiscard]] std::filesystem::path runFolder() const { return under("/var/run/backupd"); }

    [[nodiscard]] std::filesystem::path backups() const { return under("/Volumes/.timemachine"); }
    /// The folder of a destination's backups.
    [[nodiscard]] std::filesystem::path backups(const std::string& destinationUUID) const {
        return backups() / destinationUUID;
    }
    /// The mount point of a destination of that name.
    [[nodiscard]] std::filesystem::path mountPoint(const std::string& volumeName) const {
        return under("/Volumes") / volumeName;
    }

private:
    SystemPaths m_paths;
};

/// Whether `path` is `folder` or inside it, by their text.
[[nodiscard]] bool isWithin(std::string_view path, std::string_view folder);

} // namespace tallyglass
