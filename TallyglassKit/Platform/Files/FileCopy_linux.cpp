// Copies a tree item by item in folders held open, so that nobody can redirect it by a link. The kernel
// copies the bytes, hole by hole, and shares them where the file system can.

#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FolderWalk.h"
#include "TallyglassKit/Platform/Files/Folders.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/sendfile.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <optional>
#include <random>
#include <string_view>

namespace tallyglass {

namespace {

/// The most that one system call copies, so that a stop takes effect soon.
constexpr std::size_t chunkSize = std::size_t{16} << 20;

/// Copies the attributes that the file system accepts: access control lists and user attributes. The others
/// belong to the system.
void copyAttributes(const WalkItem& source, int from, const WalkItem& target, int to) {
    std::string names(4096, '\0');
    ssize_t length = 0;
    while ((length = flistxattr(from, names.data(), names.size())) < 0) {
        if (errno == ENOTSUP)
            return;
        if (errno != ERANGE)
            source.fail();
        names.resize(names.size() * 2);
    }
    std::string value(std::size_t{64} << 10, '\0'); // no attribute on Linux is larger
    for (std::string_view rest(names.data(), static_cast<std::size_t>(length)); !rest.empty();) {
        const std::string name(rest.substr(0, rest.find('\0')));
        rest.remove_prefix(name.size() + 1);
        if (!name.starts_with("user.") && !name.starts_with("system.posix_acl_"))
            continue;
        const auto size = fgetxattr(from, name.c_str(), value.data(), value.size());
        if (size < 0 && errno == ENODATA)
            continue; // removed meanwhile
        if (size < 0)
            source.fail();
        if (fsetxattr(to, name.c_str(), value.data(), static_cast<std::size_t>(size), 0) != 0 &&
            errno != ENOTSUP)
            target.fail();
    }
}

/// The modification time is set last, as every other change would modify it.
void copyProperties(const WalkItem& source, int from, const WalkItem& target, int to,
                    const struct stat& status) {
    copyAttributes(source, from, target, to);
    mode_t mode = status.st_mode & 07777;
    if (fchown(to, status.st_uid, status.st_gid) != 0)
        mode &= static_cast<mode_t>(~(S_ISUID | S_ISGID)); // they would grant the rights of another owner
    const std::array times = {status.st_atim, status.st_mtim};
    if (fchmod(to, mode) != 0 || futimens(to, times.data()) != 0)
        target.fail();
}

/// Copies up to `length` bytes at `position` of one file to the same position of the other. Returns their
/// number, or -1.
ssize_t copyRange(int from, int to, off_t position, std::size_t length) {
    off_t in = position;
    off_t out = position;
    const auto count = copy_file_range(from, &in, to, &out, length, 0);
    if (count >= 0 || (errno != EXDEV && errno != EINVAL && errno != EOPNOTSUPP && errno != ENOSYS))
        return count;
    if (lseek(to, position, SEEK_SET) < 0) // unsupported between these file systems
        return -1;
    return sendfile(to, from, &in, length);
}

void copyLink(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    std::array<char, PATH_MAX> text{};
    const auto length = readlinkat(source.folder, source.name.c_str(), text.data(), text.size());
    if (length < 0)
        source.fail();
    const std::string linkTarget(text.data(), static_cast<std::size_t>(length));
    const char* name = target.name.c_str();
    const std::array times = {status.st_atim, status.st_mtim};
    if (symlinkat(linkTarget.c_str(), target.folder, name) != 0 ||
        utimensat(target.folder, name, times.data(), AT_SYMLINK_NOFOLLOW) != 0)
        target.fail();
    static_cast<void>(
        fchownat(target.folder, name, status.st_uid, status.st_gid, AT_SYMLINK_NOFOLLOW)); // if permitted
}

/// One copy of a tree.
class Copier {
public:
    explicit Copier(const std::stop_token& stop) : m_stop(stop) {}

    void copy(const WalkItem& source, const WalkItem& target);

private:
    void copyFile(const WalkItem& source, const WalkItem& target, const struct stat& status);
    void copyContents(const WalkItem& source, int from, const WalkItem& target, int to, off_t size) const;
    void copyFolder(const WalkItem& source, const WalkItem& target, const struct stat& status);
    void throwIfStopped() const {
        if (m_stop.stop_requested())
            throw Cancelled();
    }

