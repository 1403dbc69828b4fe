// A failure that SQLite reported. Immutable; any thread may read it.

#pragma once

#include "TallyglassKit/Platform/Error.h"

#include <filesystem>
#include <string>

namespace tallyglass {

class DatabaseError : public Error {
public:
    /// `code` is SQLite's extended result code, `text` its message, which is shown. `file` is named after it
    /// when the file itself is at fault, such as one that is no database.
    DatabaseError(int code, const std::string& text, const std::filesystem::path& file = {})
        : Error(file.empty() ? text : text + ": " + file.string()), m_code(code) {}

    [[nodiscard]] int code() const { return m_code; }

private:
    int m_code;
};

} // namespace tallyglass
