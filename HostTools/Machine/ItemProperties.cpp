#include "HostTools/Machine/ItemProperties.h"

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/xattr.h>

#include <cerrno>
#include <map>

namespace tallyglass {

namespace {

/// A path to the item for calls without a folder descriptor: short even for deep folders.
std::string callPath(const ItemReference& item) {
    if (item.folder == AT_FDCWD)
        return item.name;
    return "/proc/self/fd/" + std::to_string(item.folder) + "/" + item.name;
}

std::string attribute(const std::string& path, const char* name) {
    std::string value;
    for (;;) {
        const ssize_t size = lgetxattr(path.c_str(), name, nullptr, 0);
        if (size <= 0)
            return {};
        value.resize(static_cast<std::size_t>(size));
        const ssize_t read = lgetxattr(path.c_str(), name, value.data(), value.size());
        if (read >= 0) {
            value.resize(static_cast<std::size_t>(read));
            return value;
        }
        if (errno != ERANGE) // it has grown meanwhile
            return {};
    }
}

/// The user attributes. System labels depend on the item's location.
std::map<std::string, std::string> userAttributes(const std::string& path) {
    std::map<std::string, std::string> result;
    const ssize_t size = llistxattr(path.c_str(), nullptr, 0);
    if (size <= 0)
        return result;
    std::string names(static_cast<std::size_t>(size), '\0');
    const ssize_t read = llistxattr(path.c_str(), names.data(), names.size());
    for (const char* name = names.data(); read > 0 && name < names.data() + read;
         name += std::char_traits<char>::length(name) + 1)
        if (std::string_view(name).starts_with("user."))
            result.emplace(name, attribute(path, name));
    return result;
}

bool sameAccessLists(const std::string& older, const std::string& newer) {
    for (const char* name : {"system.posix_acl_access", "system.posix_acl_default"})
        if (attribute(older, name) != attribute(newer, name))
            return false;
    return true;
}

std::string linkTarget(const ItemReference& item) {
    std::string target(static_cast<std::size_t>(item.status->st_size) + 1, '\0');
    const ssize_t length = readlinkat(item.folder, item.name, target.data(), target.size());
    target.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
    return target;
}

ssize_t fill(int file, char* buffer, std::size_t size) {
    std::size_t filled = 0;
    while (filled < size) {
        const ssize_t count = read(file, buffer + filled, size - filled);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            return -1;
        filled += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

bool sameContents(const ItemReference& older, const ItemReference& newer, int& failure) {
    if (S_ISLNK(older.status->st_mode))
        return linkTarget(older) == linkTarget(newer);
    if (!S_ISREG(older.status->st_mode))
        return true;
    if (older.status->st_size != newer.status->st_size)
        return false;
    const auto openItem = [](const ItemReference& item) {
        return FileDescriptor(openat(item.folder, item.name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    };
    const FileDescriptor olderFile = openItem(older);
    const FileDescriptor newerFile = openItem(newer);
    if (!olderFile.isOpen() || !newerFile.isOpen()) {
        failure = errno;
        return true;
    }
    constexpr std::size_t block = 128 * 1024;
    std::string olderBlock(block, '\0');
    std::string newerBlock(block, '\0');
    for (;;) {
        const ssize_t olderSize = fill(olderFile.fd(), olderBlock.data(), block);
        const ssize_t newerSize = fill(newerFile.fd(), newerBlock.data(), block);
        if (olderSize < 0 || newerSize < 0) {
            failure = errno;
            return true;
        }
        const std::string_view olderPart(olderBlock.data(), static_cast<std::size_t>(olderSize));
        if (olderPart != std::string_view(newerBlock.data(), static_cast<std::size_t>(newerSize)))
            return false;
        if (olderPart.size() < block)
            return true;
    }
}

} // namespace

std::vector<std::string_view> differingProperties(const ComparedProperties& properties,
                                                  const ItemReference& older, const ItemReference& newer,
                                                  int& failure) {
    std::vector<std::string_view> result;
    const struct stat& before = *older.status;
    const struct stat& after = *newer.status;
    const bool isFolder = S_ISDIR(before.st_mode);
    if (before.st_dev == after.st_dev && before.st_ino == after.st_ino)
        return result;

    // Links have neither user attributes nor access control lists.
    if (!S_ISLNK(before.st_mode) && (properties.has('@') || properties.has('e'))) {
        const std::string olderPath = callPath(older);
        const std::string newerPath = callPath(newer);
        if (properties.has('@') && userAttributes(olderPath) != userAttributes(newerPath))
            result.push_back("xattr");
        if (properties.has('e') && !sameAccessLists(olderPath, newerPath))
            result.push_back("acl");
    }
    if (!isFolder && properties.has('d') && !sameContents(older, newer, failure))
        result.push_back("data");
    if (properties.has('g') && before.st_gid != after.st_gid)
        result.push_back("gid");
    if (properties.has('m') && (before.st_mode & 07777) != (after.st_mode & 07777))
        result.push_back("mode");
    if (!isFolder && properties.has('s') && before.st_size != after.st_size)
        result.push_back("size");
    if (properties.has('t') &&
        (before.st_mtim.tv_sec != after.st_mtim.tv_sec || before.st_mtim.tv_nsec != after.st_mtim.tv_nsec))
        result.push_back("mtime");
    if (properties.has('u') && before.st_uid != after.st_uid)
        result.push_back("uid");
    return result;
}

} // namespace tallyglass
