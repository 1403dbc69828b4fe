#include "TallyglassKit/Health/HumanizeCamelCase.h"

#include "TallyglassKit/Platform/Text/Icu.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>

namespace tallyglass {

namespace {

/// Whether a character, which may be a letter with combining marks, is upper case.
bool isUpperCase(std::string_view character) {
    const icu::UnicodeString text = icutext::fromUtf8(character);
    if (text.countChar32() == 1 && u_hasBinaryProperty(text.char32At(0), UCHAR_UPPERCASE))
        return true;
    const icu::Locale& root = icu::Locale::getRoot();
    const icu::UnicodeString upper = icu::UnicodeString(text).toUpper(root);
    return upper == text && upper != icu::UnicodeString(text).toLower(root);
}

} // namespace

std::string humanizeCamelCase(std::string_view text) {
    icutext::Status status;
    const std::unique_ptr<icu::BreakIterator> characters(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    icu::LocalUTextPointer bytes(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), status));
    status.check("find the characters of a text");
    characters->setText(bytes.getAlias(), status);
    status.check("find the characters of a text");

    std::string result;
    std::int32_t start = characters->first();
    for (auto end = characters->next(); end != icu::BreakIterator::DONE; end = characters->next()) {
        const auto character =
            text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
        if (!result.empty() && isUpperCase(character))
            result += ' ';
        result += character;
        start = end;
    }
    return result;
}

} // namespace tallyglass
