#include "TallyglassKit/Insight/FileHistoryScanner.h"

#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "TallyglassKit/Platform/Text/CanonicalText.h"
#include "TallyglassKit/Platform/Text/Text.h"

#include <algorithm>
#include <utility>

namespace tallyglass {

std::string FileHistoryScanner::normalize(std::string_view logicalPath) {
    const auto path = trimmed(logicalPath);
    if (path.empty() || path.starts_with('/'))
        return std::string(path);
    return std::string("/").append(path);
}

std::vector<std::string> FileHistoryScanner::volumes(const std::string& backupRoot) {
    std::vector<std::string> names;
    try {
        names = folderNames(backupRoot);
    } catch (const FileError&) {
        return {};
    }
    std::erase_if(names, [](const std::string& name) { return name.starts_with('.'); });
    std::ranges::stable_sort(names, [](const std::string& left, const std::string& right) {
        return std::is_lt(compareCanonically(left, right));
    });
    return names;
}

std::vector<FileVersion> FileHistoryScanner::versions(std::string_view logicalPath,
                                                      const std::optional<std::string>& volume,
                                                      std::span<const std::string> backups,
                                                      const OnProgress& progress,
                                                      const std::stop_token& stop) const {
    std::vector<FileVersion> found;
    found.reserve(backups.size());
    std::size_t index = 0;
    for (const std::string& root : backups) {
        if (stop.stop_requested())
            break;
        if (progress)
            progress(++index, backups.size());
        const auto names = volume ? std::vector{*volume} : volumes(root);
        if (names.empty())
            continue;
        std::string path;
        path.reserve(root.size() + 1 + names.front().size() + logicalPath.size());
        path.append(root).append("/").append(names.front()).append(logicalPath);
        found.push_back(probe(std::move(path), root));
    }
    return found;
}

FileVersion FileHistoryScanner::probe(std::string path, const std::string& root) {
    FileVersion version{.backupRoot = root,
                        .backupDate = BackupPath::timestampOfRoot(root),
                        .path = std::move(path),
                        .size = {},
                        .modified = {},
                        .inode = {}};
    if (const auto status = FileStatus::of(version.path)) {
        version.exists = true;
        version.isDirectory = status->isFolder();
        if (!version.isDirectory)
            version.size = status->size;
        version.modified = dateSince1970(static_cast<double>(status->modifiedSeconds));
        version.inode = status->inode;
    }
    return version;
}

std::vector<FileVersionSpan> FileHistoryScanner::spans(std::vector<FileVersion> versions) {
    std::erase_if(versions, [](const FileVersion& version) { return !version.exists; });
    std::vector<FileVersionSpan> result;
    for (auto first = versions.begin(); first != versions.end();) {
        const auto end = std::adjacent_find(first, versions.end(), [](const auto& older, const auto& newer) {
            return !older.isSameVersion(newer);
        });
        const auto next = end == versions.end() ? end : end + 1;
        auto& span = result.emplace_back();
        span.version = *(next - 1);
        span.backups.assign(std::move_iterator(first), std::move_iterator(next));
        first = next;
    }
    return result;
}

} // namespace tallyglass
