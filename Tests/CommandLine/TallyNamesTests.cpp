// Backups, comparisons and commands by what a person types.

#include "TallyglassKit/Access/BackupName.h"
#include "Tests/CommandLine/TallyTest.h"

#include <gmock/gmock.h>

namespace tallyglass::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class TallyNamesTest : public TallyTest {
protected:
    const std::vector<std::string>& roots = SampleMachine::shared().backups();

    /// The paths that a comparison with these names compares.
    [[nodiscard]] std::pair<std::string, std::string> compared(std::vector<std::string> names) const {
        names.insert(names.begin(), {"compare", "--json"});
        const auto comparison = onMachine(names).json().at("comparison");
        return {comparison.at("fromPath"), comparison.at("toPath")};
    }
};

TEST_F(TallyNamesTest, tellWhichBackupsToCompare) {
    const auto last = roots.size() - 1;
    EXPECT_EQ(compared({}), (std::pair{roots[last - 1], roots[last]}));
    EXPECT_EQ(compared({BackupName::of(roots[2])}), (std::pair{roots[1], roots[2]}));
    EXPECT_EQ(compared({roots[2]}), (std::pair{roots[1], roots[2]}));
    EXPECT_EQ(compared({"oldest", "latest~1"}), (std::pair{roots[0], roots[last - 1]}));

    const auto oldest = onMachine({"compare", "oldest"});
    EXPECT_EQ(oldest.exitCode, 1);
    EXPECT_EQ(oldest.err, "tally: There is no backup before " + BackupName::of(roots[0]) + ".\n");
    EXPECT_THAT(onMachine({"compare", "1999"}).err,
                StartsWith("tally: There is no backup 1999; the first are "));
}

TEST_F(TallyNamesTest, standInTextInsteadOfPaths) {
    const auto last = roots.size() - 1;
    const auto names = BackupName::of(roots[last - 1]) + " → " + BackupName::of(roots[last]);
    const auto compare = onMachine({"compare"}).out;
    EXPECT_THAT(compare, StartsWith(names + ": "));
    EXPECT_THAT(onMachine({"comparisons"}).out, HasSubstr("\n  " + names + ", 3 folders deep\n"));
    for (const char* command : {"backups", "overview"}) {
        const auto out = onMachine({command}).out;
        EXPECT_THAT(out, HasSubstr("  " + BackupName::of(roots[last]) + "\n"));
        EXPECT_THAT(out, Not(HasSubstr("/Volumes/")));
    }
}

TEST_F(TallyNamesTest, findAComparisonInTheCache) {
    EXPECT_EQ(onMachine({"rollups", "xx"}).err,
              "tally: There is no comparison xx; there are none in the cache.\n");
    const std::string id = onMachine({"compare", "--no-limit", "--json"}).json().at("comparison").at("id");
    const auto rollups = onMachine({"rollups", id, "--json"}).json();

    EXPECT_EQ(onMachine({"rollups", "--json"}).json(), rollups);
    EXPECT_EQ(onMachine({"rollups", "latest", "--json"}).json(), rollups);
    EXPECT_EQ(onMachine({"rollups", "latest~1", "latest", "--json"}).json(), rollups);
    const auto names = BackupName::of(roots[roots.size() - 2]) + " → " + BackupName::of(roots.back());
    const auto unknown = onMachine({"rollups", "xx"});
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_EQ(unknown.err, "tally: There is no comparison xx; the latest is " + names + ".\n");
    EXPECT_EQ(onMachine({"rollups", "oldest", "latest"}).err,
              "tally: There is no comparison " + BackupName::of(roots[0]) + " → " +
                  BackupName::of(roots.back()) + "; the latest is " + names + ".\n");
}

TEST_F(TallyNamesTest, tellWhichCommandWasMeant) {
    EXPECT_EQ(tally({"comparr"}).err,
              "tally: There is no command comparr; did you mean compare? See tally --help.\n");
    EXPECT_EQ(tally({"--json", "nosuch"}).err, "tally: There is no command nosuch. See tally --help.\n");
    EXPECT_EQ(tally({}).err, "tally: A command is missing. See tally --help.\n");
}

} // namespace
} // namespace tallyglass::test
