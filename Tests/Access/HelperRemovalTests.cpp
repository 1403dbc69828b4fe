#include "TallyglassKit/Access/HelperRemoval.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <filesystem>

namespace tallyglass {
namespace {

TEST(HelperRemoval, runsTheHelpersOwnScriptOnlyIfItIsExecutable) {
    const test::TemporaryFolder folder;
    const HelperRemoval removal{SystemPaths(folder / "it's")};
    const auto script = folder.write(fmt::format("it's{}", HelperRemoval::scriptPath), "");
    EXPECT_THAT(removal.command(), testing::StartsWith("rm -f "));

    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    EXPECT_EQ(removal.command(), fmt::format(R"('{}/it'\''s/usr/local/libexec/tallyglass-uninstall.sh')",
                                             folder.path().string()));
}

TEST(HelperRemoval, removesEachFileByItselfWithoutTheScript) {
    EXPECT_EQ(HelperRemoval{SystemPaths("/")}.command(),
              "rm -f /Library/LaunchDaemons/com.brindlewick.Tallyglass.helper.plist; "
              "rm -f /usr/local/libexec/tallyglass-helper /usr/local/libexec/tallyglass-uninstall.sh; "
              "rm -rf '/Library/Application Support/Tallyglass'; "
              "rm -f /var/log/tallyglass-helper.log; "
              "launchctl bootout system/com.brindlewick.Tallyglass.helper 2>/dev/null || true");
}

TEST(HelperRemoval, keepsTheCommandWithinItsAppleScriptText) {
    EXPECT_EQ(HelperRemoval::appleScript(R"('/a "b" \c')"),
              R"(do shell script "'/a \"b\" \\c'" with administrator privileges)");
}

} // namespace
} // namespace tallyglass
