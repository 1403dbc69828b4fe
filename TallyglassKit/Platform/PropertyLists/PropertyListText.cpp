#include "TallyglassKit/Platform/PropertyLists/PropertyListText.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>
#include <iterator>

namespace tallyglass {

namespace {

// From 0x80 on; below it is ASCII.
constexpr char16_t nextStep[] =
    u"\u00A0\u00C0\u00C1\u00C2\u00C3\u00C4\u00C5\u00C7\u00C8\u00C9\u00CA\u00CB\u00CC\u00CD\u00CE\u00CF"
    u"\u00D0\u00D1\u00D2\u00D3\u00D4\u00D5\u00D6\u00D9\u00DA\u00DB\u00DC\u00DD\u00DE\u00B5\u00D7\u00F7"
    u"\u00A9\u00A1\u00A2\u00A3\u2044\u00A5\u0192\u00A7\u00A4\u2019\u201C\u00AB\u2039\u203A\uFB01\uFB02"
    u"\u00AE\u2013\u2020\u2021\u00B7\u00A6\u00B6\u2022\u201A\u201E\u201D\u00BB\u2026\u2030\u00AC\u00BF"
    u"\u00B9\u02CB\u00B4\u02C6\u02DC\u00AF\u02D8\u02D9\u00A8\u00B2\u02DA\u00B8\u00B3\u02DD\u02DB\u02C7"
    u"\u2014\u00B1\u00BC\u00BD\u00BE\u00E0\u00E1\u00E2\u00E3\u00E4\u00E5\u00E7\u00E8\u00E9\u00EA\u00EB"
    u"\u00EC\u00C6\u00ED\u00AA\u00EE\u00EF\u00F0\u00F1\u0141\u00D8\u0152\u00BA\u00F2\u00F3\u00F4\u00F5"
    u"\u00F6\u00E6\u00F9\u00FA\u00FB\u0131\u00FC\u00FD\u0142\u00F8\u0153\u00DF\u00FE\u00FF\uFFFD\uFFFD";
static_assert(std::size(nextStep) == 128 + 1);

// Of the sequence that begins here; 0 if it isn't a legal one.
std::size_t sequenceLength(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return 0;
    // The second byte tells overlong forms, surrogates and what lies beyond Unicode.
    const unsigned least = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const unsigned most = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (byte(1) < least || byte(1) > most)
        return 0;
    for (std::size_t i = 2; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    return length;
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
        const std::size_t length = sequenceLength(text.substr(i, U8_MAX_LENGTH));
        if (length == 0)
            return i;
        i += length;
    }
    return std::string_view::npos;
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

char32_t characterOfNextStep(unsigned char byte) {
    return byte < 0x80 ? byte : nextStep[byte - 0x80];
}

} // namespace tallyglass
