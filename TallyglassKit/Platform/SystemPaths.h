// The locations of system files: every absolute system path of the program is looked up here, under a root
// folder. On macOS the root is "/". Elsewhere it is the folder in the environment variable TALLYGLASS_ROOT,
// or else "Tallyglass/root" in the per-user data folder, which is how the program runs on a machine without
// Time Machine.
//
// A value; any thread.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tallyglass {

class SystemPaths {
public:
    /// The paths under `root`, which is made absolute.
    explicit SystemPaths(const std::filesystem::path& root);

    /// The paths for this process, from its current environment.
    [[nodiscard]] static SystemPaths standard();

    /// The per-user folder in which programs keep their data: $XDG_DATA_HOME, or else ~/.local/share.
    [[nodiscard]] static std::filesystem::path applicationSupportFolder();

    [[nodiscard]] const std::filesystem::path& root() const { return m_root; }

    /// The location of an absolute system path such as "/usr/bin/tmutil" under the root.
    [[nodiscard]] std::string path(std::string_view absolute) const;

    friend bool operator==(const SystemPaths&, const SystemPaths&) = default;

private:
    std::filesystem::path m_root;
};

} // namespace tallyglass
