// UTF-8: checking bytes from outside, converting to it, and cutting it. Pure; any thread.

#pragma once

#include <bit>
#include <cstddef>
#include <string>
#include <string_view>

namespace tallyglass {

/// `bytes` as UTF-8 text. Never fails: each maximal part of an ill-formed sequence becomes one U+FFFD, which
/// is the practice that Unicode recommends, so "\xE2\x82" yields one and "\xC0\x80" two of them. Null
/// characters are kept.
[[nodiscard]] std::string decodeUTF8(std::string_view bytes);

/// Whether `bytes` are well-formed UTF-8.
[[nodiscard]] bool isUTF8(std::string_view bytes);

/// The offset of the first ill-formed sequence, or npos.
[[nodiscard]] std::size_t findInvalidUTF8(std::string_view text);

/// The offset of the first byte of 128 or more, or the size of the text.
[[nodiscard]] std::size_t findNonASCII(std::string_view text);

/// Appends a code point; a surrogate or a number beyond Unicode becomes U+FFFD.
void appendUTF8(std::string& text, char32_t codePoint);

/// Converts UTF-16 code units of the given byte order. A lone surrogate becomes U+FFFD, an odd last byte is
/// dropped.
[[nodiscard]] std::string utf8FromUTF16(std::string_view bytes, std::endian order);

/// The longest beginning of `text` of at most `size` bytes that doesn't end within a character. Requires:
/// `text` is UTF-8.
[[nodiscard]] std::string_view utf8Prefix(std::string_view text, std::size_t size);

} // namespace tallyglass
