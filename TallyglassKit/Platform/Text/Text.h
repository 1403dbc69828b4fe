// Functions on UTF-8 text that don't depend on a language. Any thread.

#pragma once

#include <string_view>

namespace tallyglass {

/// `text` without white space and newlines at both ends: the tab, the space characters (Zs) and the line ends
/// of Unicode.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Whether `text` contains `part`, ignoring the case of ASCII letters. Requires: `part` is ASCII.
[[nodiscard]] bool containsIgnoringCase(std::string_view text, std::string_view part);

} // namespace tallyglass
