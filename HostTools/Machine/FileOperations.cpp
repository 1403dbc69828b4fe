#include "HostTools/Machine/FileOperations.h"

#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FolderWalk.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <fstream>
#include <iterator>

namespace tallyglass {

namespace fs = std::filesystem;

namespace {

void writeAll(int descriptor, std::string_view contents, const fs::path& file) {
    while (!contents.empty()) {
        const ssize_t written = write(descriptor, contents.data(), contents.size());
        if (written < 0 && errno != EINTR)
            throw FileError(errno, file.string());
        contents.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
}

struct flock wholeFile(short type) {
    struct flock region {};
    region.l_type = type;
    region.l_whence = SEEK_SET;
    return region;
}

FileDescriptor openLockFile(const fs::path& file) {
    fs::create_directories(file.parent_path());
    FileDescriptor descriptor(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644));
    if (!descriptor.isOpen())
        throw FileError(errno, file.string());
    return descriptor;
}

} // namespace

void replaceFile(const fs::path& file, std::string_view contents, Durability durability) {
    fs::create_directories(file.parent_path());
    std::string temporary = file.string() + ".XXXXXX";
    FileDescriptor descriptor(mkostemp(temporary.data(), O_CLOEXEC));
    if (!descriptor.isOpen())
        throw FileError(errno, temporary);
    try {
        writeAll(descriptor.fd(), contents, temporary);
        fchmod(descriptor.fd(), 0644);
        if (durability == Durability::disk && fsync(descriptor.fd()) != 0)
            throw FileError(errno, temporary);
        if (rename(temporary.c_str(), file.c_str()) != 0)
            throw FileError(errno, file.string());
    } catch (...) {
        unlink(temporary.c_str());
        throw;
    }
}

std::optional<std::string> readWholeFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return std::nullopt;
    std::string contents{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad())
        return std::nullopt;
    return contents;
}

void removeTree(const fs::path& path) {
    // A backup keeps the permissions of its source, so a folder in it may not be writable.
    remove(WalkItem::at(path), Removal::forced, {});
}

FileLock FileLock::wait(const fs::path& file) {
    FileDescriptor descriptor = openLockFile(file);
    auto region = wholeFile(F_WRLCK);
    while (fcntl(descriptor.fd(), F_OFD_SETLKW, &region) != 0)
        if (errno != EINTR)
            throw FileError(errno, file.string());
    return FileLock(std::move(descriptor));
}

std::optional<FileLock> FileLock::attempt(const fs::path& file) {
    FileDescriptor descriptor = openLockFile(file);
    auto region = wholeFile(F_WRLCK);
    if (fcntl(descriptor.fd(), F_OFD_SETLK, &region) == 0)
        return FileLock(std::move(descriptor));
    if (errno == EAGAIN || errno == EACCES)
        return std::nullopt;
    throw FileError(errno, file.string());
}

bool FileLock::isHeld(const fs::path& file) {
    const FileDescriptor descriptor(open(file.c_str(), O_RDWR | O_CLOEXEC));
    if (!descriptor.isOpen())
        return false;
    auto region = wholeFile(F_WRLCK);
    return fcntl(descriptor.fd(), F_OFD_GETLK, &region) == 0 && region.l_type != F_UNLCK;
}

} // namespace tallyglass
