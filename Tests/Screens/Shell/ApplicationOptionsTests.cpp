#include "Tallyglass/Screens/Shell/ApplicationOptions.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

ApplicationOptions parse(const std::vector<std::string>& arguments) {
    return ApplicationOptions::parse(arguments, {"healthy", "running"});
}

TEST(ApplicationOptions, areEmptyWithoutArguments) {
    EXPECT_EQ(parse({}), ApplicationOptions{});
}

TEST(ApplicationOptions, takeASessionAndAFolderForItsPictures) {
    const ApplicationOptions options = parse({"--fixture", "running", "--screenshots=out"});

    EXPECT_EQ(options.fixture, "running");
    EXPECT_EQ(options.screenshots, "out");
}

TEST(ApplicationOptions, refuseWhatMakesNoSenseInOneLine) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--fixture", "unheard"},
                                                      {"--fixture"},
                                                      {"--unknown"},
                                                      {"stray"},
                                                      {"--screenshots", ""}}) {
        try {
            parse(arguments);
            ADD_FAILURE() << arguments.front() << " was taken";
        } catch (const UsageError& error) {
            EXPECT_EQ(error.errorDescription().find('\n'), std::string::npos);
        }
    }
}

TEST(ApplicationOptions, answerWithTheSessionsInTheHelpAndWithTheVersion) {
    EXPECT_NE(parse({"--help"}).answer->find("healthy, running"), std::string::npos);
    EXPECT_TRUE(parse({"--version"}).answer->starts_with("Tallyglass "));
}

} // namespace
} // namespace tallyglass
