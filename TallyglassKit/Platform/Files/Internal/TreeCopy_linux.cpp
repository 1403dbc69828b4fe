// The kernel copies the bytes, hole by hole, and shares them where the file system can.

#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/Internal/TreeCopy.h"

#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <string_view>
#include <utility>

namespace tallyglass {

namespace {

/// The most that one system call copies, so that a stop takes effect soon.
constexpr off_t chunkSize = off_t{16} << 20;
/// Holes are looked for in larger files only.
constexpr off_t sizeWithoutHoles = off_t{64} << 10;
constexpr auto reportInterval = std::chrono::milliseconds(100);

/// The names of the attributes, each with a null character behind it.
std::string attributeNames(const WalkItem& source, int from) {
    std::array<char, 1024> few; // NOLINT(cppcoreguidelines-pro-type-member-init): most files have none
    ssize_t length = flistxattr(from, few.data(), few.size());
    if (length >= 0)
        return {few.data(), static_cast<std::size_t>(length)};
    std::string names(few.size(), '\0');
    while ((length = flistxattr(from, names.data(), names.size())) < 0) {
        if (errno == ENOTSUP)
            return {};
        if (errno != ERANGE)
            source.fail();
        names.resize(names.size() * 2);
    }
    names.resize(static_cast<std::size_t>(length));
    return names;
}

/// Copies the attributes that the file system accepts: access control lists and user attributes. The others
/// belong to the system.
void copyAttributes(const WalkItem& source, int from, const WalkItem& target, int to) {
    const std::string names = attributeNames(source, from);
    if (names.empty())
        return;
    std::string value(std::size_t{64} << 10, '\0'); // no attribute on Linux is larger
    for (std::string_view rest(names); !rest.empty();) {
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

std::array<timespec, 2> times(const struct stat& status) {
    return {status.st_atim, status.st_mtim};
}

/// The permissions for a copy whose owner could be kept or not: without its owner, it must not grant the
/// rights of another one.
mode_t permissions(const struct stat& status, bool ownerIsKept) {
    const mode_t mode = status.st_mode & 07777;
    return ownerIsKept ? mode : mode & static_cast<mode_t>(~(S_ISUID | S_ISGID));
}

/// The modification time is set last, as every other change would modify it.
void copyProperties(const WalkItem& source, int from, const WalkItem& target, int to,
                    const struct stat& status) {
    copyAttributes(source, from, target, to);
    const bool ownerIsKept = fchown(to, status.st_uid, status.st_gid) == 0;
    if (fchmod(to, permissions(status, ownerIsKept)) != 0 || futimens(to, times(status).data()) != 0)
        target.fail();
}

/// The same for an item that can't be opened.
void copyPropertiesOfSpecial(const WalkItem& target, const struct stat& status) {
    const char* const name = target.name.c_str();
    const bool ownerIsKept =
        fchownat(target.folder, name, status.st_uid, status.st_gid, AT_SYMLINK_NOFOLLOW) == 0;
    if ((!S_ISLNK(status.st_mode) &&
         fchmodat(target.folder, name, permissions(status, ownerIsKept), AT_SYMLINK_NOFOLLOW) != 0) ||
        utimensat(target.folder, name, times(status).data(), AT_SYMLINK_NOFOLLOW) != 0)
        target.fail();
}

void copyLink(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    std::array<char, PATH_MAX> text{};
    const auto length = readlinkat(source.folder, source.name.c_str(), text.data(), text.size());
    if (length < 0)
        source.fail();
    const std::string linkTarget(text.data(), static_cast<std::size_t>(length));
    if (symlinkat(linkTarget.c_str(), target.folder, target.name.c_str()) != 0)
        target.fail();
    copyPropertiesOfSpecial(target, status);
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

} // namespace

void TreeCopy::copy(const WalkItem& source, const WalkItem& target) {
    const struct stat status = source.status();
    if (S_ISREG(status.st_mode))
        m_progress.totalBytes = status.st_size;
    report(true);
    copyAny(source, target, status);
    report(true);
}

void TreeCopy::copyAny(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    throwIfStopped();
    switch (status.st_mode & S_IFMT) {
    case S_IFREG:
        copyFile(source, target, status);
        break;
    case S_IFDIR:
        copyFolder(source, target, status);
        break;
    case S_IFLNK:
        copyLink(source, target, status);
        break;
    case S_IFIFO:
    case S_IFSOCK:
        if (mknodat(target.folder, target.name.c_str(), status.st_mode, 0) != 0)
            target.fail();
        copyPropertiesOfSpecial(target, status);
        break;
    default:
        throw FileError(ENOTSUP, source.path, "Devices can't be copied");
    }
    ++m_progress.items;
    report(false);
}

void TreeCopy::copyFile(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    const FileDescriptor from(
        openat(source.folder, source.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!from.isOpen())
        source.fail();
    const FileDescriptor to(openat(target.folder, target.name.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (!to.isOpen())
        target.fail();
    if (status.st_size > 0)
        copyContents(source, from.fd(), target, to.fd(), status.st_size);
    copyProperties(source, from.fd(), target, to.fd(), status);
}

void TreeCopy::copyContents(const WalkItem& source, int from, const WalkItem& target, int to, off_t size) {
    if (size <= sizeWithoutHoles) {
        copyPart(source, from, target, to, 0, size);
        return;
    }
    off_t end = 0;
    while (end < size) {
        off_t begin = lseek(from, end, SEEK_DATA);
        if (begin < 0 && errno == ENXIO)
            break; // a hole up to the end
        begin = std::max(begin, end);
        end = lseek(from, begin, SEEK_HOLE);
        if (end <= begin)
            end = size; // holes unknown, so everything
        const off_t copied = copyPart(source, from, target, to, begin, end);
        if (copied < end)
            end = size = copied;
    }
    if (ftruncate(to, size) != 0) // the hole at the end
        target.fail();
}

/// Returns where it ended: before `end` if the file was truncated meanwhile.
off_t TreeCopy::copyPart(const WalkItem& source, int from, const WalkItem& target, int to, off_t begin,
                         off_t end) {
    while (begin < end) {
        throwIfStopped();
        const auto length = std::min<off_t>(chunkSize, end - begin);
        const auto count = copyRange(from, to, begin, static_cast<std::size_t>(length));
        if (count == 0)
            return begin;
        if (count > 0) {
            begin += count;
            m_progress.bytes += count;
            report(false);
        } else if (errno == ENOSPC || errno == EDQUOT || errno == EFBIG) {
            target.fail();
        } else if (errno != EINTR) {
            source.fail();
        }
    }
    return end;
}

void TreeCopy::copyFolder(const WalkItem& source, const WalkItem& target, const struct stat& status) {
    if (m_top && m_top->st_dev == status.st_dev && m_top->st_ino == status.st_ino)
        source.fail(EINVAL);
    OpenFolder from(source);
    if (mkdirat(target.folder, target.name.c_str(), S_IRWXU) != 0)
        target.fail();
    if (!m_top)
        m_top = target.status();
    const OpenFolder to(target);
    for (std::string& name : from.readNames()) {
        const WalkItem item = from.item(name);
        copyAny(item, to.item(std::move(name)), item.status());
    }
    copyProperties(source, from.fd(), target, to.fd(), status);
}

void TreeCopy::throwIfStopped() const {
    if (m_stop.stop_requested())
        throw Cancelled();
}

void TreeCopy::report(bool isDue) {
    if (!m_onProgress)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (!isDue && now - m_reported < reportInterval)
        return;
    m_reported = now;
    m_onProgress(m_progress);
}

} // namespace tallyglass
