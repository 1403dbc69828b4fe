// A file descriptor that closes itself. Moves and doesn't copy; one thread at a time.

#pragma once

#include <unistd.h>

#include <utility>

namespace tallyglass {

class FileDescriptor {
public:
    FileDescriptor() noexcept = default;
    /// Takes `number` over; a negative one owns nothing.
    explicit FileDescriptor(int number) noexcept : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        other.close();
        return *this;
    }
    ~FileDescriptor() { close(); }

    /// The number, -1 when closed.
    [[nodiscard]] int number() const noexcept { return m_number; }
    [[nodiscard]] bool isOpen() const noexcept { return m_number >= 0; }

    /// Gives the descriptor away, open.
    int release() noexcept { return std::exchange(m_number, -1); }
    void close() noexcept {
        if (isOpen())
            ::close(release());
    }

private:
    int m_number = -1;
};

} // namespace tallyglass
