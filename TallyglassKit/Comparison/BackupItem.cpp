#include "TallyglassKit/Comparison/BackupItem.h"

#include "TallyglassKit/Platform/Files/FileStatus.h"

#include <algorithm>
#include <system_error>
#include <vector>

namespace tallyglass {

namespace {

namespace fs = std::filesystem;

/// The folders of the backed-up volumes, by name; none if they can't be listed.
std::vector<fs::path> volumesOf(const std::string& root) {
    std::vector<fs::path> volumes;
    std::error_code failure;
    fs::directory_iterator entry(root, failure);
    for (; !failure && entry != fs::directory_iterator(); entry.increment(failure))
        if (std::error_code unknown; entry->is_directory(unknown))
            volumes.push_back(entry->path());
    std::ranges::sort(volumes);
    return volumes;
}

} // namespace

std::optional<fs::path> itemInBackup(const std::string& root, const std::string& path) {
    if (root.empty() || path.empty())
        return std::nullopt;
    if (path.starts_with(root)) // nothing was stripped from the path of the root itself
        return FileStatus::of(path) ? std::optional<fs::path>(path) : std::nullopt;
    for (const fs::path& volume : volumesOf(root))
        if (const std::string place = volume.string() + path; FileStatus::of(place))
            return place;
    return std::nullopt;
}

} // namespace tallyglass
