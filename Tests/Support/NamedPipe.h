// A named pipe by which a test releases a waiting child. A child waits by opening it for reading.

#pragma once

#include <filesystem>

namespace tallyglass::test {

class NamedPipe {
public:
    /// Creates the pipe.
    explicit NamedPipe(std::filesystem::path path);

    [[nodiscard]] std::string path() const { return m_path.string(); }

    /// Waits until a child is waiting, and releases it.
    void release() const;

private:
    std::filesystem::path m_path;
};

} // namespace tallyglass::test
