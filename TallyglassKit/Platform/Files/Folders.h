// Folders and whole trees: list, remove, copy. Symbolic links are taken as themselves throughout. Failures
// are FileErrors with the path of the item that failed. Any thread.

#pragma once

#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

/// The names in the folder without "." and "..", ascending by their bytes. A link to a folder counts as the
/// folder here.
[[nodiscard]] std::vector<std::string> folderNames(const std::string& path);

/// Removes the item with all that it holds. A stop leaves the part that wasn't reached yet.
void removeItem(const std::string& path, std::stop_token stop = {});

/// Copies the item with all that it holds: contents with their holes, permissions, extended attributes,
/// modification times, links as links, and owners where that is permitted. Hard links become files of their
/// own.
///
/// Requires: nothing is at `destination`, else EEXIST, but its folder is there. The copy gets its name when
/// it is complete: one that fails or is stopped leaves nothing behind.
void copyItem(const std::string& source, const std::string& destination, std::stop_token stop = {});

} // namespace tallyglass
