#include "TallyglassKit/Platform/Files/PrivateFile.h"

#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileDraft.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>

namespace tallyglass {

void makePrivateFolder(const std::filesystem::path& folder) {
    struct stat status {};
    if (stat(folder.c_str(), &status) == 0) {
        if (!S_ISDIR(status.st_mode))
            throw FileError(ENOTDIR, folder);
        return;
    }
    if (folder.has_parent_path() && folder.has_relative_path())
        makePrivateFolder(folder.parent_path());
    if (mkdir(folder.c_str(), S_IRWXU) == 0) {
        if (chmod(folder.c_str(), S_IRWXU) != 0) // the umask may have removed the user's own rights
            throw FileError(errno, folder);
    } else if (errno != EEXIST) { // another process may have created it meanwhile
        throw FileError(errno, folder);
    }
}

void makePrivateFile(const std::filesystem::path& file) {
    // Closing any descriptor of a file releases all of this process's locks on it, so none may be open here
    // once another thread can find and lock the file.
    static std::mutex creation;
    const std::lock_guard lock(creation);
    struct stat status {};
    if (stat(file.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))
            throw FileError(EINVAL, file, "Not a regular file");
        return;
    }
    // A dangling link gets its target created, which O_EXCL would prevent.
    const bool isLink = lstat(file.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    const FileDescriptor descriptor(
        open(file.c_str(), O_CREAT | (isLink ? 0 : O_EXCL) | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR));
    if (descriptor.isOpen() ? fchmod(descriptor.fd(), S_IRUSR | S_IWUSR) != 0 : errno != EEXIST)
        throw FileError(errno, file);
}

void writePrivateFile(const std::filesystem::path& file, std::string_view contents) {
    FileDraft draft(file, FileDraft::Rights::ofUser);
    draft.append(contents);
    draft.publish();
}

void takeRightsFromOthers(const std::filesystem::path& path) {
    // By path, without a descriptor, for the same reason.
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    struct stat status {};
    if (lstat(path.c_str(), &status) != 0 || status.st_uid != geteuid() || !(status.st_mode & others))
        return;
    if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))
        static_cast<void>(
            fchmodat(AT_FDCWD, path.c_str(), status.st_mode & 07777 & ~others, AT_SYMLINK_NOFOLLOW));
}

} // namespace tallyglass
