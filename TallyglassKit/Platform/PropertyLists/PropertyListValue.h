// One value of a property list: a scalar, or a container of further values.
//
// A value is a handle of 16 bytes that borrows from its PropertyList and is valid for the lifetime of that.
// Immutable; any thread may read it. The values of a list form a graph without cycles, nested at most 512
// deep. A list in the binary form can share one container between many parents, so that visiting every path
// may take exponential time: code that walks a whole list limits the steps or remembers the visited
// containers.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tallyglass {

class PropertyListPair;

class PropertyListValue {
public:
    enum class Kind : std::uint8_t {
        null,
        boolean,
        integer,
        real,
        date,
        uid,
        text,
        data,
        array,
        set,
        dictionary,
    };

    /// The null value.
    PropertyListValue() = default;

    // Scalars. Text and data borrow their bytes.
    [[nodiscard]] static PropertyListValue ofBoolean(bool value) {
        return {Kind::boolean, 0, std::int64_t{value}};
    }
    [[nodiscard]] static PropertyListValue ofInteger(std::int64_t value) { return {Kind::integer, 0, value}; }
    [[nodiscard]] static PropertyListValue ofUnsigned(std::uint64_t value) {
        return {Kind::integer, value > INT64_MAX, static_cast<std::int64_t>(value)};
    }
    [[nodiscard]] static PropertyListValue ofReal(double value) { return {Kind::real, value}; }
    [[nodiscard]] static PropertyListValue ofDate(double secondsSince2001) {
        return {Kind::date, secondsSince2001};
    }
    [[nodiscard]] static PropertyListValue ofUID(std::uint64_t value) {
        return {Kind::uid, 0, static_cast<std::int64_t>(value)};
    }
    [[nodiscard]] static PropertyListValue ofText(std::string_view utf8) { return {Kind::text, utf8}; }
    [[nodiscard]] static PropertyListValue ofData(std::string_view bytes) { return {Kind::data, bytes}; }

    [[nodiscard]] Kind kind() const { return static_cast<Kind>(m_head & 0xFF); }
    [[nodiscard]] bool isNull() const { return kind() == Kind::null; }
    [[nodiscard]] bool isDictionary() const { return kind() == Kind::dictionary; }

    // Absent if the value is of another kind.
    [[nodiscard]] std::optional<bool> boolean() const;
    /// Absent also for an integer of 2^63 or more.
    [[nodiscard]] std::optional<std::int64_t> integer() const;
    /// Absent also for a negative integer.
    [[nodiscard]] std::optional<std::uint64_t> unsignedInteger() const;
    [[nodiscard]] std::optional<double> real() const;
    [[nodiscard]] std::optional<std::uint64_t> uid() const;
    /// UTF-8, always valid.
    [[nodiscard]] std::optional<std::string_view> text() const;
    [[nodiscard]] std::optional<std::string_view> data() const;
    [[nodiscard]] std::optional<Date> date() const;
    /// The date as stored, without rounding. Can be infinite or NaN.
    [[nodiscard]] std::optional<double> secondsSince2001() const;
    [[nodiscard]] std::optional<std::span<const PropertyListValue>> array() const;
    [[nodiscard]] std::optional<std::span<const PropertyListValue>> set() const;
    /// The pairs in the order of the file. No key occurs twice.
    [[nodiscard]] std::optional<std::span<const PropertyListPair>> dictionary() const;

    // Any number (integer, real or boolean) in one type.
    [[nodiscard]] std::optional<double> number() const;
    /// Absent if the number isn't an integer or doesn't fit.
    [[nodiscard]] std::optional<std::int64_t> exactInteger() const;
    /// Truncated toward zero. Absent if it doesn't fit or is NaN.
    [[nodiscard]] std::optional<std::int64_t> truncatedInteger() const;

    /// The value of a key, found in constant time. Absent if there is none, or if this isn't a dictionary.
    [[nodiscard]] std::optional<PropertyListValue> find(std::string_view key) const;

    /// Identifies a container that isn't empty: a shared one has the same identity everywhere.
    [[nodiscard]] const void* identity() const { return kind() >= Kind::array ? m_elements : nullptr; }

    /// The depth of nesting: 0 for a scalar, 1 for a container without another in it.
    [[nodiscard]] unsigned nesting() const { return kind() >= Kind::array ? tag() : 0; }

private:
    friend class PropertyListStorage;
    friend class PropertyListBuilder;

    // The tag holds the nesting of a container, the hash of a text that is a key (else 0), or 1 for an
    // integer that is unsigned.
    PropertyListValue(Kind kind, std::uint32_t tag, std::int64_t integer)
        : m_head(head(kind, tag)), m_integer(integer) {}
    PropertyListValue(Kind kind, double real) : m_head(head(kind, 0)), m_real(real) {}
    PropertyListValue(Kind kind, std::string_view bytes, std::uint32_t tag = 0)
        : m_head(head(kind, tag)), m_size(static_cast<std::uint32_t>(bytes.size())),
          m_bytes(bytes.empty() ? "" : bytes.data()) {}
    PropertyListValue(Kind kind, std::uint32_t tag, std::size_t size, const PropertyListValue* elements)
        : m_head(head(kind, tag)), m_size(static_cast<std::uint32_t>(size)), m_elements(elements) {}
    static std::uint32_t head(Kind kind, std::uint32_t tag) {
        return static_cast<std::uint32_t>(kind) | tag << 8;
    }
    [[nodiscard]] std::uint32_t tag() const { return m_head >> 8; }
    [[nodiscard]] std::span<const PropertyListValue> elements() const { return {m_elements, m_size}; }
    [[nodiscard]] static bool isSameKey(const PropertyListValue& a, const PropertyListValue& b);
    /// The pair with the key, or `count`. `pairs` is key, value, key, value...
    [[nodiscard]] static std::size_t findPair(const PropertyListValue* pairs, std::size_t count,
                                              const PropertyListValue& key);

    std::uint32_t m_head = 0;
    std::uint32_t m_size = 0; // bytes, elements or pairs
    union {
        std::int64_t m_integer = 0;
        double m_real;
        const char* m_bytes;
        const PropertyListValue* m_elements; // of a dictionary: key, value, key, value... and the key table
    };
};

/// One entry of a dictionary. Borrows as its values do.
class PropertyListPair {
public:
    [[nodiscard]] std::string_view key() const { return *m_key.text(); }
    [[nodiscard]] const PropertyListValue& value() const { return m_value; }

private:
    PropertyListValue m_key;
    PropertyListValue m_value;
};

} // namespace tallyglass
