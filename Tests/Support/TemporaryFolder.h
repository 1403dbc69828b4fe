// A temporary folder, removed recursively by the destructor.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tallyglass::test {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return m_path / name; }

    /// Writes a file under the folder, with the folders above it. Returns its path.
    std::filesystem::path write(std::string_view name, std::string_view contents) const;

private:
    std::filesystem::path m_path;
};

/// A program that this build made, such as "tmutil".
[[nodiscard]] std::string program(std::string_view name);

} // namespace tallyglass::test
