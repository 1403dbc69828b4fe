#include "TallyglassKit/Platform/Text/UTF8.h"

#include <cstdint>
#include <cstring>

namespace tallyglass {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

/// One step through the bytes: how many belong together, and whether they are a character.
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

/// The index of the first byte from `start` on that isn't ASCII, or the end.
std::size_t skipASCII(std::string_view bytes, std::size_t start) {
    for (; bytes.size() - start >= sizeof(std::uint64_t); start += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + start, sizeof word);
        if (word & 0x8080808080808080U)
            break;
    }
    while (start < bytes.size() && static_cast<unsigned char>(bytes[start]) < 0x80)
        ++start;
    return start;
}

/// The index of the first ill-formed sequence, or the end.
std::size_t wellFormedPrefix(std::string_view bytes) {
    for (std::size_t index = skipASCII(bytes, 0); index < bytes.size(); index = skipASCII(bytes, index)) {
        const Sequence next = sequence(bytes.substr(index));
        if (!next.isWellFormed)
            return index;
        index += next.length;
    }
    return bytes.size();
}

} // namespace

std::string decodeUTF8(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    while (true) {
        const std::size_t good = wellFormedPrefix(bytes);
        text.append(bytes.substr(0, good));
        bytes.remove_prefix(good);
        if (bytes.empty())
            return text;
        text.append(replacement);
        bytes.remove_prefix(sequence(bytes).length);
    }
}

bool isUTF8(std::string_view bytes) {
    return wellFormedPrefix(bytes) == bytes.size();
}

} // namespace tallyglass
