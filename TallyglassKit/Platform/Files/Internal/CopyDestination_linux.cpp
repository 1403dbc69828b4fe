// Who copies into a folder holds a shared lock on it; the lock goes with the process that holds it. So
// whoever gets the exclusive lock knows that every draft in the folder belongs to a copy that was killed. The
// names are read under that lock; removing them needs none, as no later draft can have one of these names.

#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/Internal/CopyDestination.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <random>
#include <string_view>
#include <thread>
#include <utility>

namespace tallyglass {

namespace {

constexpr std::string_view draftPrefix = ".tallyglass-copy-";
constexpr std::string_view previousPrefix = ".tallyglass-previous-";

/// A copy that looks for leftovers holds the exclusive lock for a moment; any other program that holds it
/// isn't waited for.
constexpr int lockAttempts = 100;
constexpr auto lockInterval = std::chrono::milliseconds(5);

bool isSame(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

FileDescriptor openPlace(int folder, const char* name) {
    return FileDescriptor(openat(folder, name, O_PATH | O_DIRECTORY | O_CLOEXEC));
}

/// Whether `folder` is the folder with that status or lies in it, however deep.
bool isWithin(int folder, const struct stat& container) {
    FileDescriptor place = openPlace(folder, ".");
    struct stat status {};
    while (place.isOpen() && fstat(place.fd(), &status) == 0) {
        if (isSame(status, container))
            return true;
        FileDescriptor parent = openPlace(place.fd(), "..");
        struct stat parentStatus {};
        if (!parent.isOpen() || fstat(parent.fd(), &parentStatus) != 0 || isSame(status, parentStatus))
            return false; // the root
        place = std::move(parent);
    }
    return false;
}

std::string parentOf(const std::string& path) {
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "." : path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string randomName(std::string_view prefix) {
    std::random_device random;
    return fmt::format("{}{:08x}{:08x}", prefix, random(), random());
}

bool isUnsupported(int error) {
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

int renameItem(const WalkItem& from, const WalkItem& to, unsigned flags) {
    return renameat2(from.folder, from.name.c_str(), to.folder, to.name.c_str(), flags) == 0 ? 0 : errno;
}

} // namespace

CopyDestination::CopyDestination(const std::string& path) : m_item(WalkItem::at(path)) {
    const std::string parent = parentOf(m_item.path);
    m_folder = openPlace(AT_FDCWD, parent.c_str());
    if (!m_folder.isOpen())
        throw FileError(errno, parent);
    m_item.folder = m_folder.fd();
    m_item.name.erase(0, m_item.name.rfind('/') + 1);
    m_draft = {m_folder.fd(), randomName(draftPrefix), m_item.path};
}

std::optional<struct stat> CopyDestination::existingItem() const {
    struct stat status {};
    if (fstatat(m_folder.fd(), m_item.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return status;
    if (errno != ENOENT)
        m_item.fail();
    return std::nullopt;
}

void CopyDestination::check(const WalkItem& source, ExistingItem existing) const {
    const auto fail = [&](const char* text) { throw FileError(EINVAL, m_item.path, text); };
    const struct stat status = source.status();
    if (S_ISDIR(status.st_mode) && isWithin(m_folder.fd(), status))
        fail("This is inside the folder that is to be copied");
    const auto item = existingItem();
    if (!item)
        return;
    if (existing == ExistingItem::keep)
        m_item.fail(EEXIST);
    if (isSame(*item, status))
        fail("This is the item that is to be copied");
    if (S_ISDIR(item->st_mode)) {
        const FileDescriptor parent = openPlace(AT_FDCWD, parentOf(source.path).c_str());
        if (!parent.isOpen() || isWithin(parent.fd(), *item))
            fail("This folder holds the item that is to be copied");
    }
}

void CopyDestination::begin(const std::stop_token& stop) {
    m_lock = FileDescriptor(openat(m_folder.fd(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!m_lock.isOpen())
        return; // a folder that can't be read, in which nobody finds leftovers either
    removeLeftovers(stop);
    for (int attempt = 0; attempt < lockAttempts && flock(m_lock.fd(), LOCK_SH | LOCK_NB) != 0; ++attempt) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return; // a file system without locks, on which nothing is removed
        std::this_thread::sleep_for(lockInterval);
    }
}

void CopyDestination::removeLeftovers(const std::stop_token& stop) const {
    if (flock(m_lock.fd(), LOCK_EX | LOCK_NB) != 0)
        return;
    try {
        OpenFolder folder(WalkItem{m_folder.fd(), ".", parentOf(m_item.path)});
        auto names = folder.readNames();
        flock(m_lock.fd(), LOCK_UN);
        std::erase_if(names, [](const std::string& name) { return !name.starts_with(draftPrefix); });
        for (std::string& name : names) {
            const WalkItem leftover = folder.item(std::move(name));
            if (leftover.status().st_uid == geteuid())
                remove(leftover, Removal::forced, stop);
        }
    } catch (const FileError&) { // it stays, which harms nobody
        flock(m_lock.fd(), LOCK_UN);
    }
}

std::optional<WalkItem> CopyDestination::finish(ExistingItem existing) const {
    if (existing == ExistingItem::replace && existingItem())
        return replace();
    int error = renameItem(m_draft, m_item, RENAME_NOREPLACE);
    if (isUnsupported(error))
        error = existingItem() ? EEXIST : renameItem(m_draft, m_item, 0);
    if (error == EEXIST && existing == ExistingItem::replace)
        return replace();
    if (error != 0)
        m_item.fail(error);
    return std::nullopt;
}

std::optional<WalkItem> CopyDestination::replace() const {
    synchronizeDraft();
    const auto previous = existingItem();
    const bool areFolders = previous && (S_ISDIR(previous->st_mode) || S_ISDIR(m_draft.status().st_mode));
    const int error = renameItem(m_draft, m_item, areFolders ? RENAME_EXCHANGE : 0);
    if (areFolders && isUnsupported(error))
        return exchangeInSteps();
    if (error != 0)
        m_item.fail(error);
    return areFolders ? std::optional(m_draft) : std::nullopt;
}

WalkItem CopyDestination::exchangeInSteps() const {
    WalkItem previous{m_folder.fd(), randomName(previousPrefix), m_item.path};
    if (const int error = renameItem(m_item, previous, 0); error != 0)
        m_item.fail(error);
    if (const int error = renameItem(m_draft, m_item, 0); error != 0) {
        static_cast<void>(renameItem(previous, m_item, 0));
        m_item.fail(error);
    }
    return previous;
}

void CopyDestination::removeReplaced(const WalkItem& item) const {
    try {
        remove(item, Removal::forced, {});
    } catch (const FileError& error) {
        if (error.code() != ENOENT) // another copy has found and removed it
            throw FileError(error.code(), m_item.path,
                            fmt::format("This was replaced, but what was here before couldn't be removed and "
                                        "is now named {} ({})",
                                        item.name, errorText(error.code())));
    }
}

void CopyDestination::synchronizeDraft() const {
    const mode_t kind = m_draft.status().st_mode & S_IFMT;
    if (kind != S_IFREG && kind != S_IFDIR)
        return;
    const FileDescriptor draft(
        openat(m_folder.fd(), m_draft.name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!draft.isOpen())
        sync(); // its own permissions forbid to read it
    else if ((kind == S_IFREG ? fsync(draft.fd()) : syncfs(draft.fd())) != 0)
        m_item.fail();
}

void CopyDestination::discard() const noexcept {
    try {
        remove(m_draft, Removal::forced, {});
    } catch (...) { // nothing was created, or cleaning up failed too
    }
}

} // namespace tallyglass
