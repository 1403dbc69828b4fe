// The old-style property list text that `tmutil status` prints.

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>

namespace tallyglass {

/// A dictionary; a value. Keys are written in the order of their bytes.
struct StatusDictionary {
    using Value = std::variant<std::int64_t, double, std::string, StatusDictionary>;
    std::map<std::string, Value> entries;

    /// The text, each level indented by 4 spaces. Everything but letters and digits is quoted.
    [[nodiscard]] std::string text() const;
};

} // namespace tallyglass
