#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace tallyglass {

namespace {

FileStatus::Kind kind(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return FileStatus::Kind::file;
    case S_IFDIR:
        return FileStatus::Kind::folder;
    case S_IFLNK:
        return FileStatus::Kind::symbolicLink;
    default:
        return FileStatus::Kind::other;
    }
}

} // namespace

std::optional<FileStatus> FileStatus::of(const std::string& path) {
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0)
        return std::nullopt;
    return FileStatus{.kind = tallyglass::kind(status.st_mode),
                      .device = status.st_dev,
                      .inode = status.st_ino,
                      .size = status.st_size,
                      .modifiedSeconds = status.st_mtim.tv_sec,
                      .modifiedNanoseconds = static_cast<std::int32_t>(status.st_mtim.tv_nsec)};
}

bool fileExists(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

bool isReadable(const std::string& path) {
    return access(path.c_str(), R_OK) == 0;
}

bool isExecutableFile(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

int openStatus(const std::string& path) {
    FileDescriptor file;
    do
        file = FileDescriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    while (!file.isOpen() && errno == EINTR);
    return file.isOpen() ? 0 : errno;
}

} // namespace tallyglass
