// A failure of the file system, in the platform's words. Immutable; any thread may read it.

#pragma once

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/ErrorNumber.h"

#include <memory>
#include <string>

namespace tallyglass {

class FileError : public Error {
public:
    /// `code` is an error number of the platform such as ENOENT.
    FileError(int code, const std::string& path) : FileError(code, path, errorText(code)) {}
    /// The same with other words than the platform's.
    FileError(int code, const std::string& path, const std::string& words)
        : Error(path + ": " + words), m_code(code), m_path(std::make_shared<const std::string>(path)) {}

    [[nodiscard]] int code() const noexcept { return m_code; }
    [[nodiscard]] const std::string& path() const noexcept { return *m_path; }

private:
    int m_code;
    std::shared_ptr<const std::string> m_path; // shared, because copying an exception must not throw
};

} // namespace tallyglass
