// Folders and whole trees: list, remove. Symbolic links aren't followed. Failures are FileErrors with
// the path of the item that failed. Any thread.

#pragma once

#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

/// The names in the folder without "." and "..", ascending by their bytes. A link to a folder is followed
/// here.
[[nodiscard]] std::vector<std::string> folderNames(const std::string& path);

/// Removes the item recursively. A stop leaves the part that wasn't reached yet.
void removeItem(const std::string& path, std::stop_token stop = {});

} // namespace tallyglass
