#include "Tests/Platform/Files/FaultyFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <optional>

namespace tallyglass::test {
namespace {

std::optional<int> callsLeft;
int faultError = 0;
bool isPlainRename = false;

/// Whether this call is to fail; errno then says why. Doesn't return if the process is to die.
bool fails(bool canFail = true) {
    if (!callsLeft || (*callsLeft)-- != 0)
        return false;
    if (faultError == 0) {
        kill(getpid(), SIGKILL);
        while (true)
            pause();
    }
    errno = faultError;
    return canFail;
}

} // namespace

FaultyFiles::FaultyFiles(int callsBefore, int error) {
    faultError = error;
    callsLeft = callsBefore;
}

FaultyFiles::~FaultyFiles() {
    callsLeft.reset();
}

PlainRename::PlainRename() {
    isPlainRename = true;
}

PlainRename::~PlainRename() {
    isPlainRename = false;
}

} // namespace tallyglass::test

using tallyglass::test::fails;

extern "C" {

ssize_t copy_file_range(int from, off_t* in, int to, off_t* out, size_t size, unsigned flags) {
    return fails() ? -1 : syscall(SYS_copy_file_range, from, in, to, out, size, flags);
}
int ftruncate(int file, off_t size) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_ftruncate, file, size));
}
int mkdirat(int folder, const char* name, mode_t mode) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_mkdirat, folder, name, mode));
}
int symlinkat(const char* target, int folder, const char* name) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_symlinkat, target, folder, name));
}
int mknodat(int folder, const char* name, mode_t mode, dev_t device) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_mknodat, folder, name, mode, device));
}
int fchmod(int file, mode_t mode) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_fchmod, file, mode));
}
int futimens(int file, const timespec* times) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_utimensat, file, nullptr, times, 0));
}
int fsetxattr(int file, const char* name, const void* value, size_t size, int flags) noexcept {
    return fails() ? -1 : static_cast<int>(syscall(SYS_fsetxattr, file, name, value, size, flags));
}
// A test needn't wait for the disk.
int fsync(int) {
    return fails() ? -1 : 0;
}
int syncfs(int) noexcept {
    return fails() ? -1 : 0;
}
int unlinkat(int folder, const char* name, int flags) noexcept {
    return fails(false) ? -1 : static_cast<int>(syscall(SYS_unlinkat, folder, name, flags));
}
int renameat2(int from, const char* name, int to, const char* newName, unsigned flags) noexcept {
    if (tallyglass::test::isPlainRename && flags != 0) {
        errno = EINVAL;
        return -1;
    }
    return fails() ? -1 : static_cast<int>(syscall(SYS_renameat2, from, name, to, newName, flags));
}

} // extern "C"
