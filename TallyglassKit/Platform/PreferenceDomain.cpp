#include "TallyglassKit/Platform/PreferenceDomain.h"

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Text/NumberConversion.h"

#include <string>

namespace tallyglass {

std::optional<PreferenceDomain> PreferenceDomain::open(std::string_view name, const SystemPaths& paths) {
    const std::string file = std::string("/Library/Preferences/").append(name).append(".plist");
    try {
        PropertyList list = PropertyList::parse(readFile(paths.path(file), {}, PropertyList::mostBytes));
        return list.root().isDictionary() ? std::optional(PreferenceDomain(std::move(list))) : std::nullopt;
    } catch (const Error&) {
        return std::nullopt; // an unreadable file counts as missing
    }
}

std::optional<PropertyListValue> PreferenceDomain::object(std::string_view key) const {
    return m_list.root().find(key);
}

std::optional<std::span<const PropertyListValue>> PreferenceDomain::array(std::string_view key) const {
    const auto value = object(key);
    return value ? value->array() : std::nullopt;
}

bool PreferenceDomain::boolean(std::string_view key) const {
    const auto value = object(key);
    if (!value)
        return false;
    if (const auto text = value->text())
        return booleanOfText(*text);
    return value->number().value_or(0) != 0;
}

} // namespace tallyglass
