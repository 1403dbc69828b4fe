#include "TallyglassKit/Insight/VersionExport.h"

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Insight/FileVersion.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/Folders.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace tallyglass {

namespace {

namespace fs = std::filesystem;

/// The absolute path without "." and "..", and without links where it exists.
fs::path resolved(const fs::path& path) {
    std::error_code failure;
    auto result = fs::weakly_canonical(path, failure);
    return failure ? fs::absolute(path).lexically_normal() : result;
}

bool isWithin(const fs::path& path, const fs::path& folder) {
    return std::ranges::mismatch(folder, path).in1 == folder.end();
}

/// Whether the folder at `path`, if it is one, has backups directly in it, as a backup disk has.
bool holdsBackups(const std::string& path) {
    const auto status = FileStatus::of(path);
    return status && status->isFolder() && std::ranges::any_of(folderNames(path), BackupPath::isInBackup);
}

void refuseBackups(const FileVersion& version, const fs::path& destination) {
    const auto refuse = [&](const char* text) { throw FileError(EROFS, destination, text); };
    auto absolute = fs::absolute(destination).lexically_normal();
    if (!absolute.has_filename()) // it ends in a slash
        absolute = absolute.parent_path();
    // A link at the destination itself isn't followed but replaced.
    const auto real = resolved(absolute.parent_path()) / absolute.filename();
    if (BackupPath::isInBackup(absolute.string()) || BackupPath::isInBackup(real.string()) ||
        isWithin(real, resolved(version.backupRoot)))
        refuse("This is in a backup, and backups are never changed");
    if (holdsBackups(real))
        refuse("This folder holds backups, and backups are never changed");
}

} // namespace

void exportVersion(const FileVersion& version, const std::string& destination, const OnCopyProgress& progress,
                   const std::stop_token& stop) {
    if (!version.exists)
        throw FileError(ENOENT, version.path);
    refuseBackups(version, destination);
    copyItem(version.path, destination, ExistingItem::replace, progress, stop);
}

} // namespace tallyglass
