#include "TallyglassKit/Platform/PropertyListText.h"

#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>

namespace tallyglass {

namespace {

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

std::size_t findInvalidUTF8(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    const char* const bytes = text.data();
    const std::size_t size = text.size();
    std::size_t i = 0;
    while (i < size) {
        std::uint64_t word = 0;
        while (i + sizeof word <= size && (std::memcpy(&word, bytes + i, sizeof word), !(word & highBits)))
            i += sizeof word;
        if (i == size)
            break;
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

} // namespace tallyglass
