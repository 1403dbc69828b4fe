// Files and folders that only their user may read, whatever the process's umask. Failures are FileErrors. Any
// thread.

#pragma once

#include <filesystem>
#include <string_view>

namespace tallyglass {

/// Creates `folder` and its missing ancestors with mode 0700. Existing folders are left unchanged.
void makePrivateFolder(const std::filesystem::path& folder);

/// Creates an empty file with mode 0600, or the target of a dangling link. Leaves an existing file unchanged;
/// throws for a device or a pipe.
void makePrivateFile(const std::filesystem::path& file);

/// Writes `contents` to the file with mode 0600, in one step: until it is complete, any file or link at the
/// path stays as it is, and a link is then replaced, not followed. A failure leaves nothing new. Throws
/// EISDIR for a folder.
///
/// Requires: the folder of `file` exists.
void writePrivateFile(const std::filesystem::path& file, std::string_view contents);

/// Removes all rights of other users from a file or folder of this user. An item of another user, on a file
/// system without permissions, or a link is left unchanged, as is the link's target.
void takeRightsFromOthers(const std::filesystem::path& path);

} // namespace tallyglass
