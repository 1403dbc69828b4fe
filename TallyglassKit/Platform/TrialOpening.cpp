#include "TallyglassKit/Platform/TrialOpening.h"

#include "TallyglassKit/Platform/FileDescriptor.h"

#include <fcntl.h>

#include <cerrno>

namespace tallyglass {

int errorOfOpening(const std::filesystem::path& file) {
    FileDescriptor descriptor;
    do
        descriptor = FileDescriptor(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    while (!descriptor.isOpen() && errno == EINTR);
    return descriptor.isOpen() ? 0 : errno;
}

} // namespace tallyglass
