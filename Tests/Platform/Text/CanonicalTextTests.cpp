#include "TallyglassKit/Platform/Text/CanonicalText.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

TEST(CanonicalText, isTheSameForEquivalentTexts) {
    const std::string composed = "/B\u00FCro/caf\u00E9";
    const std::string decomposed = "/Bu\u0308ro/cafe\u0301";
    EXPECT_TRUE(isCanonical(composed));
    EXPECT_FALSE(isCanonical(decomposed));
    EXPECT_EQ(canonicalForm(decomposed), composed);
    EXPECT_EQ(canonicalForm(composed), composed);
    EXPECT_TRUE(std::is_eq(compareCanonically(composed, decomposed)));
    EXPECT_EQ(canonicalForm("\u212B"), "\u00C5"); // the sign and the letter
    EXPECT_EQ(canonicalForm("\uFB01"), "\uFB01"); // a ligature is merely compatible
}

TEST(CanonicalText, isInTheOrderOfCodePointsWhateverTheForm) {
    EXPECT_TRUE(std::is_lt(compareCanonically("/a/B", "/a/b")));
    EXPECT_TRUE(std::is_lt(compareCanonically("/a", "/a/b")));
    EXPECT_TRUE(std::is_lt(compareCanonically("z", "\u00E9")));
    EXPECT_TRUE(std::is_lt(compareCanonically("z", "e\u0301"))); // though "e" comes before "z"
    EXPECT_TRUE(std::is_lt(compareCanonically("\uFB01", "\U0001F600")));
}

TEST(CanonicalText, leavesWhatIsNoTextAlone) {
    const std::string broken = "e\xCC";
    EXPECT_EQ(canonicalForm(broken), broken);
    EXPECT_EQ(canonicalForm(""), "");
    EXPECT_TRUE(isCanonical(std::string(100, 'a') + "\xFF"));
}

} // namespace
} // namespace tallyglass
