#include "HostTools/Machine/LinkCopier.h"
#include "HostTools/Machine/RsyncCopier.h"
#include "HostTools/Machine/SampleSchedule.h"
#include "HostTools/Machine/TreeComparison.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/SampleMachine.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace tallyglass::test {

namespace fs = std::filesystem;

namespace {

struct NoDifferences final : ComparisonSink {
    void differs(const TreeDifference& difference) override { ADD_FAILURE() << difference.path; }
    void unreadable(const std::string& path, int) override { ADD_FAILURE() << path; }
};

/// The inode of each regular file that both backups share, by path.
std::set<std::string> sharedFiles(const fs::path& older, const fs::path& newer) {
    std::set<std::string> result;
    for (const auto& entry : fs::recursive_directory_iterator(newer)) {
        const fs::path other = older / entry.path().lexically_relative(newer);
        if (entry.is_regular_file() && !entry.is_symlink() && fs::exists(other) &&
            fs::equivalent(entry.path(), other))
            result.insert(entry.path().lexically_relative(newer));
    }
    return result;
}

} // namespace

TEST(SampleMachineProgram, makesWhatEveryReaderExpects) {
    const SampleMachine& machine = SampleMachine::shared();
    const auto settings = TimeMachinePreferences().read(SystemPaths(machine.root())).value();
    const TMDestination& destination = settings.destinations.at(0);
    const auto entries = ManifestReader(TMUtilRunner(machine.tool()), SystemPaths(machine.root())).read();

    ASSERT_EQ(machine.backups().size(), 8u);
    ASSERT_EQ(entries.size(), 8u);
    ASSERT_EQ(destination.snapshotDates.size(), 8u);
    EXPECT_GT(destination.attemptDates.size(), 9u); // with failures and a deferral
    EXPECT_EQ(destination.lastResult, 100);
    EXPECT_NEAR(destination.usedFraction().value(), 0.8, 0.01);
    for (std::size_t index = 0; index < entries.size(); ++index) {
        EXPECT_EQ(entries[index].completionDate, destination.snapshotDates[index]);
        EXPECT_EQ(BackupPath::timestampOfRoot(machine.backups()[index]),
                  std::chrono::floor<std::chrono::seconds>(entries[index].completionDate));
        EXPECT_EQ(entries[index].isInitialBackup, index == 0);
        EXPECT_LT(entries[index].duration().value(), 3600);
        EXPECT_LT(entries[index].completionDate, dateSince1970(1795348800)); // its now
    }
    EXPECT_FALSE(
        fs::exists(fs::path(machine.backups()[0]) / SampleMachine::volumeName / "Users/alex/Library/Caches"));
}

TEST(SampleMachineProgram, makesTheSameMachineFromTheSameSeed) {
    const std::vector<std::string> options{"--backups", "4", "--files", "60", "--seed", "7"};
    const SampleMachine first(options);
    const SampleMachine second(options);
    const SampleMachine other({"--backups", "4", "--files", "60", "--seed", "8"});

    EXPECT_EQ(describeTree(first.root() / "Users"), describeTree(second.root() / "Users"));
    EXPECT_EQ(describeTree(first.backups().at(1)), describeTree(second.backups().at(1)));
    EXPECT_NE(describeTree(first.root() / "Users"), describeTree(other.root() / "Users"));
    EXPECT_EQ(fs::path(first.backups().at(3)).lexically_relative(first.root()),
              fs::path(second.backups().at(3)).lexically_relative(second.root()));
}

TEST(SampleMachineProgram, leavesAFolderInUseAlone) {
    const TemporaryFolder folder;
    folder.write("used/file", "x");
    folder.write("half/.unfinished", "");

    const auto used = runTool(program("sample-machine"), {folder / "used"});
    const auto half = runTool(program("sample-machine"), {folder / "half"});

    EXPECT_EQ(used.status, 1);
    EXPECT_THAT(used.errors, testing::HasSubstr("is not empty"));
    EXPECT_EQ(half.status, 1);
    EXPECT_THAT(half.errors, testing::HasSubstr("was not finished"));
}

