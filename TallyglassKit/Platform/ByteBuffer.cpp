#include "TallyglassKit/Platform/ByteBuffer.h"

#include "TallyglassKit/Platform/Error.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace tallyglass {

ByteBuffer::ByteBuffer(const ByteBuffer& other) {
    append(other.view());
}

ByteBuffer& ByteBuffer::operator=(const ByteBuffer& other) {
    return *this = ByteBuffer(other);
}

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : m_bytes(std::move(other.m_bytes)), m_size(std::exchange(other.m_size, 0)),
      m_capacity(std::exchange(other.m_capacity, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    if (this != &other) {
        m_bytes = std::move(other.m_bytes);
        m_size = std::exchange(other.m_size, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
    }
    return *this;
}

void ByteBuffer::append(std::string_view bytes) {
    if (bytes.empty())
        return;
    std::memcpy(tail(bytes.size()).data(), bytes.data(), bytes.size());
    commit(bytes.size());
}

void ByteBuffer::shrinkToFit() noexcept {
    if (m_size == 0)
        *this = ByteBuffer();
    else if (auto* block = static_cast<char*>(std::realloc(m_bytes.get(), m_size))) {
        static_cast<void>(m_bytes.release()); // realloc has taken the old block
        m_bytes.reset(block);
        m_capacity = m_size;
    }
}

std::span<char> ByteBuffer::tail(std::size_t minimum) {
    if (m_capacity - m_size < minimum) {
        if (minimum > PTRDIFF_MAX - m_size)
            throw Error("Cannot allocate memory");
        grow(std::max(m_size + minimum, m_size + m_size / 2));
    }
    return {m_bytes.get() + m_size, m_capacity - m_size};
}

void ByteBuffer::grow(std::size_t capacity) {
    auto* block = static_cast<char*>(std::realloc(m_bytes.get(), capacity));
    if (!block)
        throw Error("Cannot allocate memory");
    static_cast<void>(m_bytes.release()); // realloc has taken the old block
    m_bytes.reset(block);
    m_capacity = capacity;
}

} // namespace tallyglass
