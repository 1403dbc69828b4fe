#include "TallyglassKit/Platform/PrivateFile.h"

#include "TallyglassKit/Platform/Error.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <system_error>

namespace tallyglass {

namespace {

[[noreturn]] void fail(const char* what, const std::filesystem::path& path, int code) {
    throw Error(fmt::format("The {} {} couldn't be created: {}.", what, path.string(),
                            std::generic_category().message(code)));
}

} // namespace

void makePrivateFolder(const std::filesystem::path& folder) {
    struct stat status {};
    if (folder.empty() || stat(folder.c_str(), &status) == 0) {
        if (!folder.empty() && !S_ISDIR(status.st_mode))
            fail("folder", folder, ENOTDIR);
        return;
    }
    if (folder.has_relative_path())
        makePrivateFolder(folder.parent_path());
    if (mkdir(folder.c_str(), S_IRWXU) == 0) {
        if (chmod(folder.c_str(), S_IRWXU) != 0) // the umask may have taken our own rights
            fail("folder", folder, errno);
    } else if (errno != EEXIST) { // another process may have been faster
        fail("folder", folder, errno);
    }
}

void makePrivateFile(const std::filesystem::path& file) {
    // Closing any descriptor of a file drops all of this process's locks on it, so none may be open here once
    // another thread can find the file and lock it.
    static std::mutex creation;
    const std::lock_guard lock(creation);
    const int descriptor = open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor < 0) {
        if (errno != EEXIST)
            fail("file", file, errno);
        return;
    }
    const int result = fchmod(descriptor, S_IRUSR | S_IWUSR);
    const int code = errno;
    close(descriptor);
    if (result != 0)
        fail("file", file, code);
}

void takeRightsFromOthers(const std::filesystem::path& path) {
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && status.st_uid == geteuid() && (status.st_mode & others))
        static_cast<void>(chmod(path.c_str(), status.st_mode & 07777 & ~others));
}

} // namespace tallyglass
