// Full-text functions of SQLite that have no SQL interface.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallyglass {

class Connection;

/// The words that FTS5's tokenizer "ascii" finds in `text`, at its default settings: runs of ASCII letters,
/// digits and characters beyond ASCII, the letters lower-cased. Touches no table. Throws DatabaseError.
[[nodiscard]] std::vector<std::string> asciiTokens(Connection& connection, std::string_view text);

} // namespace tallyglass
