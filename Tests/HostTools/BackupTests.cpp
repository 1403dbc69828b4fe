#include "HostTools/Machine/RunState.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Access/BackupStatus.h"
#include "TallyglassKit/Access/ManifestReader.h"
#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "Tests/Support/HostMachine.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <csignal>
#include <thread>

namespace tallyglass::test {

namespace fs = std::filesystem;

namespace {

ino_t inodeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_ino;
}

BackupStatus statusOf(const HostMachine& machine) {
    return TMUtilRunner(machine.tool()).status();
}

/// Polls until the status matches; the test's time limit ends a futile wait.
template <typename Wanted>
BackupStatus waitForStatus(const HostMachine& machine, Wanted wanted) {
    for (;;) {
        const BackupStatus status = statusOf(machine);
        if (wanted(status))
            return status;
        std::this_thread::yield();
    }
}

bool isIdle(const BackupStatus& status) {
    return !status.isRunning;
}

/// The tmutil that runs this machine's backup: it holds the lock open, as its rsync does.
std::vector<pid_t> backupProcesses(const HostMachine& machine) {
    const fs::path tool = fs::canonical(machine.tool());
    const fs::path lock = fs::canonical(machine.paths().runFolder() / "running.lock");
    std::vector<pid_t> result;
    for (const auto& process : fs::directory_iterator("/proc")) {
        std::error_code gone;
        if (fs::read_symlink(process.path() / "exe", gone) != tool)
            continue;
        for (fs::directory_iterator file(process.path() / "fd", gone), end; !gone && file != end;
             file.increment(gone))
            if (std::error_code closed; fs::read_symlink(file->path(), closed) == lock)
                result.push_back(std::stoi(process.path().filename()));
    }
    return result;
}

/// A source so large that its throttled copy is still running when the test checks.
void fillWithLargeFiles(const HostMachine& machine) {
    for (int index = 0; index < 4; ++index)
        machine.folder().write("source/large" + std::to_string(index),
                               std::string(4'000'000, static_cast<char>('a' + index)));
}

void expectNothingInTheMaking(const HostMachine& machine) {
    for (const auto& entry : fs::directory_iterator(machine.disk()))
        EXPECT_NE(entry.path().extension(), ".inprogress") << entry.path();
}

} // namespace

TEST(Backup, holdsWhatTheSourceHolds) {
    const HostMachine machine;
    machine.folder().write("source/Documents/Résumé \u00e9.txt", "composed");
    machine.folder().write("source/Documents/Re\u0301sume\u0301.txt", "decomposed");
    machine.folder().write("source/we[i]rd*/new\nline", "odd");
    machine.folder().write("source/private/secret", "mine");
    fs::create_symlink("nowhere at all", machine.source() / "link");
    fs::create_hard_link(machine.source() / "private/secret", machine.source() / "private/twin");
    setExtendedAttribute(machine.source() / "private/secret", "com.example.tag", "blue");
    fs::permissions(machine.source() / "private/secret", fs::perms::owner_read);
    fs::permissions(machine.source() / "private", fs::perms::owner_read | fs::perms::owner_exec);
    machine.setUp();

    machine.backUp();

    const auto backups = machine.backups();
    ASSERT_EQ(backups.size(), 1u);
    const fs::path copy = machine.inBackup(backups[0]);
    EXPECT_EQ(describeTree(copy), describeTree(machine.source()));
    EXPECT_EQ(extendedAttribute(copy / "private/secret", "com.example.tag"), "blue");
    EXPECT_EQ(inodeOf(copy / "private/secret"), inodeOf(copy / "private/twin"));
    expectNothingInTheMaking(machine);
}

