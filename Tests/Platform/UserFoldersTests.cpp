#include "TallyglassKit/Platform/UserFolders.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/Variable.h"

#include <gtest/gtest.h>

namespace tallyglass::test {
namespace {

TEST(UserFolders, findTheDesktopWhereTheUserHasPutIt) {
    const TemporaryFolder folder;
    const Variable home("HOME", "/home/ada");
    const Variable configuration("XDG_CONFIG_HOME", folder.path());
    const auto desktop = [&](const std::string& settings) {
        folder.write("user-dirs.dirs", settings);
        return desktopFolder().string();
    };

    EXPECT_EQ(desktopFolder(), "/home/ada/Desktop"); // without the file
    EXPECT_EQ(desktop("# XDG_DESKTOP_DIR=\"/no\"\nXDG_DOCUMENTS_DIR=\"$HOME/Docs\"\n"), "/home/ada/Desktop");
    EXPECT_EQ(desktop("XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"), "/home/ada/Schreibtisch");
    EXPECT_EQ(desktop("  XDG_DESKTOP_DIR=\"/data/My \\\"Desk\\\"\" # mine"), "/data/My \"Desk\"");
    EXPECT_EQ(desktop("XDG_DESKTOP_DIR=\"/first\"\nXDG_DESKTOP_DIR=\"/last\"\n"), "/last");
    EXPECT_EQ(desktop("XDG_DESKTOP_DIR=\"$HOME/\"\n"), "/home/ada/"); // no folder of its own
    for (const char* broken : {"XDG_DESKTOP_DIR=\n", "XDG_DESKTOP_DIR=/a\n", "XDG_DESKTOP_DIR=\"Desk\"\n",
                               "XDG_DESKTOP_DIR=\"$OTHER/a\"\n", "XDG_DESKTOP_DIRS=\"/a\"\n"})
        EXPECT_EQ(desktop(broken), "/home/ada/Desktop") << broken;

    const Variable relative("XDG_CONFIG_HOME", "somewhere"); // counts as unset
    const Variable other("HOME", folder / "ada");
    folder.write("ada/.config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Bureau\"\n");
    EXPECT_EQ(desktopFolder(), folder / "ada/Bureau");
}

} // namespace
} // namespace tallyglass::test
