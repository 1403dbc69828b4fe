#include "TallyglassKit/Platform/CaseInsensitiveSearch.h"

#include "TallyglassKit/Platform/Icu.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <cstring>

namespace tallyglass {

namespace {

constexpr char16_t dotlessI = u'ı';

/// Turkic languages pair "I" with a letter outside ASCII, so there it stays itself, and folded() takes it for
/// that letter. What is ASCII thus stays ASCII in every language.
constexpr std::array<char, 256> caseTable(bool isTurkic) {
    std::array<char, 256> table{};
    for (int byte = 0; byte < 256; ++byte) {
        const bool changes = byte >= 'A' && byte <= 'Z' && !(isTurkic && byte == 'I');
        table[static_cast<std::size_t>(byte)] = static_cast<char>(changes ? byte - 'A' + 'a' : byte);
    }
    return table;
}

constexpr auto usualCases = caseTable(false);
constexpr auto turkicCases = caseTable(true);

constexpr std::size_t index(char byte) {
    return static_cast<unsigned char>(byte);
}

bool isAscii(std::string_view text) {
    unsigned char bits = 0; // without an early exit, so that the loop is vectorised
    for (const char byte : text)
        bits |= static_cast<unsigned char>(byte);
    return bits < 0x80;
}

/// Equal for texts that differ in case or in canonically equivalent forms only.
icu::UnicodeString folded(std::string_view text, bool isTurkic) {
    icutext::Status status;
    const icu::Normalizer2* composer = icu::Normalizer2::getNFCInstance(status);
    status.check("compose text");
    icu::UnicodeString result = composer->normalize(icutext::fromUtf8(text), status);
    result.foldCase(isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    result = composer->normalize(result, status); // folding can take a composed letter apart
    status.check("compose text");
    if (isTurkic)
        result.findAndReplace(icu::UnicodeString(dotlessI), icu::UnicodeString(u'I'));
    return result;
}

bool isCombiningMark(std::u16string_view text, std::size_t position) {
    UChar32 character = 0;
    U16_GET(text.data(), 0, position, text.size(), character);
    return u_getCombiningClass(character) != 0;
}

std::u16string_view view(const icu::UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

} // namespace

CaseInsensitiveSearch::CaseInsensitiveSearch(std::string_view text, const UserLocale& locale) {
    const std::string language = icutext::icuLocale(locale).getLanguage();
    m_isTurkic = language == "tr" || language == "az";
    m_lower = m_isTurkic ? &turkicCases : &usualCases;
    m_folded = view(folded(text, m_isTurkic));

    if (std::ranges::all_of(m_folded, [](char16_t unit) { return unit < 0x80; }))
        m_ascii.assign(m_folded.begin(), m_folded.end());
    m_skips.fill(static_cast<std::uint8_t>(std::min<std::size_t>(m_ascii.size(), UINT8_MAX)));
    for (std::size_t i = 0; i + 1 < m_ascii.size(); ++i) {
        const auto skip = static_cast<std::uint8_t>(std::min<std::size_t>(m_ascii.size() - 1 - i, UINT8_MAX));
        for (std::size_t byte = 0; byte < m_skips.size(); ++byte)
            if ((*m_lower)[byte] == m_ascii[i])
                m_skips[byte] = skip;
    }
}

bool CaseInsensitiveSearch::isContainedIn(std::string_view other) const {
    if (m_folded.empty())
        return true;
    if (!isAscii(other))
        return isContainedInUnicode(other);
    return !m_ascii.empty() && isContainedInAscii(other);
}

// Horspool's search: compares at one place, then moves on by the distance of the byte under the text's last
// one from that byte's last occurrence in the text.
bool CaseInsensitiveSearch::isContainedInAscii(std::string_view other) const {
    const std::size_t length = m_ascii.size();
    const CaseTable& lower = *m_lower;
    const char last = m_ascii.back();
    for (std::size_t end = length; end <= other.size(); end += m_skips[index(other[end - 1])]) {
        if (lower[index(other[end - 1])] != last)
            continue;
        const char* candidate = other.data() + (end - length);
        if (std::equal(m_ascii.begin(), m_ascii.end() - 1, candidate,
                       [&](char expected, char byte) { return lower[index(byte)] == expected; }))
            return true;
    }
    return false;
}

bool CaseInsensitiveSearch::isContainedInUnicode(std::string_view other) const {
    const icu::UnicodeString text = folded(other, m_isTurkic);
    const std::u16string_view units = view(text);
    for (auto at = units.find(m_folded); at != units.npos; at = units.find(m_folded, at + 1)) {
        const std::size_t end = at + m_folded.size();
        if (end == units.size() || !isCombiningMark(units, end)) // else the last letter there is another one
            return true;
    }
    return false;
}

} // namespace tallyglass
