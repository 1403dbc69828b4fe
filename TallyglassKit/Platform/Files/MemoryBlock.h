// Uninitialised memory that can be resized, made for blocks that become very large: those are resized by
// moving their pages instead of their bytes, and lie in huge pages where the system has them.
//
// Since the system clears each page that it gives out, which takes longer than filling it, the last large
// block that was freed is kept for the next one. The system may take its pages at any time without asking.
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

    /// Makes room for at least `size` bytes, or gives back what isn't needed for them, and keeps the bytes
    /// that fit. False, with nothing changed, when there is no memory.
    [[nodiscard]] bool resize(std::size_t size) noexcept;

private:
    void free() noexcept;

    char* m_start = nullptr;
    std::size_t m_size = 0;
};

} // namespace tallyglass