    const std::stop_token& m_stop;
    /// The topmost folder that was made, which must not be copied into itself.
    std::optional<struct stat> m_top;
};

void Copier::copy(const WalkItem& source, const WalkItem& target) {
    throwIfStopped();
    const struct stat status = source.status();
    switch (status.st_mode & S_IFMT) {
    case S_IFREG:
        return copyFile(source, target, status);
    case S_IFDIR:
        return copyFolder(source, target, status);
    case S_IFLNK:
        return copyLink(source, target, status);
    default:
        if (mknodat(target.folder, target.name.c_str(), status.st_mode, status.st_rdev) != 0)
            target.fail();
    }
}

void Copier::copyFile(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    const FileDescriptor from(
        openat(source.folder, source.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!from.isOpen())
        source.fail();
    const FileDescriptor to(openat(target.folder, target.name.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!to.isOpen())
        target.fail();
    copyContents(source, from.fd(), target, to.fd(), status.st_size);
    copyProperties(source, from.fd(), target, to.fd(), status);
}

void Copier::copyContents(const WalkItem& source, int from, const WalkItem& target, int to,
                          off_t size) const {
    off_t end = 0;
    while (end < size) {
        off_t position = lseek(from, end, SEEK_DATA);
        if (position < 0 && errno == ENXIO)
            break; // a hole up to the end
        position = std::max(position, end);
        end = lseek(from, position, SEEK_HOLE);
        if (end <= position)
            end = size; // holes unknown, so everything
        while (position < end) {
            throwIfStopped();
            const auto length = std::min<off_t>(chunkSize, end - position);
            const auto count = copyRange(from, to, position, static_cast<std::size_t>(length));
            if (count == 0)
                end = size = position; // the file was truncated meanwhile
            else if (count > 0)
                position += count;
            else if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG)
                target.fail();
            else if (errno != EINTR)
                source.fail();
        }
    }
    if (ftruncate(to, size) != 0)
        target.fail();
}

void Copier::copyFolder(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    if (m_top && m_top->st_dev == status.st_dev && m_top->st_ino == status.st_ino)
        source.fail(EINVAL);
    if (mkdirat(target.folder, target.name.c_str(), S_IRWXU) != 0)
        target.fail();
    if (!m_top)
        m_top = target.status();
    OpenFolder from(source);
    const OpenFolder to(target);
    for (std::string& name : from.readNames())
        copy(from.item(name), to.item(name));
    copyProperties(source, from.fd(), target, to.fd(), status);
}

/// The temporary name of a copy until it is complete, beside its destination, whose path errors report.
WalkItem draft(const WalkItem& destination) {
    std::random_device random;
    const std::string folder = destination.name.substr(0, destination.name.rfind('/') + 1);
    return {destination.folder, fmt::format("{}.tallyglass-{:08x}{:08x}", folder, random(), random()),
            destination.path};
}

void giveName(const WalkItem& from, const WalkItem& to) {
    if (renameat2(from.folder, from.name.c_str(), to.folder, to.name.c_str(), RENAME_NOREPLACE) == 0)
        return;
    if (errno != EINVAL)
        to.fail();
    // This file system only has a rename that replaces.
    if (faccessat(to.folder, to.name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0)
        to.fail(EEXIST);
    if (renameat(from.folder, from.name.c_str(), to.folder, to.name.c_str()) != 0)
        to.fail();
}

} // namespace

void copyItem(const std::string& source, const std::string& destination, std::stop_token stop) {
    const WalkItem from = WalkItem::at(source);
    const WalkItem to = WalkItem::at(destination);
    static_cast<void>(from.status()); // a missing source is reported first
    if (faccessat(to.folder, to.name.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0)
        to.fail(EEXIST);
    const WalkItem copy = draft(to);
    try {
        Copier(stop).copy(from, copy);
        giveName(copy, to);
    } catch (...) {
        try {
            remove(copy, Removal::forced, {});
        } catch (const FileError&) { // nothing was created, or cleaning up failed too
        }
        throw;
    }
}

} // namespace tallyglass
