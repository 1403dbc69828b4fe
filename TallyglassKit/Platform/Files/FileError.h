// A failure of the file system, with the platform's text. Immutable; any thread may read it.

#pragma once

#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/ErrorText.h"

#include <memory>
#include <string>

namespace tallyglass {

class FileError : public Error {
public:
    /// `code` is an error number of the platform such as ENOENT.
    FileError(int code, const std::string& path) : FileError(code, path, errorText(code)) {}
    /// The same with another text than the platform's.
    FileError(int code, const std::string& path, const std::string& text)
        : Error(path + ": " + text), m_code(code), m_path(std::make_shared<const std::string>(path)) {}

    [[nodiscard]] int code() const noexcept { return m_code; }
    [[nodiscard]] const std::string& path() const noexcept { return *m_path; }

private:
    int m_code;
    std::shared_ptr<const std::string> m_path; // shared, because copying an exception must not throw
};

} // namespace tallyglass
