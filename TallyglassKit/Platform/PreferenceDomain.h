// A domain of the system's preferences, read from the property list in which the system keeps it.
//
// A snapshot of the file when it was opened. Immutable; any thread may read it. Its values are valid for its
// lifetime.

#pragma once

#include "TallyglassKit/Platform/PropertyLists/PropertyList.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <optional>
#include <span>
#include <string_view>

namespace tallyglass {

class PreferenceDomain {
public:
    /// The domain "com.example.Name" from "/Library/Preferences/com.example.Name.plist". Absent if that file
    /// is missing, unreadable or holds no dictionary.
    [[nodiscard]] static std::optional<PreferenceDomain>
    open(std::string_view name, const SystemPaths& paths = SystemPaths::standard());

    /// The value at `key`, absent if there is none.
    [[nodiscard]] std::optional<PropertyListValue> object(std::string_view key) const;

    /// The array at `key`, absent if there is no array.
    [[nodiscard]] std::optional<std::span<const PropertyListValue>> array(std::string_view key) const;

    /// The value at `key` by the system's rules for boolean preferences: a number is true unless it is 0, a
    /// text as booleanOfText() says. False for anything else and without a value.
    [[nodiscard]] bool boolean(std::string_view key) const;

private:
    explicit PreferenceDomain(PropertyList list) : m_list(std::move(list)) {}

    PropertyList m_list;
};

} // namespace tallyglass
