#include "TallyglassKit/Insight/VersionExport.h"

#include "TallyglassKit/Insight/FileVersion.h"
#include "TallyglassKit/Insight/Internal/BackupProtection.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace tallyglass {

namespace {

namespace fs = std::filesystem;

bool isWithin(const fs::path& path, const fs::path& folder) {
    return std::ranges::mismatch(folder, path).in1 == folder.end();
}

} // namespace

void exportVersion(const FileVersion& version, const std::string& destination, const OnCopyProgress& progress,
                   const std::stop_token& stop) {
    if (!version.exists)
        throw FileError(ENOENT, version.path);
    if (isWithin(outsideBackups(destination), resolved(version.backupRoot)))
        refuseBackup(destination);
    copyItem(version.path, destination, ExistingItem::replace, progress, stop);
}

} // namespace tallyglass
