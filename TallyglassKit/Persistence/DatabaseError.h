// A failure that SQLite reported. Immutable; any thread may read it.

#pragma once

#include "TallyglassKit/Platform/Error.h"

#include <filesystem>
#include <string>
#include <utility>

namespace tallyglass {

class DatabaseError : public Error {
public:
    /// `code` is SQLite's extended result code, `text` its own words, which are what is shown. When the file
    /// itself is what is wrong, such as one that is no database, `file` is named behind them.
    DatabaseError(int code, const std::string& text, std::filesystem::path file = {})
        : Error(file.empty() ? text : text + ": " + file.string()), m_code(code), m_file(std::move(file)) {}

    [[nodiscard]] int code() const { return m_code; }
    /// The file at fault; empty where the failure isn't one of the file.
    [[nodiscard]] const std::filesystem::path& file() const { return m_file; }

private:
    int m_code;
    std::filesystem::path m_file;
};

} // namespace tallyglass
