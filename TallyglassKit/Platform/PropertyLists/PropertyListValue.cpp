#include "TallyglassKit/Platform/PropertyLists/PropertyListValue.h"

#include <cmath>

namespace tallyglass {

static_assert(sizeof(PropertyListValue) == 16);

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

std::optional<PropertyListDictionary> PropertyListValue::dictionary() const {
    if (kind() != Kind::dictionary)
        return {};
    return PropertyListDictionary(*this);
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
    if (kind() != Kind::dictionary)
        return {};
    return PropertyListDictionary(*this).find(key);
}

} // namespace tallyglass
