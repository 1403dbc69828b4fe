// Bytes from outside as text. Any thread.

#pragma once

#include <string>
#include <string_view>

namespace tallyglass {

/// `bytes` as UTF-8 text. Never fails: each maximal part of an ill-formed sequence becomes one U+FFFD, which
/// is the practice that Unicode recommends, so "\xE2\x82" yields one and "\xC0\x80" two of them. Null
/// characters are kept.
[[nodiscard]] std::string decodeUTF8(std::string_view bytes);

/// Whether `bytes` are well-formed UTF-8.
[[nodiscard]] bool isUTF8(std::string_view bytes);

} // namespace tallyglass
