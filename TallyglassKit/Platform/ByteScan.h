// Looks through bytes eight at a time. Any thread.

#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

namespace tallyglass {

static_assert(std::endian::native == std::endian::little, "the first byte of a word is taken for its lowest");

/// The eight bytes at `bytes`, the first one lowest.
inline std::uint64_t loadWord(const char* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

/// A word of eight equal bytes.
constexpr std::uint64_t everyByte(unsigned char byte) {
    return 0x0101010101010101 * byte;
}

/// The high bit of the first byte of `word` that equals `byte`. Bits above it may be wrong, none below it is.
constexpr std::uint64_t firstEqual(std::uint64_t word, unsigned char byte) {
    const std::uint64_t difference = word ^ everyByte(byte);
    return (difference - everyByte(1)) & ~difference & everyByte(0x80);
}

struct MarkupScan {
    const char* end; ///< the first '<' or '&', or the end of the bytes
    bool isASCII;    ///< what lies before it
};

/// Where text in a document of markup ends.
inline MarkupScan scanToMarkup(const char* begin, const char* end) {
    std::uint64_t bits = 0;
    const char* p = begin;
    for (; end - p >= 8; p += 8) {
        const std::uint64_t word = loadWord(p);
        if (const std::uint64_t found = firstEqual(word, '<') | firstEqual(word, '&')) {
            const int offset = std::countr_zero(found) / 8;
            bits |= word & ((std::uint64_t{1} << 8 * offset) - 1);
            return {p + offset, (bits & everyByte(0x80)) == 0};
        }
        bits |= word;
    }
    for (; p != end && *p != '<' && *p != '&'; ++p)
        bits |= static_cast<unsigned char>(*p);
    return {p, (bits & everyByte(0x80)) == 0};
}

} // namespace tallyglass
