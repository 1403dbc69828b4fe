#include "Tallyglass/Screens/ApplicationOptions.h"

#include <gtest/gtest.h>

namespace tallyglass {
namespace {

const QStringList fixtures{"healthy", "running"};

ApplicationOptions parse(const QStringList& arguments) {
    return ApplicationOptions::parse(arguments, fixtures);
}

TEST(ApplicationOptions, areEmptyWithoutArguments) {
    EXPECT_EQ(parse({}), ApplicationOptions{});
}

TEST(ApplicationOptions, takeASessionAndAFolderForItsPictures) {
    const ApplicationOptions options =
        parse({"--fixture", "running", "--screenshots=out", "--appearance", "dark", "--text-scale", "2"});

    EXPECT_EQ(options.fixture, "running");
    EXPECT_EQ(options.screenshots, "out");
    EXPECT_EQ(options.appearance, ApplicationOptions::Appearance::dark);
    EXPECT_EQ(options.textScale, 2);
}

TEST(ApplicationOptions, refuseWhatMakesNoSenseInOneLine) {
    for (const QStringList& arguments :
         {QStringList{"--fixture", "unheard"}, QStringList{"--fixture"}, QStringList{"--unknown"},
          QStringList{"stray"}, QStringList{"--text-scale", "nan"}, QStringList{"--text-scale", "9"},
          QStringList{"--appearance", "blue"}, QStringList{"--screenshots", ""}}) {
        try {
            parse(arguments);
            ADD_FAILURE() << qPrintable(arguments.join(' ')) << " was taken";
        } catch (const UsageError& error) {
            EXPECT_EQ(error.errorDescription().find('\n'), std::string::npos);
            EXPECT_NE(error.errorDescription().find("--help"), std::string::npos);
        }
    }
}

TEST(ApplicationOptions, nameTheSessionsInTheirHelp) {
    const QString help = ApplicationOptions::help(fixtures);

    EXPECT_TRUE(help.contains("--screenshots"));
    EXPECT_TRUE(help.contains("healthy, running"));
}

} // namespace
} // namespace tallyglass
