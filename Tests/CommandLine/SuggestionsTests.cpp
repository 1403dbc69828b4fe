#include "CommandLine/Commands/Suggestions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tallyglass::commandline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Suggestions, areTheWordsNearAMistypedOne) {
    const std::vector<std::string> words = {"compare", "comparisons", "include", "exclude", "trace"};

    EXPECT_THAT(nearestWords("comp", words), ElementsAre("compare", "comparisons"));
    EXPECT_THAT(nearestWords("cmopare", words), ElementsAre("compare"));
    EXPECT_THAT(nearestWords("enclude", words), ElementsAre("include", "exclude"));
    EXPECT_THAT(nearestWords("traces", words), ElementsAre("trace"));
    EXPECT_THAT(nearestWords("nosuch", words), IsEmpty());
    EXPECT_THAT(nearestWords("", words), IsEmpty());
}

} // namespace
} // namespace tallyglass::commandline
