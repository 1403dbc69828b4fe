#include "TallyglassKit/Platform/Text/CaseInsensitiveSearch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tallyglass {

namespace {

const UserLocale english{.identifier = "en_US", .timeZone = ""};
const UserLocale turkish{.identifier = "tr_TR", .timeZone = ""};

bool contains(std::string_view path, std::string_view text, const UserLocale& locale = english) {
    return CaseInsensitiveSearch(text, locale).isContainedIn(path);
}

} // namespace

TEST(CaseInsensitiveSearch, findsAsciiInEitherCaseAnywhere) {
    const std::string_view path = "/Users/ana/Library/Notes.TXT";
    for (const char* text : {"/users", "LIBRARY", "notes.txt", "t", "/Users/ana/Library/Notes.TXT"})
        EXPECT_TRUE(contains(path, text)) << text;
    for (const char* text : {"Libraries", "xt.", "/Users/ana/Library/Notes.TXT/", "@", "_"})
        EXPECT_FALSE(contains(path, text)) << text;
}

TEST(CaseInsensitiveSearch, agreesWithAPlainSearchOnTextsThatOverlapThemselves) {
    std::mt19937 random(1);
    const auto letters = [&](std::string_view alphabet, std::size_t length) {
        std::string text(length, '\0');
        std::ranges::generate(text, [&] { return alphabet[random() % alphabet.size()]; });
        return text;
    };
    int found = 0;
    for (int i = 0; i < 20'000; ++i) {
        const std::string text = letters("ab", 1 + random() % 6);
        const std::string path = letters("ab/", random() % 30);
        std::string upper = path;
        std::ranges::transform(path, upper.begin(),
                               [](char c) { return c == '/' ? c : static_cast<char>(c - 'a' + 'A'); });
        const bool expected = path.find(text) != std::string::npos;
        found += expected;
        ASSERT_EQ(contains(upper, text), expected) << path << " " << text;
    }
    EXPECT_GT(found, 1000);
}

TEST(CaseInsensitiveSearch, findsTextsInPathsOfAnyLength) {
    for (const std::size_t length : {1022u, 1023u, 1024u, 5000u}) {
        const std::string path = std::string(length, 'X') + "y";
        EXPECT_TRUE(contains(path, std::string(length, 'x') + "Y")) << length;
        EXPECT_FALSE(contains(path, std::string(length + 1, 'x') + "Y")) << length;
    }
}

TEST(CaseInsensitiveSearch, findsTheEmptyTextInEverything) {
    EXPECT_TRUE(contains("/a", ""));
    EXPECT_TRUE(contains("", ""));
    EXPECT_FALSE(contains("", "a"));
}

TEST(CaseInsensitiveSearch, foldsCaseBeyondAscii) {
    EXPECT_TRUE(contains("/ÄRGER/ΩΜΈΓΑ", "ärger/ωμέγα"));
    EXPECT_TRUE(contains("/straße", "STRASSE"));
    EXPECT_TRUE(contains("/5 \u212Aelvin", "5 kelvin")); // the Kelvin sign
    EXPECT_TRUE(contains("/5 kelvin", "\u212Aelvin"));
}

TEST(CaseInsensitiveSearch, takesComposedAndDecomposedLettersForTheSame) {
    EXPECT_TRUE(contains("/Cafe\u0301 menu", "CAFÉ"));
    EXPECT_TRUE(contains("/Café menu", "cafe\u0301"));
}

TEST(CaseInsensitiveSearch, mindsDiacriticsInEveryForm) {
    EXPECT_FALSE(contains("/Café", "cafe"));
    EXPECT_FALSE(contains("/Cafe\u0301", "cafe"));
    EXPECT_FALSE(contains("/Cafe", "café"));
    EXPECT_TRUE(contains("/Cafe\u0301/cafe", "cafe")); // matches at a later position
}

TEST(CaseInsensitiveSearch, knowsTheTurkishLetters) {
    EXPECT_FALSE(contains("/FILE", "file", turkish));
    EXPECT_TRUE(contains("/FILE", "fıle", turkish));
    EXPECT_TRUE(contains("/fıle", "FILE", turkish));
    EXPECT_TRUE(contains("/FİLE", "file", turkish));
    EXPECT_TRUE(contains("/FI\u0307LE", "file", turkish));
    EXPECT_TRUE(contains("/DATA", "data", turkish));
    EXPECT_TRUE(contains("/FILE", "file", english));
}

TEST(CaseInsensitiveSearch, survivesBytesThatAreNoText) {
    EXPECT_TRUE(contains("/a\xFF\xC3/Name", "name"));
    EXPECT_FALSE(contains("/name", "\xC3"));
}

} // namespace tallyglass
