#include "TallyglassKit/Platform/Text/Text.h"
#include "TallyglassKit/Platform/Text/UTF8.h"

#include <gtest/gtest.h>

using namespace std::string_view_literals;

namespace tallyglass::test {

TEST(DecodeUTF8, keepsWellFormedText) {
    for (const auto text : {""sv, "plain ASCII, longer than one word"sv, "\u00E9\u0800\uD7FF\uE000\uFFFF"sv,
                            "\U00010000\U0010FFFF"sv, "with\0null"sv}) {
        EXPECT_EQ(decodeUTF8(text), text);
        EXPECT_TRUE(isUTF8(text));
    }
}

TEST(DecodeUTF8, replacesEachMaximalPartOfAnIllFormedSequence) {
    const auto check = [](std::string_view bytes, std::string_view expected) {
        EXPECT_EQ(decodeUTF8(bytes), expected);
        EXPECT_FALSE(isUTF8(bytes));
    };
    check("12345678\x80 9", "12345678\uFFFD 9");                               // a lone continuation byte
    check("\xE2\x82", "\uFFFD");                                               // cut off
    check("\xE2\x82z\xF0\x9F\x98", "\uFFFDz\uFFFD");                           //
    check("\xC0\x80", "\uFFFD\uFFFD");                                         // overlong
    check("\xE0\x80\xAF", "\uFFFD\uFFFD\uFFFD");                               //
    check("\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD");                               // a surrogate
    check("\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD");                     // beyond the last character
    check("\xF8\x88\x80\x80\x80\xFF", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"); // invalid lead bytes
    check("a\xF1\x80\x80\xE1\x80\xC2"
          "b",
          "a\uFFFD\uFFFD\uFFFDb");
}

TEST(Trimmed, takesAwayWhiteSpaceOfEveryKind) {
    EXPECT_EQ(trimmed(" \t\r\n\v\f\u00A0a b\u0085\u1680\u2003\u2028\u3000"), "a b");
    EXPECT_EQ(trimmed(" \n "), "");
    EXPECT_EQ(trimmed("\u200Ba\xE3\x80"), "\u200Ba\xE3\x80");
}

TEST(ContainsIgnoringCase, findsWordsInAnyCaseOfLetters) {
    EXPECT_TRUE(containsIgnoringCase("needs fULL dISK aCCESS.", "Full Disk Access"));
    EXPECT_FALSE(containsIgnoringCase("needs Full  Disk Access", "Full Disk Access"));
    EXPECT_FALSE(containsIgnoringCase("Full Disk Acces", "Full Disk Access"));
    EXPECT_TRUE(containsIgnoringCase("", ""));
}

} // namespace tallyglass::test
