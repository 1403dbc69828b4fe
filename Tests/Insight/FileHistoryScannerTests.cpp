#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Insight/FileHistoryScanner.h"
#include "Tests/Support/SampleMachine.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace tallyglass::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const FileHistoryScanner scanner{TMUtilRunner("/nowhere")};

/// A version as a scan would find it in the backup `root`.
FileVersion version(const std::string& root, std::optional<std::uint64_t> inode, std::int64_t size = 1,
                    double modified = 1000) {
    FileVersion result;
    result.backupRoot = root;
    result.exists = inode.has_value();
    result.inode = inode;
    if (inode) {
        result.size = size;
        result.modified = dateSince1970(modified);
    }
    return result;
}

std::vector<std::string> rootsOf(const FileVersionSpan& span) {
    std::vector<std::string> roots;
    for (const auto& member : span.backups)
        roots.push_back(member.backupRoot);
    return roots;
}

TEST(FileHistoryScanner, normalizesWhatAUserTypes) {
    EXPECT_EQ(FileHistoryScanner::normalize(" \tUsers/me/my notes.txt \n"), "/Users/me/my notes.txt");
    EXPECT_EQ(FileHistoryScanner::normalize("/Users/"), "/Users/");
    EXPECT_EQ(FileHistoryScanner::normalize(" \n\u00A0"), "");
    EXPECT_EQ(FileHistoryScanner::normalize(""), "");
}

TEST(FileHistoryScanner, takesEveryVisibleNameInABackupForAVolume) {
    const TemporaryFolder folder;
    folder.write("System", "not even a folder");
    folder.write("Macintosh HD - Data/file", "");
    folder.write(".hidden/file", "");

    EXPECT_THAT(FileHistoryScanner::volumes(folder.path()), ElementsAre("Macintosh HD - Data", "System"));
    EXPECT_THAT(FileHistoryScanner::volumes(folder / "missing"), IsEmpty());
    EXPECT_THAT(FileHistoryScanner::volumes(folder / "System"), IsEmpty());
}

TEST(FileHistoryScanner, looksThePathUpInEachBackupInTheirOrder) {
    const TemporaryFolder folder;
    const std::string first = folder / "2026-01-02-030405.backup";
    const std::string second = folder / "second";
    folder.write("2026-01-02-030405.backup/Data/Users/me/file", "12345");
    folder.write("second/Other/other", "");
    fs::create_directory(folder / "empty");
    const std::vector<std::string> backups = {second, folder / "empty", folder / "missing", first};
    std::vector<std::pair<std::size_t, std::size_t>> progress;

    const auto versions =
        scanner.versions("/Users/me/file", std::nullopt, backups,
                         [&](std::size_t index, std::size_t count) { progress.emplace_back(index, count); });

    ASSERT_EQ(versions.size(), 2U); // what has no volume doesn't count
    EXPECT_EQ(versions[0].backupRoot, second);
    EXPECT_EQ(versions[0].path, second + "/Other/Users/me/file");
    EXPECT_FALSE(versions[0].exists);
    EXPECT_EQ(versions[0].fingerprint(), "-|-|-1.0");
    EXPECT_EQ(versions[1].path, first + "/Data/Users/me/file");
    EXPECT_TRUE(versions[1].exists);
    EXPECT_EQ(versions[1].size, 5);
    EXPECT_EQ(versions[1].backupDate, BackupPath::dateOfStamp("2026-01-02-030405"));
    EXPECT_THAT(progress, ElementsAre(std::pair(1, 4), std::pair(2, 4), std::pair(3, 4), std::pair(4, 4)));

    const auto given = scanner.versions("/other", "Other", backups);
    ASSERT_EQ(given.size(), 4U);
    EXPECT_TRUE(given[0].exists);
    EXPECT_FALSE(given[1].exists);
}

TEST(FileHistoryScanner, returnsTheVersionsSoFarWhenItIsStopped) {
    const std::vector<std::string> backups(5, "/nowhere");
    std::stop_source source;
    const auto stopInSecond = [&](std::size_t index, std::size_t) {
        if (index == 2)
            source.request_stop();
    };

    EXPECT_EQ(scanner.versions("/file", "Data", backups, stopInSecond, source.get_token()).size(), 2U);
    EXPECT_THAT(scanner.versions("/file", "Data", {}, [](auto, auto) { ADD_FAILURE(); }), IsEmpty());
}

