#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include "TallyglassKit/Platform/PropertyLists/Internal/KeyTable.h"

#include <cmath>
#include <cstring>

namespace tallyglass {

static_assert(sizeof(PropertyListValue) == 16);
static_assert(sizeof(PropertyListPair) == 2 * sizeof(PropertyListValue));

std::optional<bool> PropertyListValue::boolean() const {
    if (kind() != Kind::boolean)
        return {};
    return m_integer != 0;
}

std::optional<std::int64_t> PropertyListValue::integer() const {
    if (kind() != Kind::integer || tag())
        return {};
    return m_integer;
}

std::optional<std::uint64_t> PropertyListValue::unsignedInteger() const {
    if (kind() != Kind::integer || (m_integer < 0 && !tag()))
        return {};
    return static_cast<std::uint64_t>(m_integer);
}

std::optional<double> PropertyListValue::real() const {
    if (kind() != Kind::real)
        return {};
    return m_real;
}

std::optional<std::uint64_t> PropertyListValue::uid() const {
    if (kind() != Kind::uid)
        return {};
    return static_cast<std::uint64_t>(m_integer);
}

std::optional<std::string_view> PropertyListValue::text() const {
    if (kind() != Kind::text)
        return {};
    return std::string_view(m_bytes, m_size);
}

std::optional<std::string_view> PropertyListValue::data() const {
    if (kind() != Kind::data)
        return {};
    return std::string_view(m_bytes, m_size);
}

std::optional<double> PropertyListValue::secondsSince2001() const {
    if (kind() != Kind::date)
        return {};
    return m_real;
}

std::optional<Date> PropertyListValue::date() const {
    if (kind() != Kind::date)
        return {};
    return dateSince2001(m_real);
}

std::optional<std::span<const PropertyListValue>> PropertyListValue::array() const {
    if (kind() != Kind::array)
        return {};
    return elements();
}

std::optional<std::span<const PropertyListValue>> PropertyListValue::set() const {
    if (kind() != Kind::set)
        return {};
    return elements();
}

std::optional<std::span<const PropertyListPair>> PropertyListValue::dictionary() const {
    if (kind() != Kind::dictionary)
        return {};
    return std::span(reinterpret_cast<const PropertyListPair*>(m_elements), m_size);
}

std::optional<double> PropertyListValue::number() const {
    if (kind() == Kind::real)
        return m_real;
    if (kind() != Kind::integer && kind() != Kind::boolean)
        return {};
    return tag() ? static_cast<double>(static_cast<std::uint64_t>(m_integer))
                 : static_cast<double>(m_integer);
}

std::optional<std::int64_t> PropertyListValue::exactInteger() const {
    const auto result = truncatedInteger();
    if (result && kind() == Kind::real && std::trunc(m_real) != m_real)
        return {};
    return result;
}

std::optional<std::int64_t> PropertyListValue::truncatedInteger() const {
    if (kind() == Kind::real) {
        const double limit = 0x1p63;
        if (!(m_real >= -limit && m_real < limit)) // false for a NaN
            return {};
        return static_cast<std::int64_t>(m_real);
    }
    if (kind() == Kind::boolean)
        return m_integer;
    return integer();
}

std::optional<PropertyListValue> PropertyListValue::find(std::string_view key) const {
    if (kind() != Kind::dictionary || m_size == 0 || key.size() > UINT32_MAX)
        return {};
    const std::size_t pair = findPair(m_elements, m_size, {Kind::text, key, keyHash(key)});
    if (pair == m_size)
        return {};
    return m_elements[2 * pair + 1];
}

std::size_t PropertyListValue::findPair(const PropertyListValue* pairs, std::size_t count,
                                        const PropertyListValue& key) {
    if (const std::size_t slots = keyTableSize(count); slots > 0) {
        const std::span table(reinterpret_cast<const std::uint32_t*>(pairs + 2 * count), slots);
        const auto found = table[findKeySlot(
            table, key.tag(), [&](std::size_t pair) { return isSameKey(pairs[2 * pair], key); })];
        return found ? found - 1 : count;
    }
    std::size_t pair = 0;
    while (pair < count && !isSameKey(pairs[2 * pair], key))
        ++pair;
    return pair;
}

bool PropertyListValue::isSameKey(const PropertyListValue& a, const PropertyListValue& b) {
    return a.m_head == b.m_head && a.m_size == b.m_size &&
           (a.m_bytes == b.m_bytes || std::memcmp(a.m_bytes, b.m_bytes, a.m_size) == 0);
}

} // namespace tallyglass
