#include "Tests/Support/NamedPipe.h"

#include "TallyglassKit/Platform/Files/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <stdexcept>
#include <utility>

namespace tallyglass::test {

NamedPipe::NamedPipe(std::filesystem::path path) : m_path(std::move(path)) {
    if (mkfifo(m_path.c_str(), S_IRUSR | S_IWUSR) != 0)
        throw std::runtime_error("no pipe at " + m_path.string());
}

void NamedPipe::release() const {
    const FileDescriptor writer(open(m_path.c_str(), O_WRONLY | O_CLOEXEC));
}

} // namespace tallyglass::test
