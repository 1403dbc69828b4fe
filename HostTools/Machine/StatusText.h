// The old-style property list text that `tmutil status` prints.

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>

namespace tallyglass {

/// A dictionary of that form; a value. Keys come out sorted by their bytes.
struct StatusDictionary {
    using Value = std::variant<std::int64_t, double, std::string, StatusDictionary>;
    std::map<std::string, Value> entries;

    /// The text, each level 4 blanks further in. Integers stand bare; text, numbers with a fraction or a sign
    /// and keys are quoted where they hold anything but letters and digits.
    [[nodiscard]] std::string text() const;
};

} // namespace tallyglass
