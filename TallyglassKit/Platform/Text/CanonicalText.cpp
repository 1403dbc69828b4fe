#include "TallyglassKit/Platform/Text/CanonicalText.h"

#include "TallyglassKit/Platform/Text/Icu.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tallyglass {
namespace {

bool isAscii(std::string_view text) {
    constexpr std::uint64_t highBits = 0x8080808080808080;
    std::uint64_t seen = 0;
    std::size_t index = 0;
    for (; index + sizeof seen <= text.size(); index += sizeof seen) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data() + index, sizeof word);
        seen |= word;
    }
    for (; index < text.size(); ++index)
        seen |= static_cast<unsigned char>(text[index]);
    return (seen & highBits) == 0;
}

const icu::Normalizer2& composer() {
    static const icu::Normalizer2& composer = [&]() -> const icu::Normalizer2& {
        icutext::Status status;
        const icu::Normalizer2* const instance = icu::Normalizer2::getNFCInstance(status);
        status.check("compose text");
        return *instance;
    }();
    return composer;
}

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

} // namespace

bool isCanonical(std::string_view text) {
    if (isAscii(text) || !isUTF8(text))
        return true;
    icutext::Status status;
    const bool result = composer().isNormalizedUTF8(piece(text), status) != 0;
    status.check("compose text");
    return result;
}

std::string canonicalForm(std::string_view text) {
    if (isCanonical(text))
        return std::string(text);
    std::string form;
    icu::StringByteSink<std::string> sink(&form, static_cast<std::int32_t>(text.size()));
    icutext::Status status;
    composer().normalizeUTF8(0, piece(text), sink, nullptr, status);
    status.check("compose text");
    return form;
}

std::strong_ordering compareCanonically(std::string_view left, std::string_view right) {
    if (isCanonical(left) && isCanonical(right))
        return left <=> right;
    return canonicalForm(left) <=> canonicalForm(right);
}

} // namespace tallyglass
