// Labels from the camel-case property names of `tmutil compare`. Pure; any thread.

#pragma once

#include <string>
#include <string_view>

namespace tallyglass {

/// The text with a space before every upper-case character except a leading one: "fileSize" gives "file
/// Size", "ACLChange" "A C L Change". Characters are grapheme clusters; none is changed.
[[nodiscard]] std::string humanizeCamelCase(std::string_view text);

} // namespace tallyglass
