#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace tallyglass::test {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tallyglass-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder at " + pattern);
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

std::filesystem::path TemporaryFolder::write(std::string_view name, std::string_view contents) const {
    const auto file = m_path / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(contents.data(), static_cast<std::streamsize>(contents.size()));
    if (!stream.flush())
        throw std::runtime_error("could not write " + file.string());
    return file;
}

std::string program(std::string_view name) {
    return std::string(TALLYGLASS_PROGRAMS "/").append(name);
}

} // namespace tallyglass::test
