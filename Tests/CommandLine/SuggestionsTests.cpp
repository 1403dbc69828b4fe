#include "CommandLine/Commands/Suggestions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallyglass::commandline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Suggestions, areTheWordsNearAMistypedOne) {
    const std::vector<std::string> words = {"compare", "comparisons", "include", "exclude", "trace"};

    EXPECT_THAT(wordsNear("comp", words), ElementsAre("compare", "comparisons"));
    EXPECT_THAT(wordsNear("cmopare", words), ElementsAre("compare"));
    EXPECT_THAT(wordsNear("enclude", words), ElementsAre("include", "exclude"));
    EXPECT_THAT(wordsNear("traces", words), ElementsAre("trace"));
    EXPECT_THAT(wordsNear("nosuch", words), IsEmpty());
    EXPECT_THAT(wordsNear("", words), IsEmpty());
}

} // namespace
} // namespace tallyglass::commandline
