// A case-insensitive search for one text in many others, by the rules of the user's language.
//
// Only case is ignored: "e" isn't found in "é". Canonically equivalent texts are equal, so a composed search
// text is found in a decomposed file name, and "e" is found in neither form of "é". In Turkish and
// Azerbaijani "I" is the capital of "ı" and not of "i".
//
// Made once per search text. Immutable after construction; any thread.

#pragma once

#include "TallyglassKit/Platform/Text/UserLocale.h"

#include <string>
#include <string_view>

namespace tallyglass {

class CaseInsensitiveSearch {
public:
    /// Searches for `text`; the empty text is contained in everything.
    explicit CaseInsensitiveSearch(std::string_view text, const UserLocale& locale = UserLocale::current());

    /// Whether `other` contains the text. Takes tens of nanoseconds for an ASCII path, about a microsecond
    /// for others. Bytes that aren't UTF-8 are compared as they are.
    [[nodiscard]] bool isContainedIn(std::string_view other) const;

private:
    [[nodiscard]] bool isContainedInAscii(std::string_view other) const;
    [[nodiscard]] bool isContainedInUnicode(std::string_view other) const;

    bool m_isTurkic;
    std::u16string m_folded; ///< the folded text
    std::string m_ascii;     ///< the same in bytes; empty if it isn't ASCII
};

} // namespace tallyglass
