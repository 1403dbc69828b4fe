// Scans bytes sixteen at a time. Any thread.

#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace tallyglass {

static_assert(std::endian::native == std::endian::little, "the first byte of a word is taken for its lowest");

/// The eight bytes at `bytes`, the first one lowest.
inline std::uint64_t loadWord(const char* bytes) {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

/// Sixteen bytes. A mask has one bit per byte, the lowest for the first.
class ByteBlock {
public:
    static constexpr std::ptrdiff_t size = 16;

#ifdef __SSE2__
    explicit ByteBlock(const char* bytes) { std::memcpy(&m_bytes, bytes, sizeof(m_bytes)); }

    [[nodiscard]] std::uint32_t equalTo(char c) const {
        return mask(_mm_cmpeq_epi8(m_bytes, _mm_set1_epi8(c)));
    }
    [[nodiscard]] std::uint32_t nonASCII() const { return mask(m_bytes); }

private:
    static std::uint32_t mask(__m128i bytes) { return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes)); }

    __m128i m_bytes;
#else
    explicit ByteBlock(const char* bytes) { std::memcpy(m_bytes, bytes, sizeof(m_bytes)); }

    [[nodiscard]] std::uint32_t equalTo(char c) const {
        return mask([c](char byte) { return byte == c; });
    }
    [[nodiscard]] std::uint32_t nonASCII() const {
        return mask([](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
    }

private:
    template <typename Test>
    [[nodiscard]] std::uint32_t mask(Test test) const {
        std::uint32_t result = 0;
        for (int i = 0; i < size; ++i)
            result |= static_cast<std::uint32_t>(test(m_bytes[i])) << i;
        return result;
    }

    char m_bytes[size];
#endif
};

/// The first byte that isn't XML white space, or the end.
inline const char* skipXMLWhiteSpace(const char* begin, const char* end) {
    const char* p = begin;
    for (; end - p >= ByteBlock::size; p += ByteBlock::size) {
        const ByteBlock block(p);
        const std::uint32_t others =
            ~(block.equalTo('\t') | block.equalTo('\n') | block.equalTo(' ') | block.equalTo('\r')) & 0xffff;
        if (others)
            return p + std::countr_zero(others);
    }
    while (p != end && (*p == ' ' || *p == '\n' || *p == '\t' || *p == '\r'))
        ++p;
    return p;
}

struct MarkupScan {
    const char* end; ///< the first '<' or '&', or the end of the bytes
    bool isASCII;    ///< whether the bytes before `end` are
};

/// The end of a run of text in a document with markup.
inline MarkupScan scanToMarkup(const char* begin, const char* end) {
    std::uint32_t nonASCII = 0;
    const char* p = begin;
    for (; end - p >= ByteBlock::size; p += ByteBlock::size) {
        const ByteBlock block(p);
        if (const std::uint32_t markup = block.equalTo('<') | block.equalTo('&')) {
            const std::uint32_t before = (markup & -markup) - 1;
            return {p + std::countr_zero(markup), (nonASCII | (block.nonASCII() & before)) == 0};
        }
        nonASCII |= block.nonASCII();
    }
    for (; p != end && *p != '<' && *p != '&'; ++p)
        nonASCII |= static_cast<unsigned char>(*p) & 0x80;
    return {p, nonASCII == 0};
}

} // namespace tallyglass