TEST(FileHistoryScanner, probesLinksThemselvesAndFoldersWithoutSize) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", "12345");
    fs::last_write_time(file,
                        fs::file_time_type::clock::from_sys(std::chrono::sys_time<std::chrono::nanoseconds>{
                            std::chrono::nanoseconds{1700000000'999999999}}));
    fs::create_symlink("file", folder / "link");
    fs::create_directory(folder / "folder");
    const auto probe = [&](const char* name) {
        return FileHistoryScanner::probe(folder / name, folder.path());
    };

    EXPECT_EQ(probe("file").modified, dateSince1970(1700000000));
    EXPECT_THAT(probe("file").fingerprint(), testing::EndsWith("|5|1700000000.0"));
    EXPECT_EQ(probe("link").size, 4);
    EXPECT_NE(probe("link").inode, probe("file").inode);
    EXPECT_TRUE(probe("folder").isDirectory);
    EXPECT_EQ(probe("folder").size, std::nullopt);
    EXPECT_THAT(probe("folder").fingerprint(), testing::HasSubstr("|-|"));
    EXPECT_FALSE(probe("file/below").exists);
}

TEST(FileHistoryScanner, passesNamesOnAsBytesInEitherUnicodeForm) {
    const TemporaryFolder folder;
    folder.write("Data/caf\u00E9", "composed");
    folder.write("Data/cafe\u0301", "decomposed one");
    const std::vector<std::string> backups = {folder.path()};

    EXPECT_EQ(scanner.versions(FileHistoryScanner::normalize("caf\u00E9"), {}, backups)[0].size, 8);
    EXPECT_EQ(scanner.versions(FileHistoryScanner::normalize("cafe\u0301"), {}, backups)[0].size, 14);
}

TEST(FileVersion, hasAFingerprintOfInodeSizeAndSecond) {
    EXPECT_EQ(version("a", 18446744073709551615U, -1, 0).fingerprint(), "18446744073709551615|-1|0.0");
    EXPECT_EQ(version("a", 1, 2, -1e18).fingerprint(), "1|2|-1000000000000000000.0");
    EXPECT_EQ(version("a", 1, 2, 0.1).fingerprint(), "1|2|0.1");
    const auto base = version("a", 1, 2, 3);
    for (const auto& other : {version("b", 1, 2, 3), version("a", 2, 2, 3), version("a", 1, 3, 3),
                              version("a", 1, 2, 4), version("a", std::nullopt)})
        EXPECT_EQ(base.isSameVersion(other), base.fingerprint() == other.fingerprint());
}

TEST(FileVersionSpans, groupNeighboursOfOneVersion) {
    const auto spans =
        FileHistoryScanner::spans({version("a", 1), version("b", 1), version("c", std::nullopt),
                                   version("d", 1), version("e", 2), version("f", 1)});

    ASSERT_EQ(spans.size(), 3U);
    EXPECT_THAT(rootsOf(spans[0]), ElementsAre("a", "b", "d"));
    EXPECT_EQ(spans[0].version.backupRoot, "d");
    EXPECT_EQ(spans[0].backupCount(), 3);
    EXPECT_THAT(rootsOf(spans[1]), ElementsAre("e"));
    EXPECT_THAT(rootsOf(spans[2]), ElementsAre("f"));
    EXPECT_THAT(FileHistoryScanner::spans({version("a", std::nullopt)}), IsEmpty());
    EXPECT_EQ(FileVersionSpan().firstSeen(), std::nullopt);
}

TEST(FileHistoryScanner, findsTheVersionsOfAFileThatChangesInSomeBackups) {
    const SampleMachine machine({"--backups", "4", "--files", "20"});
    const auto& backups = machine.backups();
    const std::string data = std::string("/") + SampleMachine::volumeName;

    // Every item of the user in the oldest backup is traced; at least one must have changed since.
    std::size_t changed = 0;
    for (const auto& entry : fs::recursive_directory_iterator(backups[0] + data + "/Users/alex")) {
        const std::string logical = entry.path().string().substr(backups[0].size() + data.size());
        const auto versions = scanner.versions(logical, std::nullopt, backups);
        ASSERT_EQ(versions.size(), backups.size());
        const auto spans = FileHistoryScanner::spans(versions);
        ASSERT_FALSE(spans.empty()) << logical;
        EXPECT_EQ(spans.front().firstSeen(), BackupPath::timestampOfRoot(backups[0]));
        changed += spans.size() > 1;
    }
    EXPECT_GT(changed, 0U);
}

} // namespace
} // namespace tallyglass::test
