#include "TallyglassKit/Platform/Files/ByteBuffer.h"

#include "TallyglassKit/Platform/Error.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tallyglass {

ByteBuffer::ByteBuffer(const ByteBuffer& other) {
    append(other.view());
}

ByteBuffer& ByteBuffer::operator=(const ByteBuffer& other) {
    return *this = ByteBuffer(other);
}

ByteBuffer::ByteBuffer(ByteBuffer&& other) noexcept
    : m_block(std::move(other.m_block)), m_size(std::exchange(other.m_size, 0)) {}

ByteBuffer& ByteBuffer::operator=(ByteBuffer&& other) noexcept {
    m_block = std::move(other.m_block);
    m_size = std::exchange(other.m_size, 0);
    return *this;
}

void ByteBuffer::append(std::string_view bytes) {
    if (bytes.empty())
        return;
    std::memcpy(tail(bytes.size()).data(), bytes.data(), bytes.size());
    commit(bytes.size());
}

void ByteBuffer::shrinkToFit() noexcept {
    if (m_size < m_block.size())
        static_cast<void>(m_block.resize(m_size)); // without memory for less, more stays
}

std::span<char> ByteBuffer::tail(std::size_t minimum) {
    if (m_block.size() - m_size < minimum) {
        const bool isPossible = minimum <= PTRDIFF_MAX - m_size;
        if (!isPossible || !m_block.resize(std::max(m_size + minimum, m_size * 2)))
            throw Error("Cannot allocate memory");
    }
    return {m_block.start() + m_size, m_block.size() - m_size};
}

} // namespace tallyglass
