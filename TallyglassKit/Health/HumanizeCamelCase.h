// Labels from the camel-case property names of `tmutil compare`. Without shared state; any thread.

#pragma once

#include <string>
#include <string_view>

namespace tallyglass {

/// The text with a blank before every upper-case character but a leading one: "fileSize" gives "file Size",
/// "ACLChange" "A C L Change". Characters are what a reader takes for one, a letter with its marks; none is
/// changed.
[[nodiscard]] std::string humanizeCamelCase(std::string_view text);

} // namespace tallyglass
