// The options of a `tmutil compare` run: the file properties to compare, the depth and the path components to
// ignore. A value.

#pragma once

#include "TallyglassKit/Platform/RawValue.h"

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

struct CompareOptions {
    enum class Property : std::uint8_t {
        extendedAttributes,
        creationTime,
        dataFork,
        acls,
        flags,
        gid,
        mode,
        size,
        modificationTime,
        uid,
    };
    static constexpr std::array allProperties{
        Property::extendedAttributes,
        Property::creationTime,
        Property::dataFork,
        Property::acls,
        Property::flags,
        Property::gid,
        Property::mode,
        Property::size,
        Property::modificationTime,
        Property::uid,
    };

    std::set<Property> properties;
    std::optional<std::int64_t> depth; ///< absent means unlimited; 0 is a depth
    std::vector<std::string> ignoredComponents;

    [[nodiscard]] static CompareOptions fast(std::optional<std::int64_t> depth = std::nullopt);
    [[nodiscard]] static CompareOptions tmutilDefault(std::optional<std::int64_t> depth = std::nullopt);
    [[nodiscard]] static CompareOptions thorough(std::optional<std::int64_t> depth = std::nullopt);

    /// From the controls of a screen. `depth` is ignored if `unlimitedDepth` is true.
    [[nodiscard]] static CompareOptions fromFlags(std::int64_t depth, bool unlimitedDepth,
                                                  bool compareExtendedAttributes);

    /// The arguments between the verb "compare" and its operands.
    [[nodiscard]] std::vector<std::string> arguments() const;

    /// The key of cached results, such as "pst|d4|i": equal for two values exactly if `tmutil` gets the same
    /// properties, depth and set of ignored components.
    [[nodiscard]] std::string cacheKey() const;

    friend bool operator==(const CompareOptions&, const CompareOptions&) = default;
};

/// The property's one-character argument to `tmutil compare`.
[[nodiscard]] std::string_view rawValue(CompareOptions::Property property);
template <>
[[nodiscard]] std::optional<CompareOptions::Property>
fromRawValue<CompareOptions::Property>(std::string_view raw);

} // namespace tallyglass
