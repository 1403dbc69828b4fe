#include "TallyglassKit/Platform/Text/CaseInsensitiveSearch.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>

namespace tallyglass {

namespace {

constexpr char16_t dotlessI = u'ı';

/// Turkic languages pair "I" with a letter outside ASCII, so there "I" isn't changed here and folded() maps
/// it to that letter. ASCII text thus stays ASCII in every language.
constexpr char lowered(char byte, bool isTurkic) {
    const bool changes = byte >= 'A' && byte <= 'Z' && !(isTurkic && byte == 'I');
    return static_cast<char>(changes ? byte | 0x20 : byte);
}

bool isAscii(std::string_view text) {
    unsigned char bits = 0; // no early exit, so that the loop is vectorised
    for (const char byte : text)
        bits |= static_cast<unsigned char>(byte);
    return bits < 0x80;
}

/// Equal for texts that differ only in case or canonical form.
icu::UnicodeString folded(std::string_view text, bool isTurkic) {
    icutext::Status status;
    const icu::Normalizer2* composer = icu::Normalizer2::getNFCInstance(status);
    status.check("compose text");
    icu::UnicodeString result = composer->normalize(icutext::fromUtf8(text), status);
    result.foldCase(isTurkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT);
    result = composer->normalize(result, status); // folding can decompose a letter
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
    m_folded = view(folded(text, m_isTurkic));

    if (std::ranges::all_of(m_folded, [](char16_t unit) { return unit < 0x80; }))
        m_ascii.assign(m_folded.begin(), m_folded.end());
}

bool CaseInsensitiveSearch::isContainedIn(std::string_view other) const {
    if (m_folded.empty())
        return true;
    if (!isAscii(other))
        return isContainedInUnicode(other);
    return !m_ascii.empty() && isContainedInAscii(other);
}

// Lower-cases the whole path first, which takes a few vector instructions, so that the library's search can
// be used.
bool CaseInsensitiveSearch::isContainedInAscii(std::string_view other) const {
    std::array<char, 1024> room; // longer than nearly every path; uninitialised
    std::string longRoom;
    char* lower = room.data();
    if (other.size() > room.size()) {
        longRoom.resize(other.size());
        lower = longRoom.data();
    }
    std::ranges::transform(other, lower,
                           [isTurkic = m_isTurkic](char byte) { return lowered(byte, isTurkic); });
    return std::string_view(lower, other.size()).find(m_ascii) != std::string_view::npos;
}

bool CaseInsensitiveSearch::isContainedInUnicode(std::string_view other) const {
    const icu::UnicodeString text = folded(other, m_isTurkic);
    const std::u16string_view units = view(text);
    for (auto at = units.find(m_folded); at != units.npos; at = units.find(m_folded, at + 1)) {
        const std::size_t end = at + m_folded.size();
        if (end == units.size() || !isCombiningMark(units, end)) // else the last letter differs
            return true;
    }
    return false;
}

} // namespace tallyglass
