// A file descriptor that closes itself. Moves and doesn't copy; one thread at a time.

#pragma once

#include <unistd.h>

#include <utility>

namespace tallyglass {

class FileDescriptor {
public:
    FileDescriptor() noexcept = default;
    /// Takes ownership of `fd`; a negative one owns nothing.
    explicit FileDescriptor(int fd) noexcept : m_fd(fd) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_fd, other.m_fd);
        other.close();
        return *this;
    }
    ~FileDescriptor() { close(); }

    /// -1 when closed.
    [[nodiscard]] int fd() const noexcept { return m_fd; }
    [[nodiscard]] bool isOpen() const noexcept { return m_fd >= 0; }

    /// Gives up ownership without closing.
    int release() noexcept { return std::exchange(m_fd, -1); }
    void close() noexcept {
        if (isOpen())
            ::close(release());
    }

private:
    int m_fd = -1;
};

} // namespace tallyglass
