// Files and folders that their user alone may read, whatever the process's umask is. Failures are FileErrors.
// Any thread.

#pragma once

#include <filesystem>

namespace tallyglass {

/// Makes `folder` and those above it that are missing, with mode 0700. Folders that stand are left as they
/// are.
void makePrivateFolder(const std::filesystem::path& folder);

/// Makes an empty file with mode 0600, or where a link leads that has no target, unless something stands
/// there already. Throws if that is a device or a pipe.
void makePrivateFile(const std::filesystem::path& file);

/// Takes the rights of others away from a file or folder of this user's. What belongs to someone else, stands
/// on a disk without rights, or is a link, is left as it is, and so is what the link leads to.
void takeRightsFromOthers(const std::filesystem::path& path);

} // namespace tallyglass
