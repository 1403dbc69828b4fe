// Finds the backed-up volume in a backup. Free function; any thread.

#pragma once

#include <optional>
#include <string>

namespace tallyglass {

/// The first folder, by name, below a backup's root that isn't hidden; absent if there is none or the root
/// can't be listed.
[[nodiscard]] std::optional<std::string> volumeComponent(const std::string& root);

} // namespace tallyglass
