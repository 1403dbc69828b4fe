// A pipe with a name, by which a test lets a child go on. A child waits by opening it for reading.

#pragma once

#include <filesystem>

namespace tallyglass::test {

class NamedPipe {
public:
    /// Makes the pipe.
    explicit NamedPipe(std::filesystem::path path);

    [[nodiscard]] std::string path() const { return m_path.string(); }

    /// Waits until a child waits, and lets it go on.
    void release() const;

private:
    std::filesystem::path m_path;
};

} // namespace tallyglass::test