TEST(Backup, sharesWhatIsUnchangedWithTheBackupBefore) {
    const HostMachine machine;
    for (const char* name : {"same", "edited", "chmodded", "removed"})
        machine.folder().write("source/" + std::string(name), name);
    machine.setUp();
    machine.backUp();

    machine.folder().write("source/edited", "EDITED"); // within the same second, and of the same size
    fs::permissions(machine.source() / "chmodded", fs::perms::owner_read);
    fs::remove(machine.source() / "removed");
    machine.backUp();

    const auto backups = machine.backups();
    ASSERT_EQ(backups.size(), 2u);
    const fs::path older = machine.inBackup(backups[0]);
    const fs::path newer = machine.inBackup(backups[1]);
    EXPECT_EQ(inodeOf(older / "same"), inodeOf(newer / "same"));
    EXPECT_NE(inodeOf(older / "edited"), inodeOf(newer / "edited"));
    EXPECT_NE(inodeOf(older / "chmodded"), inodeOf(newer / "chmodded"));
    EXPECT_EQ(describeTree(newer), describeTree(machine.source()));
    EXPECT_TRUE(fs::exists(older / "removed"));
}

TEST(Backup, leavesOutWhatIsExcludedAndItself) {
    const HostMachine machine;
    for (const char* name : {"kept/file", "marked/file", "skipped/file", "odd [x]*/file", "odd x/file"})
        machine.folder().write("source/" + std::string(name), name);
    const std::string inside = machine.source() / "backups";
    machine.run({"setup", "--source", machine.source(), "--destination", inside});
    machine.run({"addexclusion", machine.source() / "marked", machine.source() / "odd [x]*"});
    machine.run({"addexclusion", "-p", machine.source() / "skipped"});

    machine.backUp();

    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(machine.inBackup(machine.backups().at(0))))
        names.push_back(entry.path().filename());
    EXPECT_THAT(names, testing::UnorderedElementsAre("kept", "odd x"));
}

TEST(Backup, isOnRecordInThePreferencesAndTheManifest) {
    const HostMachine machine;
    machine.folder().write("source/a", std::string(1000, 'a'));
    machine.folder().write("source/b", std::string(20, 'b'));
    machine.setUp({"--quota", "1000000"});
    machine.backUp();
    machine.folder().write("source/b", std::string(5000, 'c'));
    machine.backUp();

    const TMDestination destination = machine.destination();
    const auto entries = ManifestReader(TMUtilRunner(machine.tool()), SystemPaths(machine.root())).read();

    ASSERT_EQ(entries.size(), 2u);
    EXPECT_TRUE(entries[0].isInitialBackup);
    EXPECT_FALSE(entries[1].isInitialBackup);
    EXPECT_EQ(entries[0].changedLogicalSize, 1020);
    EXPECT_EQ(entries[1].changedLogicalSize, 5000);
    EXPECT_EQ(entries[1].changedCount, 1); // rewriting a file doesn't change the folder's date
    EXPECT_EQ(destination.lastResult, 0);
    ASSERT_EQ(destination.snapshotDates.size(), 2u);
    EXPECT_EQ(destination.attemptDates.size(), 2u);
    EXPECT_EQ(destination.snapshotDates[1], entries[1].completionDate);
    EXPECT_EQ(BackupPath::stamp(entries[1].completionDate) + ".backup",
              fs::path(machine.backups()[1]).filename());
    EXPECT_EQ(destination.totalBytes(), 1'000'000);
    EXPECT_EQ(destination.bytesUsed, entries[0].changedPhysicalSize + entries[1].changedPhysicalSize);
}

TEST(Backup, runsInTheBackgroundAndStopsOnRequest) {
    const HostMachine machine;
    machine.folder().write("source/first", "first");
    machine.setUp();
    machine.backUp();
    fillWithLargeFiles(machine);
    machine.run({"arrange", "--copy-limit", "500"});

    const auto started = machine.run({"startbackup"}); // returns only when all pipes are closed
    const auto copying = waitForStatus(machine, [](const BackupStatus& status) {
        return status.bytesCopied.value_or(0) > 0 || !status.isRunning;
    });
    const auto again = machine.run({"startbackup"});
    machine.run({"stopbackup"});
    waitForStatus(machine, isIdle);

    EXPECT_EQ(started.status, 0);
    EXPECT_EQ(started.output + started.errors, "");
    EXPECT_EQ(again.output, "A backup is already running.\n");
    EXPECT_EQ(copying.phase, "Copying");
    EXPECT_EQ(copying.totalBytes, 16'000'000);
    EXPECT_EQ(copying.totalFiles, 4);
    EXPECT_GT(copying.percent.value(), 0);
    EXPECT_GT(copying.timeRemaining.value(), 0);
    EXPECT_EQ(machine.backups().size(), 1u);
    EXPECT_EQ(machine.destination().lastResult, 22);
    EXPECT_EQ(machine.destination().attemptDates.size(), 2u);
    expectNothingInTheMaking(machine);
}

