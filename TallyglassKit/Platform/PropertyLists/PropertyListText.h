// Conversions of text to UTF-8 that the readers of property lists share. Any thread.

#pragma once

#include <bit>
#include <cstddef>
#include <string>
#include <string_view>

namespace tallyglass {

/// Appends a code point; a surrogate or a number beyond Unicode becomes U+FFFD.
void appendUTF8(std::string& text, char32_t codePoint);

/// The offset of the first byte of 128 or more, or the size of the text.
[[nodiscard]] std::size_t findNonASCII(std::string_view text);

/// The offset of the first byte that isn't UTF-8, or npos.
[[nodiscard]] std::size_t findInvalidUTF8(std::string_view text);

/// Converts UTF-16 code units of the given byte order. A lone surrogate becomes U+FFFD, an odd last byte is
/// dropped.
[[nodiscard]] std::string utf8FromUTF16(std::string_view bytes, std::endian order);

/// The character of a byte in the encoding that octal escapes of old-style text are in.
[[nodiscard]] char32_t characterOfNextStep(unsigned char byte);

} // namespace tallyglass
