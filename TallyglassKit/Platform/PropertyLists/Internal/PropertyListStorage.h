// The memory of one property list: values and bytes in a few large blocks, freed together. The readers fill
// it, most of them through a PropertyListBuilder.
//
// Used by one thread while it is filled. Moving it leaves every value in place.

#pragma once

#include "TallyglassKit/Platform/Files/MemoryBlock.h"
#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace tallyglass {

/// Which value a key has that occurs twice in a dictionary. Its position is that of the first either way.
enum class DuplicateKeys { firstWins, lastWins };

class PropertyListStorage {
public:
    /// Containers nest no deeper.
    static constexpr unsigned maximumNesting = 512;

    PropertyListStorage() = default;
    PropertyListStorage(PropertyListStorage&&) noexcept = default;
    PropertyListStorage& operator=(PropertyListStorage&&) noexcept = default;

    /// Copies bytes from which values borrow.
    [[nodiscard]] std::string_view keep(std::string_view bytes);

    /// Memory for the elements of an array or a set, or for the pairs of a dictionary: 2 * count values. The
    /// caller writes all of them and then finishes the container.
    [[nodiscard]] std::span<PropertyListValue> allocate(PropertyListValue::Kind kind, std::size_t count);

    /// Creates a container from values that allocate() returned. `nesting` is 1 more than the greatest of the
    /// values. Requires: the keys of a dictionary come from asKey().
    [[nodiscard]] PropertyListValue finish(PropertyListValue::Kind kind, std::span<PropertyListValue> values,
                                           unsigned nesting, DuplicateKeys duplicates);

    /// The text with its hash as a key. Takes time linear in the length of the text, unless it comes from
    /// asKey().
    [[nodiscard]] static PropertyListValue asKey(PropertyListValue text);
    [[nodiscard]] static bool isKey(PropertyListValue text) { return text.tag() != 0; }

    /// The bytes in all blocks.
    [[nodiscard]] std::size_t size() const { return m_size; }

private:
    // A dictionary of more than a few pairs has its key table behind them. Returns how many pairs remain
    // without the duplicates.
    static std::size_t makeKeyTable(PropertyListValue* pairs, std::size_t count, DuplicateKeys duplicates);

    char* allocateBytes(std::size_t size, bool aligned);

    std::vector<MemoryBlock> m_blocks;
    char* m_front =
        nullptr;            // of the newest block: values, which are aligned, are allocated upwards from here
    char* m_back = nullptr; // and bytes downwards from here
    std::size_t m_size = 0;
};

} // namespace tallyglass
