// The program's own settings, kept across launches as keys with lists of text in one small file.
//
// Thread-safe, and safe between processes: each operation reads the file anew, and each change holds the
// file's lock and replaces the file whole, so that no change of another is lost and no reader sees half of
// one. Keys and values of other shapes are kept as they are.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class UserDefaults {
public:
    /// The settings in `file`, which needs not exist yet.
    explicit UserDefaults(std::filesystem::path file = standardFile());

    /// "Tallyglass/defaults.json" in the per-user data folder.
    [[nodiscard]] static std::filesystem::path standardFile();

    /// The list at `key`. Absent if the key is unset, holds anything else, or the file can't be read.
    [[nodiscard]] std::optional<std::vector<std::string>> stringArray(std::string_view key) const;

    /// Sets `key` to the list. A file that isn't ours to understand is set aside as "<file>.broken" first.
    /// Throws Error if the file can't be written; then the old one stands.
    void setStringArray(std::string_view key, const std::vector<std::string>& value) const;

private:
    std::filesystem::path m_file;
};

} // namespace tallyglass
