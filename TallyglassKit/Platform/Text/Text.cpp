#include "TallyglassKit/Platform/Text/Text.h"

#include <algorithm>
#include <array>

namespace tallyglass {

namespace {

constexpr std::array<std::string_view, 25> whiteSpaces = {
    "\t",           "\n",           "\v",           "\f",           "\r",           " ",
    "\xC2\x85",     "\xC2\xA0",     "\xE1\x9A\x80", "\xE2\x80\x80", "\xE2\x80\x81", "\xE2\x80\x82",
    "\xE2\x80\x83", "\xE2\x80\x84", "\xE2\x80\x85", "\xE2\x80\x86", "\xE2\x80\x87", "\xE2\x80\x88",
    "\xE2\x80\x89", "\xE2\x80\x8A", "\xE2\x80\xA8", "\xE2\x80\xA9", "\xE2\x80\xAF", "\xE2\x81\x9F",
    "\xE3\x80\x80"};

constexpr char lowered(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::string_view trimmed(std::string_view text) {
    const auto find = [&](auto matches) {
        const auto* space = std::ranges::find_if(whiteSpaces, matches);
        return space == whiteSpaces.end() ? 0 : space->size();
    };
    while (const auto length = find([&](std::string_view space) { return text.starts_with(space); }))
        text.remove_prefix(length);
    while (const auto length = find([&](std::string_view space) { return text.ends_with(space); }))
        text.remove_suffix(length);
    return text;
}

bool containsIgnoringCase(std::string_view text, std::string_view part) {
    return !std::ranges::search(text, part, {}, lowered, lowered).empty() || part.empty();
}

} // namespace tallyglass
