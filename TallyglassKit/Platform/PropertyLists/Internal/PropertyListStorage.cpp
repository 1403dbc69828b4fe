#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/KeyTable.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <new>

namespace tallyglass {

namespace {

constexpr std::size_t smallestBlock = 4 << 10;
constexpr std::size_t largestBlock = 4 << 20;

} // namespace

char* PropertyListStorage::allocateBytes(std::size_t size, bool aligned) {
    if (size > static_cast<std::size_t>(m_back - m_front)) {
        const std::size_t usual = std::clamp(std::bit_ceil(m_size), smallestBlock, largestBlock);
        // Large allocations get a block of their own, so that at most a quarter of a block is wasted.
        const bool alone = size > usual / 4;
        const std::size_t blockSize = alone ? size : usual;
        MemoryBlock& newest = m_blocks.emplace_back();
        if (!newest.resize(blockSize))
            throw std::bad_alloc();
        m_size += blockSize;
        char* const block = newest.start();
        if (alone)
            return block;
        m_front = block;
        m_back = block + blockSize;
    }
    if (!aligned)
        return m_back -= size;
    char* const result = m_front;
    m_front += size;
    return result;
}

std::string_view PropertyListStorage::keep(std::string_view bytes) {
    if (bytes.empty())
        return "";
    char* const copy = allocateBytes(bytes.size(), false);
    std::memcpy(copy, bytes.data(), bytes.size());
    return {copy, bytes.size()};
}

std::span<PropertyListValue> PropertyListStorage::allocate(PropertyListValue::Kind kind, std::size_t count) {
    const bool isDictionary = kind == PropertyListValue::Kind::dictionary;
    const std::size_t values = isDictionary ? 2 * count : count;
    if (values == 0)
        return {};
    const std::size_t tableSize = isDictionary ? keyTableSize(count) * sizeof(std::uint32_t) : 0;
    char* const memory = allocateBytes(values * sizeof(PropertyListValue) + tableSize, true);
    return {reinterpret_cast<PropertyListValue*>(memory), values};
}

PropertyListValue PropertyListStorage::finish(PropertyListValue::Kind kind,
                                              std::span<PropertyListValue> values, unsigned nesting,
                                              DuplicateKeys duplicates) {
    std::size_t count = values.size();
    if (kind == PropertyListValue::Kind::dictionary)
        count = makeKeyTable(values.data(), count / 2, duplicates);
    return {kind, nesting, count, values.data()};
}

PropertyListValue PropertyListStorage::asKey(PropertyListValue text) {
    if (isKey(text))
        return text;
    const std::string_view key(text.m_bytes, text.m_size);
    return {PropertyListValue::Kind::text, key, keyHash(key)};
}

std::size_t PropertyListStorage::makeKeyTable(PropertyListValue* pairs, std::size_t count,
                                              DuplicateKeys duplicates) {
    const std::span table(reinterpret_cast<std::uint32_t*>(pairs + 2 * count), keyTableSize(count));
    std::ranges::fill(table, 0);

    std::size_t unique = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const PropertyListValue key = pairs[2 * i];
        std::size_t pair = 0;
        if (table.empty()) {
            pair = PropertyListValue::findPair(pairs, unique, key);
        } else {
            auto& slot = table[findKeySlot(table, key.tag(), [&](std::size_t other) {
                return PropertyListValue::isSameKey(pairs[2 * other], key);
            })];
            if (slot == 0)
                slot = static_cast<std::uint32_t>(unique + 1);
            pair = slot - 1;
        }
        const bool isNew = pair == unique;
        if (isNew)
            pairs[2 * unique++] = key;
        if (isNew || duplicates == DuplicateKeys::lastWins)
            pairs[2 * pair + 1] = pairs[2 * i + 1];
    }
    // The number of pairs tells where the table is and how large.
    return !table.empty() && unique < count ? makeKeyTable(pairs, unique, duplicates) : unique;
}

} // namespace tallyglass
