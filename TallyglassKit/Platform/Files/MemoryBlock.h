// Resizable uninitialised memory. Large blocks have pages of their own: they are resized by moving pages
// instead of bytes, and use huge pages, since faulting in small ones can take longer than filling them.
//
// Moves and doesn't copy; one thread at a time.

#pragma once

#include <cstddef>
#include <utility>

namespace tallyglass {

class MemoryBlock {
public:
    MemoryBlock() noexcept = default;
    MemoryBlock(MemoryBlock&& other) noexcept
        : m_start(std::exchange(other.m_start, nullptr)), m_size(std::exchange(other.m_size, 0)) {}
    MemoryBlock& operator=(MemoryBlock&& other) noexcept {
        std::swap(m_start, other.m_start);
        std::swap(m_size, other.m_size);
        other.free();
        return *this;
    }
    ~MemoryBlock() { free(); }

    [[nodiscard]] char* start() const noexcept { return m_start; }
    [[nodiscard]] std::size_t size() const noexcept { return m_size; }

    /// Grows or shrinks to at least `size` bytes and keeps the bytes that fit. False, with nothing changed,
    /// if there is no memory.
    [[nodiscard]] bool resize(std::size_t size) noexcept;

private:
    void free() noexcept;

    char* m_start = nullptr;
    std::size_t m_size = 0;
};

} // namespace tallyglass
