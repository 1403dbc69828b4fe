// Files and folders that their user alone may read, whatever the process's umask is. Failures are FileErrors.
// Any thread.

#pragma once

#include <filesystem>

namespace tallyglass {

/// Makes `folder` and those above it that are missing, with mode 0700. Folders that stand are left as they
/// are.
void makePrivateFolder(const std::filesystem::path& folder);

/// Makes an empty file with mode 0600, unless something stands there already.
void makePrivateFile(const std::filesystem::path& file);

/// Takes the rights of others away from a file or folder of this user's. What belongs to someone else, or
/// stands on a disk without rights, is left as it is.
void takeRightsFromOthers(const std::filesystem::path& path);

} // namespace tallyglass
