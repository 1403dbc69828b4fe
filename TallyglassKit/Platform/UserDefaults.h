// The program's own settings, persisted as keys with lists of strings in one small file.
//
// Thread-safe, and safe between processes: each operation reads the file, and each change locks it and
// replaces it atomically, so that no concurrent change is lost and no reader sees a partial one. Other keys,
// and values of other types, are preserved.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class UserDefaults {
public:
    /// The settings in `file`, which need not exist yet.
    explicit UserDefaults(std::filesystem::path file = standardFile());

    /// "Tallyglass/defaults.json" in the per-user data folder.
    [[nodiscard]] static std::filesystem::path standardFile();

    /// The list at `key`. Absent if the key is unset or holds anything else, or the file can't be read.
    [[nodiscard]] std::optional<std::vector<std::string>> stringArray(std::string_view key) const;

    /// Sets `key` to the list. An unreadable file is first renamed to "<file>.broken". Throws Error if the
    /// file can't be written; it is then unchanged.
    void setStringArray(std::string_view key, const std::vector<std::string>& value) const;

private:
    std::filesystem::path m_file;
};

} // namespace tallyglass