TEST(Backup, thatIsKilledLeavesTheOthersAndItsAttempt) {
    const HostMachine machine;
    machine.folder().write("source/first", "first");
    machine.setUp();
    machine.backUp();
    const auto before = describeTree(machine.backups().at(0));
    fillWithLargeFiles(machine);
    machine.run({"arrange", "--copy-limit", "500"});
    machine.run({"startbackup"});
    waitForStatus(machine, [](const BackupStatus& status) { return status.bytesCopied.value_or(0) > 0; });

    for (const pid_t process : backupProcesses(machine))
        kill(process, SIGKILL);
    waitForStatus(machine, isIdle); // rsync ends with it
    const auto afterKill = machine.backups();
    machine.run({"arrange", "--copy-limit", "0"});
    machine.backUp();

    ASSERT_EQ(afterKill.size(), 1u);
    EXPECT_EQ(describeTree(afterKill[0]), before);
    EXPECT_EQ(machine.destination().attemptDates.size(), 3u);
    EXPECT_EQ(machine.destination().snapshotDates.size(), 2u);
    EXPECT_EQ(describeTree(machine.inBackup(machine.backups().at(1))), describeTree(machine.source()));
    expectNothingInTheMaking(machine);
}

TEST(Backup, endsWithTheResultOfWhatWentWrong) {
    const HostMachine machine;
    machine.folder().write("source/file", std::string(100'000, 'x'));
    machine.setUp();
    machine.backUp();
    const auto resultOfNext = [&] {
        EXPECT_EQ(machine.run({"startbackup", "--block"}).status, 1);
        EXPECT_EQ(machine.backups().size(), 1u);
        return machine.destination().lastResult;
    };

    machine.run({"arrange", "--next-result", "100"});
    EXPECT_EQ(resultOfNext(), 100);

    machine.run({"arrange", "--next-result", "27"});
    EXPECT_EQ(resultOfNext(), 27);

    machine.folder().write("source/file", std::string(400'000, 'y'));
    machine.setUp({"--quota", "300000"});
    EXPECT_EQ(resultOfNext(), 7);

    fs::rename(machine.source(), machine.folder() / "elsewhere");
    EXPECT_EQ(resultOfNext(), 37);
    fs::rename(machine.folder() / "elsewhere", machine.source());

    fs::rename(machine.disk(), machine.folder() / "unplugged");
    EXPECT_EQ(machine.run({"startbackup", "--block"}).status, 1);
    EXPECT_EQ(machine.destination().lastResult, 18);
    EXPECT_EQ(machine.destination().attemptDates.size(), 6u);
    EXPECT_EQ(machine.destination().snapshotDates.size(), 1u);
}

TEST(Backup, goesToTheDestinationThatWasAddedLast) {
    const HostMachine machine;
    machine.folder().write("source/file", "file");
    machine.setUp();
    machine.backUp();
    const auto first = machine.backups();

    machine.run({"setup", "--source", machine.source(), "--destination", machine.folder() / "second"});
    const bool isEmptyAtFirst = machine.backups().empty();
    machine.backUp();
    const auto second = machine.backups();
    machine.run({"startbackup", "--block", "--destination", machine.destination().id});

    EXPECT_TRUE(isEmptyAtFirst);
    ASSERT_EQ(second.size(), 1u);
    EXPECT_NE(second, first);
    EXPECT_EQ(machine.backups().size(), 2u); // the first again, which is now the current one
    EXPECT_EQ(machine.backups()[0], first[0]);
}

TEST(Backup, comesBackWithTheFolderOfAFormerMachine) {
    const HostMachine machine;
    machine.folder().write("source/file", "file");
    machine.setUp();
    machine.backUp();
    fs::remove_all(machine.root() / "Library");
    fs::remove_all(machine.root() / "Volumes");

    machine.setUp();

    EXPECT_EQ(machine.backups().size(), 1u);
    EXPECT_EQ(machine.destination().snapshotDates.size(), 1u);
}

} // namespace tallyglass::test
