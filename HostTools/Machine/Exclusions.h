// What a machine's backups leave out: the paths in its preferences, the items that carry the exclusion
// marker, places that hold nothing of the user's, and the machine's own backups.
//
// ExclusionRules is immutable; any thread.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class MachinePaths;
struct HostPreferences;

class ExclusionRules {
public:
    /// The rules of a machine as its preferences stand now.
    ExclusionRules(const MachinePaths& machine, const HostPreferences& preferences);

    /// Whether a rule names `path` itself. What lies in an excluded folder is for the caller, who comes by
    /// the folder first.
    [[nodiscard]] bool excludesItself(const std::string& path) const;

    /// Whether `path` or a folder that it lies in is excluded.
    [[nodiscard]] bool excludes(const std::string& path) const;

private:
    std::vector<std::string> m_paths; ///< sorted
};

/// The marker that an item carries to be left out of backups, wherever it is moved.
struct ExclusionMarker {
    static constexpr auto attribute = "com.apple.metadata:com_apple_backup_excludeItem";

    [[nodiscard]] static bool isOn(const std::string& path);
    // These throw FileError.
    static void put(const std::string& path);
    static void remove(const std::string& path);
};

} // namespace tallyglass
