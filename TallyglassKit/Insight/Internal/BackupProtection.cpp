#include "TallyglassKit/Insight/Internal/BackupProtection.h"

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/Folders.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <system_error>

namespace tallyglass {

namespace {

namespace fs = std::filesystem;

/// Whether the folder at `path`, if it is one, has backups directly in it, as a backup disk has.
bool holdsBackups(const std::string& path) {
    const auto status = FileStatus::of(path);
    return status && status->isFolder() && std::ranges::any_of(folderNames(path), BackupPath::isInBackup);
}

} // namespace

fs::path resolved(const fs::path& path) {
    std::error_code failure;
    auto result = fs::weakly_canonical(path, failure);
    return failure ? fs::absolute(path).lexically_normal() : result;
}

void refuseBackup(const fs::path& destination) {
    throw FileError(EROFS, destination, "This is in a backup, and backups are never changed");
}

fs::path outsideBackups(const fs::path& destination) {
    auto absolute = fs::absolute(destination).lexically_normal();
    if (!absolute.has_filename()) // it ends in a slash
        absolute = absolute.parent_path();
    // A link at the destination itself isn't followed but replaced.
    auto real = resolved(absolute.parent_path()) / absolute.filename();
    if (BackupPath::isInBackup(absolute.string()) || BackupPath::isInBackup(real.string()))
        refuseBackup(destination);
    if (holdsBackups(real))
        throw FileError(EROFS, destination, "This folder holds backups, and backups are never changed");
    return real;
}

} // namespace tallyglass
