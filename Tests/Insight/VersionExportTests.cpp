#include "TallyglassKit/Insight/FileHistoryScanner.h"
#include "TallyglassKit/Insight/VersionExport.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace tallyglass::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;

class VersionExport : public testing::Test {
protected:
    VersionExport() {
        folder.write("disk/2026-07-20-122943.backup/2026-07-20-122943.backup/Data/folder/file", "new");
        folder.write("disk/2026-07-20-122943.backup/2026-07-20-122943.backup/Data/folder/other", "other");
        folder.write("target/item", "old");
    }

    [[nodiscard]] FileVersion version(const std::string& logicalPath) const {
        return FileHistoryScanner::probe(root + "/Data" + logicalPath, root);
    }

    /// The failure to export the folder to `destination`.
    [[nodiscard]] std::pair<int, std::string> failure(const std::string& destination) const {
        try {
            exportVersion(version("/folder"), destination);
        } catch (const FileError& error) {
            return {error.code(), error.errorDescription()};
        }
        return {0, ""};
    }

    TemporaryFolder folder;
    const std::string root = folder / "disk/2026-07-20-122943.backup/2026-07-20-122943.backup";
};

TEST_F(VersionExport, replacesWhatIsAtTheDestination) {
    exportVersion(version("/folder/file"), folder / "target/item");
    EXPECT_EQ(readFile(folder / "target/item").view(), "new");

    exportVersion(version("/folder"), folder / "target/item/");
    EXPECT_THAT(folderNames(folder / "target/item"), ElementsAre("file", "other"));
    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
}

TEST_F(VersionExport, failsBeforeTheDestinationIsTouchedWithoutAVersion) {
    try {
        exportVersion(version("/missing"), folder / "target/item");
        ADD_FAILURE();
    } catch (const FileError& error) {
        EXPECT_EQ(error.errorDescription(), root + "/Data/missing: No such file or directory");
    }
    EXPECT_EQ(readFile(folder / "target/item").view(), "old");
    EXPECT_EQ(failure(folder / "nowhere/item").second,
              (folder / "nowhere").string() + ": No such file or directory");
}

TEST_F(VersionExport, neverWritesIntoABackup) {
    fs::create_directory_symlink(folder / "disk", folder / "link");
    fs::create_directories(folder / "disk/2026-07-21-122943.backup/2026-07-21-122943.backup/Data");
    const auto before = folderNames(root + "/Data");

    for (const std::string& path : std::vector<std::string>{
             root + "/Data/copy", root + "/Data/folder/copy", root + "/Data/folder",
             root + "/Data/folder/file", root,
             root + "/../../../target/../disk/2026-07-20-122943.backup/copy",
             (folder / "link/2026-07-20-122943.backup/2026-07-20-122943.backup/Data/copy").string(),
             (folder / "disk/2026-07-21-122943.backup/2026-07-21-122943.backup/Data/copy").string(),
             (folder / "disk/2026-07-21-122943.backup").string()}) {
        EXPECT_EQ(failure(path).first, EROFS) << path;
        EXPECT_THAT(failure(path).second, EndsWith("This is in a backup, and backups are never changed"));
    }
    EXPECT_THAT(failure(folder / "disk/").second,
                EndsWith("This folder holds backups, and backups are never changed"));
    EXPECT_THAT(failure(folder.path()).second, EndsWith("This folder holds the item that is to be copied"));

    EXPECT_EQ(folderNames(root + "/Data"), before);
    EXPECT_THAT(folderNames(folder / "disk"),
                ElementsAre("2026-07-20-122943.backup", "2026-07-21-122943.backup"));
}

TEST_F(VersionExport, knowsABackupWhoseNameIsNoStamp) {
    const std::string plain = folder / "plain";
    folder.write("plain/Data/file", "x");
    fs::create_directory_symlink(plain, folder / "link");
    const auto found = FileHistoryScanner::probe(plain + "/Data/file", plain);

    EXPECT_THROW(exportVersion(found, folder / "link/Data/copy"), FileError);
    EXPECT_THAT(folderNames(plain + "/Data"), ElementsAre("file"));
    exportVersion(found, folder / "plainer"); // merely begins with the same letters
    EXPECT_EQ(readFile(folder / "plainer").view(), "x");
}

TEST_F(VersionExport, canBeStopped) {
    std::stop_source source;
    source.request_stop();

    EXPECT_THROW(exportVersion(version("/folder"), folder / "target/item", {}, source.get_token()),
                 Cancelled);
    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
    EXPECT_EQ(readFile(folder / "target/item").view(), "old");
}

} // namespace
} // namespace tallyglass::test
