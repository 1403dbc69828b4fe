#include "TallyglassKit/Access/BackupPath.h"

#include "TallyglassKit/Platform/WallClock.h"

#include <fmt/core.h>

#include <algorithm>

namespace tallyglass {

namespace {

BackupPath owned(const BackupPath::View& view) {
    return {std::string(view.root), view.volume ? std::optional(std::string(*view.volume)) : std::nullopt,
            std::string(view.logicalPath), BackupPath::timestampOfRoot(view.root)};
}

std::string_view lastComponent(std::string_view path) {
    while (path.ends_with('/'))
        path.remove_suffix(1);
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

// The longest matching root is used.
const std::string* longestPrefix(std::string_view path, std::span<const std::string> roots) {
    const std::string* longest = nullptr;
    for (const std::string& root : roots)
        if (path.starts_with(root) && (!longest || root.size() > longest->size()))
            longest = &root;
    return longest;
}

// Requires: `path` begins with `root`.
BackupPath::View splitBehind(std::string_view path, std::string_view root) {
    std::string_view rest = path.substr(root.size());
    if (rest.starts_with('/'))
        rest.remove_prefix(1);
    if (rest.empty())
        return {root, std::nullopt, {}};
    const auto slash = std::min(rest.find('/'), rest.size());
    return {root, rest.substr(0, slash), rest.substr(slash)};
}

} // namespace

std::optional<BackupPath::View> BackupPath::splitView(std::string_view path, std::string_view root) {
    return path.starts_with(root) ? std::optional(splitBehind(path, root)) : std::nullopt;
}

std::optional<BackupPath::View> BackupPath::splitView(std::string_view path,
                                                      std::span<const std::string> roots) {
    const std::string* root = longestPrefix(path, roots);
    return root ? std::optional(splitBehind(path, *root)) : std::nullopt;
}

std::optional<BackupPath> BackupPath::split(std::string_view path, std::string_view root) {
    const auto view = splitView(path, root);
    return view ? std::optional(owned(*view)) : std::nullopt;
}

std::optional<BackupPath> BackupPath::split(std::string_view path, std::span<const std::string> roots) {
    const auto view = splitView(path, roots);
    return view ? std::optional(owned(*view)) : std::nullopt;
}

std::optional<BackupPath> BackupPath::containing(std::string_view path) {
    std::size_t rootEnd = 0;
    for (std::size_t start = 0; start < path.size();) {
        const std::size_t end = std::min(path.find('/', start), path.size());
        if (timestampOfRoot(path.substr(start, end - start)))
            rootEnd = end; // a backup's root is in a folder of the same name
        else if (rootEnd > 0)
            break;
        start = end + 1;
    }
    return rootEnd > 0 ? split(path, path.substr(0, rootEnd)) : std::nullopt;
}

std::optional<Date> BackupPath::timestampOfRoot(std::string_view root) {
    std::string_view name = lastComponent(root);
    if (!name.ends_with(suffix))
        return std::nullopt;
    name.remove_suffix(suffix.size());
    return dateOfStamp(name);
}

std::string BackupPath::reconstructRoot(std::string_view destinationUUID, Date completionDate) {
    const std::string backup = stamp(completionDate).append(suffix);
    return fmt::format("{}{}/{}/{}", mountPrefix, destinationUUID, backup, backup);
}

bool BackupPath::isInBackup(std::string_view path) {
    const std::string text = "/" + std::string(path) + "/";
    return text.find(mountPrefix) != std::string::npos ||
           text.find("/Backups.backupdb/") != std::string::npos || containing(path).has_value();
}

std::string BackupPath::stamp(Date date) {
    const WallClock clock = WallClock::at(date);
    return fmt::format("{:04}-{:02}-{:02}-{:02}{:02}{:02}", clock.year, clock.month, clock.day, clock.hour,
                       clock.minute, clock.second);
}

std::optional<Date> BackupPath::dateOfStamp(std::string_view stamp) {
    constexpr std::string_view shape = "0000-00-00-000000";
    const auto fits = [](char c, char wanted) { return wanted == '0' ? c >= '0' && c <= '9' : c == wanted; };
    if (!std::ranges::equal(stamp, shape, fits))
        return std::nullopt;
    const auto number = [stamp](std::size_t begin, std::size_t count) {
        int value = 0;
        for (const char digit : stamp.substr(begin, count))
            value = value * 10 + (digit - '0');
        return value;
    };
    return WallClock{number(0, 4), number(5, 2), number(8, 2), number(11, 2), number(13, 2), number(15, 2)}
        .date();
}

} // namespace tallyglass
