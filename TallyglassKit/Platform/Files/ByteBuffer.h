// Bytes in one block that grows at its end, for reading streams of unknown length: data is read directly into
// the uninitialised tail, and large blocks grow without being copied.
//
// A value; different threads may read one object at once. Running out of memory throws an Error.

#pragma once

#include "TallyglassKit/Platform/Files/MemoryBlock.h"

#include <concepts>
#include <cstddef>
#include <span>
#include <string_view>
#include <utility>

namespace tallyglass {

class ByteBuffer {
public:
    ByteBuffer() noexcept = default;
    /// A copy of `text`: any string, literal or view.
    template <std::convertible_to<std::string_view> Text>
        requires(!std::same_as<Text, ByteBuffer>)
    ByteBuffer(const Text& text) { // implicit, as between std::string and its literals
        append(text);
    }
    ByteBuffer(const ByteBuffer& other);
    ByteBuffer& operator=(const ByteBuffer& other);
    /// A buffer that was moved from is empty.
    ByteBuffer(ByteBuffer&& other) noexcept;
    ByteBuffer& operator=(ByteBuffer&& other) noexcept;
    ~ByteBuffer() = default;

    /// The bytes, valid until the next change.
    [[nodiscard]] std::string_view view() const noexcept { return {m_block.start(), m_size}; }
    operator std::string_view() const noexcept { return view(); }
    [[nodiscard]] std::size_t size() const noexcept { return m_size; }
    [[nodiscard]] bool empty() const noexcept { return m_size == 0; }

    void append(std::string_view bytes);
    /// Drops the bytes and keeps the memory.
    void clear() noexcept { m_size = 0; }
    /// Frees the unused memory.
    void shrinkToFit() noexcept;

    /// The unused memory behind the last byte, at least `minimum` bytes of it, uninitialised. Valid until the
    /// next change.
    [[nodiscard]] std::span<char> tail(std::size_t minimum);
    /// Appends the first `count` bytes of the tail. Requires: they have been written.
    void commit(std::size_t count) noexcept { m_size += count; }

    friend bool operator==(const ByteBuffer& a, const ByteBuffer& b) noexcept { return a.view() == b.view(); }

private:
    MemoryBlock m_block;
    std::size_t m_size = 0;
};

} // namespace tallyglass
