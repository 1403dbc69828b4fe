#include "HostTools/Machine/LinkCopier.h"

#include "HostTools/Machine/FileOperations.h"
#include "HostTools/Machine/FolderListing.h"
#include "HostTools/Machine/ItemProperties.h"
#include "HostTools/Machine/MachinePaths.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <set>

namespace tallyglass {

namespace {

class FolderCopy {
public:
    FolderCopy(const CopyOrder& order, const CopyCheckpoint& checkpoint)
        : m_order(order), m_checkpoint(checkpoint), m_excluded(order.excluded.begin(), order.excluded.end()) {
    }

    /// Copies the included items of an open folder at the logical `path`; `previous` may be -1.
    void copy(const std::string& path, int live, int previous, int target);

private:
    [[nodiscard]] bool counts(const std::string& path) const;
    void copyItem(const std::string& path, const char* name, int live, int previous, int target);
    void copyFile(const ItemReference& item, int target);
    void copyStatus(const ItemReference& item, int target);

    const CopyOrder& m_order;
    const CopyCheckpoint& m_checkpoint;
    std::set<std::string, std::less<>> m_excluded;
    CopyProgress m_progress;
};

FileDescriptor openFolder(int parent, const char* name) {
    return FileDescriptor(
        parent == -1 ? -1 : openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

void check(int result, const std::string& what) {
    if (result == 0)
        return;
    if (errno == ENOSPC || errno == EDQUOT)
        throw BackupFailure(BackupResult::outOfSpace, what);
    throw FileError(errno, what);
}

void copyAttributes(const std::string& from, const std::string& to) {
    const ssize_t size = llistxattr(from.c_str(), nullptr, 0);
    if (size <= 0)
        return;
    std::string names(static_cast<std::size_t>(size), '\0');
    std::string value(64 * 1024, '\0');
    const ssize_t read = llistxattr(from.c_str(), names.data(), names.size());
    for (const char* name = names.data(); read > 0 && name < names.data() + read;
         name += std::char_traits<char>::length(name) + 1) {
        const ssize_t length = lgetxattr(from.c_str(), name, value.data(), value.size());
        if (length >= 0 && std::string_view(name).starts_with("user."))
            check(lsetxattr(to.c_str(), name, value.data(), static_cast<std::size_t>(length), 0), to);
    }
}

bool FolderCopy::counts(const std::string& path) const {
    return !m_excluded.contains(path) && std::ranges::any_of(m_order.sources, [&](const std::string& source) {
        return isWithin(path, source) || isWithin(source, path);
    });
}

void FolderCopy::copy(const std::string& path, int live, int previous, int target) {
    m_checkpoint(m_progress);
    FolderListing items;
    check((errno = items.read(live)), path);
    for (std::size_t index = 0; index < items.size(); ++index) {
        const std::string itemPath = path + "/" + items.nameText(items[index]);
        if (counts(itemPath))
            copyItem(itemPath, items.nameText(items[index]), live, previous, target);
    }
}

void FolderCopy::copyItem(const std::string& path, const char* name, int live, int previous, int target) {
    struct stat status {};
    struct stat before {};
    check(fstatat(live, name, &status, AT_SYMLINK_NOFOLLOW), path);
    const ItemReference item{live, name, &status};
    if (S_ISDIR(status.st_mode)) {
        check(mkdirat(target, name, 0700), path);
        const FileDescriptor source = openFolder(live, name);
        copy(path, source.fd(), openFolder(previous, name).fd(), openFolder(target, name).fd());
        return copyStatus(item, target);
    }
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode))
        return;
    int failure = 0;
    if (previous != -1 && fstatat(previous, name, &before, AT_SYMLINK_NOFOLLOW) == 0 &&
        (before.st_mode & S_IFMT) == (status.st_mode & S_IFMT) &&
        differingProperties({}, {previous, name, &before}, item, failure).empty())
        return check(linkat(previous, name, target, name, 0), path);
    copyFile(item, target);
    copyStatus(item, target);
    m_progress.bytes += status.st_size;
    ++m_progress.files;
}

void FolderCopy::copyFile(const ItemReference& item, int target) {
    if (S_ISLNK(item.status->st_mode)) {
        std::string text(static_cast<std::size_t>(item.status->st_size), '\0');
        const ssize_t length = readlinkat(item.folder, item.name, text.data(), text.size());
        text.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
        return check(symlinkat(text.c_str(), target, item.name), item.name);
    }
    const FileDescriptor from(openat(item.folder, item.name, O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    const FileDescriptor to(openat(target, item.name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    check(from.isOpen() && to.isOpen() ? 0 : -1, item.name);
    ssize_t copied = 0;
    do
        copied = copy_file_range(from.fd(), nullptr, to.fd(), nullptr, 1 << 30, 0);
    while (copied > 0);
    check(copied < 0 ? -1 : 0, item.name);
}

void FolderCopy::copyStatus(const ItemReference& item, int target) {
    const bool isLink = S_ISLNK(item.status->st_mode);
    if (!isLink) {
        const auto callPath = [&](int folder) {
            return "/proc/self/fd/" + std::to_string(folder) + "/" + item.name;
        };
        copyAttributes(callPath(item.folder), callPath(target));
    }
    // Without the permission to change owners, files stay with this user, as with rsync.
    if (fchownat(target, item.name, item.status->st_uid, item.status->st_gid, AT_SYMLINK_NOFOLLOW) != 0 &&
        errno != EPERM)
        check(-1, item.name);
    if (!isLink)
        check(fchmodat(target, item.name, item.status->st_mode & 07777, 0), item.name);
    const timespec times[2] = {item.status->st_mtim, item.status->st_mtim};
    check(utimensat(target, item.name, times, AT_SYMLINK_NOFOLLOW), item.name);
}

FileDescriptor openPath(const std::filesystem::path& path) {
    return FileDescriptor(path.empty() ? -1 : open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

} // namespace

void LinkCopier::copy(const CopyOrder& order, const CopyCheckpoint& checkpoint) {
    FolderCopy(order, checkpoint)
        .copy("", openPath(order.liveRoot).fd(), openPath(order.previous).fd(), openPath(order.volume).fd());
}

} // namespace tallyglass