TEST(SampleSchedule, hasOneGapAmongStepsThatStayInTheRhythm) {
    SeededRandom random(1);
    const Date now = dateSince1970(1'800'000'000);
    const auto attempts = sampleSchedule(60, now, random);
    std::vector<Date> backups;
    for (const SampleAttempt& attempt : attempts)
        if (attempt.result == 0)
            backups.push_back(attempt.start);

    int gaps = 0;
    for (std::size_t index = 6; index < backups.size(); ++index) {
        std::vector<double> before;
        for (std::size_t earlier = index - 5; earlier < index; ++earlier)
            before.push_back((backups[earlier] - backups[earlier - 1]).count());
        std::ranges::nth_element(before, before.begin() + 2);
        gaps += (backups[index] - backups[index - 1]).count() > 2.5 * before[2];
    }

    ASSERT_EQ(backups.size(), 60u);
    EXPECT_EQ(gaps, 1);
    EXPECT_TRUE(std::ranges::is_sorted(attempts, {}, &SampleAttempt::start));
    EXPECT_NEAR((now - backups.front()).count() / 86400, 60, 6);
    EXPECT_EQ(std::ranges::count_if(attempts, [](const auto& attempt) { return attempt.result != 0; }), 4);
}

TEST(SnapshotCopiers, copyAlike) {
    const TemporaryFolder folder;
    folder.write("live/home/Documents/a", "a");
    folder.write("live/home/Documents/b", "b");
    folder.write("live/home/left out/c", "c");
    folder.write("live/elsewhere/d", "d");
    fs::create_symlink("a", folder / "live/home/Documents/link");
    RsyncCopier rsync(-1);
    LinkCopier links;
    const auto copy = [&](SnapshotCopier& copier, const std::string& name, const fs::path& previous) {
        const fs::path volume = folder / name;
        fs::create_directories(volume);
        fs::create_directories(folder / "run");
        copier.copy({.liveRoot = folder / "live",
                     .sources = {"/home"},
                     .excluded = {"/home/left out"},
                     .volume = volume,
                     .previous = previous,
                     .limit = {},
                     .runFolder = folder / "run"},
                    [](const CopyProgress&) {});
        return volume;
    };

    const auto rsyncFirst = copy(rsync, "rsync1", {});
    const auto linksFirst = copy(links, "links1", {});
    folder.write("live/home/Documents/b", "B");
    fs::permissions(folder / "live/home/Documents", fs::perms::owner_all);
    const auto rsyncSecond = copy(rsync, "rsync2", rsyncFirst);
    const auto linksSecond = copy(links, "links2", linksFirst);

    NoDifferences sink;
    compareTrees({.older = rsyncFirst, .newer = linksFirst},
                 {.properties = {"@degmstu"}, .depth = {}, .ignoredNames = {}}, sink);
    compareTrees({.older = rsyncSecond, .newer = linksSecond},
                 {.properties = {"@degmstu"}, .depth = {}, .ignoredNames = {}}, sink);
    EXPECT_EQ(describeTree(linksSecond).size(), 5u);
    EXPECT_THAT(sharedFiles(rsyncFirst, rsyncSecond), testing::ElementsAre("home/Documents/a"));
    EXPECT_EQ(sharedFiles(rsyncFirst, rsyncSecond), sharedFiles(linksFirst, linksSecond));
}

TEST(RsyncCopier, readsTheLastWholeProgressLine) {
    CopyProgress progress;

    readProgress("\r        1024  10%  1.2MB/s  0:00:01 (xfr#3, to-chk=5/9)\r     204800  20%  1", progress);

    EXPECT_EQ(progress.bytes, 204800);
    EXPECT_EQ(progress.files, 3);
}

} // namespace tallyglass::test
