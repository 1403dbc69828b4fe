#include "TallyglassKit/Platform/PropertyLists/PropertyListDictionary.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/PropertyListStorage.h"

#include <bit>
#include <cstring>
#include <random>

namespace tallyglass {

namespace {

// Up to so many pairs, comparing hashes one after the other is as fast as a table.
constexpr std::size_t largestWithoutTable = 12;

constexpr int hashBits = 24;

std::size_t tableSlots(std::size_t count) {
    return std::bit_ceil(count + count / 2);
}

// The low bits of slots beyond the hash are found by probing.
std::size_t firstSlot(std::uint32_t hash, std::size_t slots) {
    const int bits = std::countr_zero(slots);
    return bits <= hashBits ? hash >> (hashBits - bits) : std::size_t{hash} << (bits - hashBits);
}

template <typename T>
std::uint64_t load(const char* place) {
    T value;
    std::memcpy(&value, place, sizeof value);
    return value;
}

// Both halves of the product depend on every bit of the factors.
std::uint64_t mix(std::uint64_t a, std::uint64_t b) {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

struct Seed {
    std::uint64_t first;
    std::uint64_t second;
};

Seed makeSeed() {
    std::random_device device;
    const auto word = [&] { return std::uint64_t{device()} << 32 | device() | 1; };
    return {word(), word()};
}

} // namespace

std::uint32_t PropertyListDictionary::hash(std::string_view text) {
    static const Seed seed = makeSeed();
    const char* const start = text.data();
    const std::size_t size = text.size();
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::uint64_t state = seed.second ^ size;
    if (size > 16) {
        for (std::size_t i = 0; i + 16 < size; i += 16)
            state =
                mix(load<std::uint64_t>(start + i) ^ seed.first, load<std::uint64_t>(start + i + 8) ^ state);
        a = load<std::uint64_t>(start + size - 16);
        b = load<std::uint64_t>(start + size - 8);
    } else if (size >= 8) {
        a = load<std::uint64_t>(start);
        b = load<std::uint64_t>(start + size - 8);
    } else if (size >= 4) {
        a = load<std::uint32_t>(start);
        b = load<std::uint32_t>(start + size - 4);
    } else if (size > 0) {
        a = load<std::uint8_t>(start);
        b = load<std::uint8_t>(start + size / 2) << 8 | load<std::uint8_t>(start + size - 1);
    }
    const auto result = static_cast<std::uint32_t>(mix(a ^ seed.first, b ^ state) >> (64 - hashBits));
    return result ? result : 1;
}

std::size_t PropertyListDictionary::indexSize(std::size_t count) {
    return count > largestWithoutTable ? tableSlots(count) * sizeof(std::uint32_t) : 0;
}

bool PropertyListDictionary::isSame(const PropertyListValue& a, const PropertyListValue& b) {
    return a.m_head == b.m_head && a.m_size == b.m_size &&
           (a.m_bytes == b.m_bytes || std::memcmp(a.m_bytes, b.m_bytes, a.m_size) == 0);
}

std::size_t PropertyListDictionary::search(const PropertyListValue* pairs, std::size_t count,
                                           const PropertyListValue& key) {
    std::size_t pair = 0;
    while (pair < count && !isSame(pairs[2 * pair], key))
        ++pair;
    return pair;
}

std::size_t PropertyListDictionary::slotOf(const PropertyListValue* pairs, const std::uint32_t* table,
                                           std::size_t slots, const PropertyListValue& key) {
    std::size_t slot = firstSlot(key.tag(), slots);
    while (table[slot] && !isSame(pairs[2 * (table[slot] - 1)], key))
        slot = (slot + 1) & (slots - 1);
    return slot;
}

std::size_t PropertyListDictionary::makeIndex(PropertyListValue* pairs, std::size_t count,
                                              DuplicateKeys duplicates) {
    const bool hasTable = count > largestWithoutTable;
    const std::size_t slots = hasTable ? tableSlots(count) : 0;
    auto* const table = reinterpret_cast<std::uint32_t*>(pairs + 2 * count);
    if (hasTable)
        std::memset(table, 0, slots * sizeof *table);

    std::size_t unique = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const PropertyListValue key = pairs[2 * i];
        std::size_t pair = 0;
        if (hasTable) {
            auto& slot = table[slotOf(pairs, table, slots, key)];
            if (slot == 0)
                slot = static_cast<std::uint32_t>(unique + 1);
            pair = slot - 1;
        } else {
            pair = search(pairs, unique, key);
        }
        const bool isNew = pair == unique;
        if (isNew)
            pairs[2 * unique++] = key;
        if (isNew || duplicates == DuplicateKeys::lastWins)
            pairs[2 * pair + 1] = pairs[2 * i + 1];
    }
    // The number of pairs tells where the table stands and how large it is.
    return hasTable && unique < count ? makeIndex(pairs, unique, duplicates) : unique;
}

std::optional<PropertyListValue> PropertyListDictionary::find(std::string_view key) const {
    if (key.size() > UINT32_MAX || empty())
        return {};
    const PropertyListValue wanted = PropertyListStorage::asKey(PropertyListValue::ofText(key));
    const PropertyListValue* const pairs = m_value.m_elements;
    std::size_t pair = 0;
    if (size() > largestWithoutTable) {
        const auto* const table = reinterpret_cast<const std::uint32_t*>(pairs + 2 * size());
        const std::uint32_t slot = table[slotOf(pairs, table, tableSlots(size()), wanted)];
        pair = slot ? slot - 1 : size();
    } else {
        pair = search(pairs, size(), wanted);
    }
    if (pair == size())
        return {};
    return pairs[2 * pair + 1];
}

} // namespace tallyglass
