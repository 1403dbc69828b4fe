// The exclusions from a machine's backups: the paths in its preferences, the items with the exclusion marker,
// system folders, and the backups themselves.
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
    /// The rules of a machine from its current preferences.
    ExclusionRules(const MachinePaths& machine, const HostPreferences& preferences);

    /// Whether a rule names `path` itself. The caller checks its ancestors.
    [[nodiscard]] bool excludesItself(const std::string& path) const;

    /// Whether `path` or an ancestor is excluded.
    [[nodiscard]] bool excludes(const std::string& path) const;

private:
    std::vector<std::string> m_paths; ///< sorted
};

/// The attribute of an item that excludes it from backups, wherever it is moved.
struct ExclusionMarker {
    static constexpr auto attribute = "com.apple.metadata:com_apple_backup_excludeItem";

    [[nodiscard]] static bool isOn(const std::string& path);
    // These throw FileError.
    static void put(const std::string& path);
    static void remove(const std::string& path);
};

} // namespace tallyglass
