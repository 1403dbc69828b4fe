#include "TallyglassKit/Platform/Text/UTF8.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tallyglass {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// A sequence of bytes, which is one character if it is well-formed.
struct Sequence {
    std::size_t length;
    bool isWellFormed;
};

/// The sequence at the start of `bytes`, whose first byte isn't ASCII. An ill-formed one ends before the
/// first byte that can't continue it.
Sequence sequence(std::string_view bytes) {
    const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned lead = byte(0);
    // The second byte has a narrower range after some leads, which keeps out overlong forms, surrogates and
    // what lies beyond U+10FFFF.
    const unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    const std::size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                               : lead >= 0xE0 && lead <= 0xEF ? 3
                               : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                              : 1;
    if (length == 1)
        return {1, false};
    if (bytes.size() < 2 || byte(1) < low || byte(1) > high)
        return {1, false};
    for (std::size_t index = 2; index < length; ++index)
        if (index == bytes.size() || (byte(index) & 0xC0U) != 0x80U)
            return {index, false};
    return {length, true};
}

} // namespace

void appendUTF8(std::string& text, char32_t codePoint) {
    char encoded[U8_MAX_LENGTH];
    std::size_t size = 0;
    const char32_t valid = codePoint > 0x10FFFF || U_IS_SURROGATE(codePoint) ? U'\uFFFD' : codePoint;
    U8_APPEND_UNSAFE(encoded, size, valid);
    text.append(encoded, size);
}

std::size_t findNonASCII(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t word = 0;
    std::size_t i = 0;
    while (i + sizeof word <= text.size() &&
           (std::memcpy(&word, text.data() + i, sizeof word), !(word & highBits)))
        i += sizeof word;
    while (i < text.size() && !(text[i] & 0x80))
        ++i;
    return i;
}

std::size_t findInvalidUTF8(std::string_view text) {
    std::size_t i = 0;
    while ((i += findNonASCII(text.substr(i))) < text.size()) {
        const Sequence next = sequence(text.substr(i));
        if (!next.isWellFormed)
            return i;
        i += next.length;
    }
    return std::string_view::npos;
}

bool isUTF8(std::string_view bytes) {
    return findInvalidUTF8(bytes) == std::string_view::npos;
}

std::string decodeUTF8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (true) {
        const std::size_t good = std::min(findInvalidUTF8(bytes), bytes.size());
        text.append(bytes.substr(0, good));
        bytes.remove_prefix(good);
        if (bytes.empty())
            return text;
        text.append(replacement);
        bytes.remove_prefix(sequence(bytes).length);
    }
}

std::string utf8FromUTF16(std::string_view bytes, std::endian order) {
    const std::size_t units = bytes.size() / 2;
    const auto unit = [&](std::size_t i) {
        const auto high = static_cast<unsigned char>(bytes[2 * i + (order == std::endian::big ? 0 : 1)]);
        const auto low = static_cast<unsigned char>(bytes[2 * i + (order == std::endian::big ? 1 : 0)]);
        return static_cast<char16_t>(high << 8 | low);
    };
    std::string text;
    text.reserve(units + units / 2);
    for (std::size_t i = 0; i < units; ++i) {
        char32_t codePoint = unit(i);
        if (U16_IS_LEAD(codePoint) && i + 1 < units && U16_IS_TRAIL(unit(i + 1)))
            codePoint = static_cast<char32_t>(U16_GET_SUPPLEMENTARY(codePoint, unit(++i)));
        appendUTF8(text, codePoint);
    }
    return text;
}

std::string_view utf8Prefix(std::string_view text, std::size_t size) {
    if (size >= text.size())
        return text;
    while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80U)
        --size;
    return text.substr(0, size);
}

} // namespace tallyglass
