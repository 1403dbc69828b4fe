#include "TallyglassKit/Platform/PropertyListStorage.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tallyglass {

namespace {

constexpr std::size_t smallestBlock = 4 << 10;
constexpr std::size_t largestBlock = 1 << 20;

} // namespace

std::byte* PropertyListStorage::allocateBytes(std::size_t size, bool aligned) {
    if (size > static_cast<std::size_t>(m_back - m_front)) {
        const std::size_t usual = std::clamp(std::bit_ceil(m_size), smallestBlock, largestBlock);
        // What is large gets a block of its own, so that at most a quarter of a block is lost at its end.
        const bool alone = size > usual / 4;
        const std::size_t blockSize = alone ? size : usual;
        m_blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(blockSize));
        m_size += blockSize;
        std::byte* const block = m_blocks.back().get();
        if (alone)
            return block;
        m_front = block;
        m_back = block + blockSize;
    }
    if (!aligned)
        return m_back -= size;
    std::byte* const result = m_front;
    m_front += size;
    return result;
}

std::string_view PropertyListStorage::keep(std::string_view bytes) {
    if (bytes.empty())
        return "";
    std::byte* const copy = allocateBytes(bytes.size(), false);
    std::memcpy(copy, bytes.data(), bytes.size());
    return {reinterpret_cast<const char*>(copy), bytes.size()};
}

std::span<PropertyListValue> PropertyListStorage::allocate(PropertyListValue::Kind kind, std::size_t count) {
    const bool isDictionary = kind == PropertyListValue::Kind::dictionary;
    const std::size_t values = isDictionary ? 2 * count : count;
    if (values == 0)
        return {};
    const std::size_t indexSize = isDictionary ? PropertyListDictionary::indexSize(count) : 0;
    std::byte* const memory = allocateBytes(values * sizeof(PropertyListValue) + indexSize, true);
    return {reinterpret_cast<PropertyListValue*>(memory), values};
}

PropertyListValue PropertyListStorage::finish(PropertyListValue::Kind kind,
                                              std::span<PropertyListValue> values, unsigned nesting,
                                              DuplicateKeys duplicates) {
    std::size_t count = values.size();
    if (kind == PropertyListValue::Kind::dictionary)
        count = PropertyListDictionary::makeIndex(values.data(), count / 2, duplicates);
    PropertyListValue result(kind, nesting, count);
    result.m_elements = values.data();
    return result;
}

PropertyListValue PropertyListStorage::asKey(PropertyListValue text) {
    if (text.tag() == 0)
        text.m_head |= PropertyListDictionary::hash({text.m_bytes, text.m_size}) << 8;
    return text;
}

} // namespace tallyglass
