// The pairs of a dictionary in a property list, in the order of the file. No key occurs twice. A handle of 16
// bytes that borrows, as a PropertyListValue does. Immutable; any thread may read it.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace tallyglass {

/// Which value a key has that occurs twice in a dictionary. It stands in the place of the first either way.
enum class DuplicateKeys { firstWins, lastWins };

class PropertyListDictionary {
public:
    struct Pair {
        std::string_view key;
        PropertyListValue value;
    };

    class Iterator {
    public:
        using value_type = Pair;
        using difference_type = std::ptrdiff_t;

        Iterator() = default;
        explicit Iterator(const PropertyListValue* place) : m_place(place) {}
        Pair operator*() const { return {*m_place[0].text(), m_place[1]}; }
        Iterator& operator++() {
            m_place += 2;
            return *this;
        }
        Iterator operator++(int) {
            const auto before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        const PropertyListValue* m_place = nullptr;
    };

    [[nodiscard]] std::size_t size() const { return m_value.m_size; }
    [[nodiscard]] bool empty() const { return size() == 0; }
    [[nodiscard]] Iterator begin() const { return Iterator(m_value.m_elements); }
    [[nodiscard]] Iterator end() const { return Iterator(m_value.m_elements + 2 * size()); }

    /// The value of a key, found in constant time.
    [[nodiscard]] std::optional<PropertyListValue> find(std::string_view key) const;

private:
    friend class PropertyListValue;
    friend class PropertyListStorage;
    friend class PropertyListBuilder;
    explicit PropertyListDictionary(PropertyListValue value) : m_value(value) {}

    // A dictionary of more than a few pairs has a hash table behind them, of which these tell the size in
    // bytes and the making. The latter returns how many pairs remain without the duplicates.
    [[nodiscard]] static std::size_t indexSize(std::size_t count);
    static std::size_t makeIndex(PropertyListValue* pairs, std::size_t count, DuplicateKeys duplicates);

    // Two keys with their hashes; the pair with a key, or `count`; the slot with a key, or the free one for
    // it.
    [[nodiscard]] static bool isSame(const PropertyListValue& a, const PropertyListValue& b);
    [[nodiscard]] static std::size_t search(const PropertyListValue* pairs, std::size_t count,
                                            const PropertyListValue& key);
    [[nodiscard]] static std::size_t slotOf(const PropertyListValue* pairs, const std::uint32_t* table,
                                            std::size_t slots, const PropertyListValue& key);

    // Of a text, never 0, in 24 bits. The seed differs in each run, so that nobody can write a list of which
    // all keys collide.
    [[nodiscard]] static std::uint32_t hash(std::string_view text);

    PropertyListValue m_value;
};

static_assert(std::input_iterator<PropertyListDictionary::Iterator>);

} // namespace tallyglass
