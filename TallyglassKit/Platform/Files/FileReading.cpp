#include "TallyglassKit/Platform/Files/FileReading.h"

#include "TallyglassKit/Platform/Files/FileDescriptor.h"
#include "TallyglassKit/Platform/Files/FileError.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace tallyglass {

namespace {

/// The most that one read takes, so that a stop takes effect soon.
constexpr std::size_t readSize = std::size_t{16} << 20;
/// Milliseconds between checks for a stop while waiting for input.
constexpr int stopInterval = 100;

/// The size of the open regular file. Throws if it exceeds `most`.
std::size_t checkedSize(const FileDescriptor& file, const std::string& path, std::size_t most) {
    struct stat status {};
    if (fstat(file.fd(), &status) != 0)
        throw FileError(errno, path);
    if (S_ISDIR(status.st_mode))
        throw FileError(EISDIR, path);
    if (!S_ISREG(status.st_mode))
        throw FileError(EINVAL, path, "Not a regular file");
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > most)
        throw FileError(EFBIG, path);
    return size;
}

/// Reads until the end. `expected` is a hint of the size; `wait` returns when a read won't block for long.
template <typename Wait>
ByteBuffer readToEnd(int descriptor, const std::string& name, std::size_t expected, std::size_t most,
                     const std::stop_token& stop, Wait wait) {
    ByteBuffer bytes;
    while (true) {
        wait();
        if (stop.stop_requested())
            throw Cancelled();
        const auto room = bytes.tail(std::max<std::size_t>(expected, 1 << 12));
        const auto count = read(descriptor, room.data(), std::min(room.size(), readSize));
        if (count == 0)
            return bytes;
        if (count > 0) {
            bytes.commit(static_cast<std::size_t>(count));
            if (bytes.size() > most)
                throw FileError(EFBIG, name);
            expected -= std::min(expected, static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throw FileError(errno, name);
        }
    }
}

} // namespace

ByteBuffer readFile(const std::string& path, std::stop_token stop, std::size_t most) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen())
        throw FileError(errno, path);
    // A file may grow meanwhile, so the size is only a hint; the extra byte lets the last read find the end.
    return readToEnd(file.fd(), path, checkedSize(file, path, most) + 1, most, stop, [] {});
}

ByteBuffer readStandardInput(std::stop_token stop, std::size_t most) {
    const auto waitForInput = [&] {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        while (!stop.stop_requested() && poll(&input, 1, stopInterval) <= 0) {
        }
    };
    return readToEnd(STDIN_FILENO, "standard input", 0, most, stop, waitForInput);
}

} // namespace tallyglass
