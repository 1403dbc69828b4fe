// Copies a version of a file or folder out of its backup. Free function; any thread.

#pragma once

#include "TallyglassKit/Platform/Files/FileCopy.h"

#include <stop_token>
#include <string>

namespace tallyglass {

struct FileVersion;

/// Copies what the version names to `destination`, whose folder must exist, in place of anything that is
/// there: whole, or not at all (see copyItem). A stop throws Cancelled.
///
/// Throws FileError: ENOENT with the version's path, before anything else, if the version doesn't exist;
/// EROFS if the destination is in a backup or holds backups, which are never changed; else what copyItem
/// throws.
void exportVersion(const FileVersion& version, const std::string& destination,
                   const OnCopyProgress& progress = {}, const std::stop_token& stop = {});

} // namespace tallyglass
