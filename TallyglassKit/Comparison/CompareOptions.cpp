#include "TallyglassKit/Comparison/CompareOptions.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace tallyglass {

namespace {

using Property = CompareOptions::Property;

constexpr std::string_view flags = "@cdefgmstu"; // in the order of the cases

/// The flags of all properties, ascending, in the order of the cases.
std::string joinedFlags(const std::set<Property>& properties) {
    std::string result;
    for (const Property property : properties)
        result += rawValue(property);
    return result;
}

/// A component in a cache key: unchanged, unless it is empty or contains the separator.
std::string keyPart(const std::string& component) {
    if (component.empty())
        return "\\e";
    std::string result;
    for (const char character : component) {
        if (character == ',' || character == '\\')
            result += '\\';
        result += character;
    }
    return result;
}

} // namespace

CompareOptions CompareOptions::fast(std::optional<std::int64_t> depth) {
    return {
        .properties = {Property::size, Property::modificationTime}, .depth = depth, .ignoredComponents = {}};
}

CompareOptions CompareOptions::tmutilDefault(std::optional<std::int64_t> depth) {
    CompareOptions options = fast(depth);
    options.properties.insert({Property::extendedAttributes, Property::gid, Property::mode, Property::uid});
    return options;
}

CompareOptions CompareOptions::thorough(std::optional<std::int64_t> depth) {
    return {
        .properties = {allProperties.begin(), allProperties.end()}, .depth = depth, .ignoredComponents = {}};
}

CompareOptions CompareOptions::fromFlags(std::int64_t depth, bool unlimitedDepth,
                                         bool compareExtendedAttributes) {
    const auto chosenDepth = unlimitedDepth ? std::nullopt : std::optional(depth);
    return compareExtendedAttributes ? tmutilDefault(chosenDepth) : fast(chosenDepth);
}

std::vector<std::string> CompareOptions::arguments() const {
    std::vector<std::string> result{"-X"};
    if (!properties.empty())
        result.push_back(fmt::format("-{}", joinedFlags(properties)));
    if (depth)
        result.insert(result.end(), {"-D", std::to_string(*depth)});
    for (const std::string& component : ignoredComponents)
        result.insert(result.end(), {"-I", component});
    return result;
}

std::string CompareOptions::cacheKey() const {
    auto ignored = ignoredComponents;
    std::ranges::sort(ignored);
    std::ranges::transform(ignored, ignored.begin(), keyPart);
    return fmt::format("p{}|d{}|i{}", joinedFlags(properties), depth ? std::to_string(*depth) : "all",
                       fmt::join(ignored, ","));
}

std::string_view rawValue(CompareOptions::Property property) {
    return flags.substr(static_cast<std::size_t>(property), 1);
}

template <>
std::optional<CompareOptions::Property> fromRawValue<CompareOptions::Property>(std::string_view raw) {
    for (const auto property : CompareOptions::allProperties)
        if (rawValue(property) == raw)
            return property;
    return std::nullopt;
}

} // namespace tallyglass
