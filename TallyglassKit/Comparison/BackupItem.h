// Finds the item of a changed path in a backup. Free function; any thread.

#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tallyglass {

/// The place of `path`, as a change has it, in the backup with this root: below one of its volumes, the first
/// by name that has it, since a change doesn't tell the volume. Absent if none has it. A link is found even
/// if it leads nowhere. Blocks.
[[nodiscard]] std::optional<std::filesystem::path> itemInBackup(const std::string& root,
                                                                const std::string& path);

} // namespace tallyglass
