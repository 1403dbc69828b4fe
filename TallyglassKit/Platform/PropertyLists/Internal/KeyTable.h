// The hash table by which a dictionary of many pairs finds a key in constant time: a power of two of slots,
// each free (0) or with the number of a pair, counted from 1; open addressing with linear probing.
//
// Functions on memory of the caller. Any thread.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tallyglass {

/// How many bits of a hash are used.
inline constexpr int keyHashBits = 24;

/// The hash of a key: 24 bits, never 0. The seed differs in each run, so that nobody can write a list in
/// which all keys collide.
[[nodiscard]] std::uint32_t keyHash(std::string_view key);

/// The slots of the table for `pairs` pairs; none for a dictionary that is searched as fast without one.
[[nodiscard]] std::size_t keyTableSize(std::size_t pairs);

/// The slot of the pair with this hash for which `isWanted(pair)` holds, pairs counted from 0, or the free
/// slot for it. Requires: a slot is free.
template <typename Predicate>
[[nodiscard]] std::size_t findKeySlot(std::span<const std::uint32_t> table, std::uint32_t hash,
                                      Predicate isWanted) {
    // Of a table larger than the range of the hash, probing reaches the other slots.
    const int bits = std::countr_zero(table.size());
    std::size_t slot =
        bits <= keyHashBits ? hash >> (keyHashBits - bits) : std::size_t{hash} << (bits - keyHashBits);
    while (table[slot] && !isWanted(table[slot] - 1))
        slot = (slot + 1) & (table.size() - 1);
    return slot;
}

} // namespace tallyglass
