#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace tallyglass::test {

namespace {

class FoldersTest : public testing::Test {
protected:
    /// The error number with which `work` fails, 0 if it doesn't.
    template <typename Work>
    static int failure(const Work& work) {
        try {
            work();
            return 0;
        } catch (const FileError& error) {
            return error.code();
        }
    }

    /// Drops root's rights for the test.
    template <typename Work>
    void asOrdinaryUser(const Work& work) {
        fs::permissions(folder.path(), fs::perms::all);
        const auto child = [&] {
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
                std::_Exit(2);
            work();
            std::_Exit(HasFailure() ? 1 : 0);
        };
        EXPECT_EXIT(child(), testing::ExitedWithCode(0), "");
    }

    ResourceGuard m_guard;
    TemporaryFolder folder;
};

using FolderNames = FoldersTest;
using RemoveItem = FoldersTest;
using CopyItem = FoldersTest;

std::string modeAndTime(const fs::path& path) {
    struct stat status {};
    lstat(path.c_str(), &status);
    return std::to_string(status.st_mode) + " " + std::to_string(status.st_mtim.tv_sec) + "." +
           std::to_string(status.st_mtim.tv_nsec);
}

void setTime(const fs::path& path, time_t seconds) {
    const std::array<timespec, 2> times = {{{seconds, 1}, {seconds, 123456789}}};
    utimensat(AT_FDCWD, path.c_str(), times.data(), AT_SYMLINK_NOFOLLOW);
}

} // namespace

TEST_F(FolderNames, areAscendingWithHiddenOnes) {
    for (const char* name : {"b", ".hidden", "a", "B"})
        folder.write(name, "");

    EXPECT_THAT(folderNames(folder.path()), ElementsAre(".hidden", "B", "a", "b"));
    EXPECT_EQ(failure([&] { static_cast<void>(folderNames(folder / "missing")); }), ENOENT);
    EXPECT_EQ(failure([&] { static_cast<void>(folderNames(folder / "a")); }), ENOTDIR);
}

TEST_F(RemoveItem, takesAWholeTreeButNotWhatLinksLeadTo) {
    folder.write("kept/file", "x");
    folder.write("tree/a/b/file", "x");
    fs::create_directory_symlink(folder / "kept", folder / "tree/a/link");
    fs::create_directory_symlink(folder / "kept", folder / "link");

    removeItem(folder / "tree/");
    removeItem(folder / "link/");

    EXPECT_THAT(folderNames(folder.path()), ElementsAre("kept"));
    EXPECT_TRUE(fileExists(folder / "kept/file"));
}

TEST_F(RemoveItem, failsWithThePathThatCouldNotBeRemoved) {
    EXPECT_EQ(failure([&] { removeItem(folder / "missing"); }), ENOENT);
    EXPECT_EQ(failure([&] { removeItem(folder / "."); }), EINVAL);
    folder.write("tree/closed/file", "x");
    fs::permissions(folder / "tree", fs::perms::all);
    fs::permissions(folder / "tree/closed", fs::perms::owner_read | fs::perms::others_read |
                                                fs::perms::owner_exec | fs::perms::others_exec);
    asOrdinaryUser([&] {
        try {
            removeItem(folder / "tree");
            ADD_FAILURE();
        } catch (const FileError& error) {
            EXPECT_EQ(error.errorDescription(),
                      (folder / "tree/closed/file").string() + ": Permission denied");
        }
    });
    fs::permissions(folder / "tree/closed", fs::perms::owner_all);
}

TEST_F(RemoveItem, canBeStopped) {
    folder.write("tree/file", "x");
    std::stop_source source;
    source.request_stop();

    EXPECT_THROW(removeItem(folder / "tree", source.get_token()), Cancelled);
    EXPECT_TRUE(fileExists(folder / "tree/file"));
}

TEST_F(CopyItem, keepsContentsAndProperties) {
    const std::string contents(3000000, 'x');
    folder.write("tree/folder/file", contents);
    folder.write("tree/empty", "");
    fs::create_symlink("nowhere", folder / "tree/link");
    mkfifo((folder / "tree/pipe").c_str(), S_IRUSR | S_IWUSR);
    setExtendedAttribute(folder / "tree/folder/file", "com.apple.marker", "file");
    setExtendedAttribute(folder / "tree/folder", "com.apple.marker", "folder");
    const std::vector<std::string> items = {"folder/file", "empty", "link", "folder", ""};
    fs::permissions(folder / "tree/folder/file", fs::perms::owner_read);
    fs::permissions(folder / "tree/folder", fs::perms::owner_read | fs::perms::owner_exec);
    for (std::size_t index = 0; index < items.size(); ++index)
        setTime(folder / ("tree/" + items[index]), static_cast<time_t>(1000000000 + index));

    copyItem(folder / "tree", folder / "copy");

    for (const auto& item : items)
        EXPECT_EQ(modeAndTime(folder / ("tree/" + item)), modeAndTime(folder / ("copy/" + item))) << item;
    EXPECT_EQ(readFile(folder / "copy/folder/file").view(), contents);
    EXPECT_EQ(fs::read_symlink(folder / "copy/link"), "nowhere");
    EXPECT_EQ(extendedAttribute(folder / "copy/folder/file", "com.apple.marker"), "file");
    EXPECT_EQ(extendedAttribute(folder / "copy/folder", "com.apple.marker"), "folder");
    EXPECT_EQ(FileStatus::of(folder / "copy/pipe")->kind, FileStatus::Kind::other);
    EXPECT_THAT(folderNames(folder.path()), ElementsAre("copy", "tree"));
}

TEST_F(CopyItem, keepsHoles) {
    const auto sparse = folder.write("sparse", "start");
    fs::resize_file(sparse, 1 << 30);
    std::fstream(sparse, std::ios::in | std::ios::out | std::ios::binary).seekp(1 << 29) << "middle";

    copyItem(sparse, folder / "copy");

    struct stat status {};
    stat((folder / "copy").c_str(), &status);
    EXPECT_EQ(status.st_size, 1 << 30);
    EXPECT_LT(status.st_blocks * 512, 1 << 20);
    std::ifstream copied(folder / "copy", std::ios::binary);
    std::string word(6, ' ');
    copied.seekg(1 << 29).read(word.data(), 6);
    EXPECT_EQ(word, "middle");
}

TEST_F(CopyItem, copiesBetweenFileSystems) {
    if (!fs::exists("/dev/shm"))
        GTEST_SKIP() << "no other file system at hand";
    const std::string elsewhere = "/dev/shm/" + folder.path().filename().string();
    const std::string contents(3000000, 'x');

    copyItem(folder.write("file", contents), elsewhere);

    EXPECT_EQ(readFile(elsewhere).view(), contents);
    removeItem(elsewhere);
}

TEST_F(CopyItem, leavesWhatIsAtTheDestination) {
    const std::string file = folder.write("file", "new");
    const std::string other = folder.write("other", "old");
    fs::create_symlink("nowhere", folder / "link");

    EXPECT_EQ(failure([&] { copyItem(file, other); }), EEXIST);
    EXPECT_EQ(failure([&] { copyItem(file, folder / "link"); }), EEXIST);
    EXPECT_EQ(readFile(other).view(), "old");
}

TEST_F(CopyItem, failsWithoutLeavingAnything) {
    folder.write("tree/folder/file", "x");
    folder.write("target/file", "x");

    EXPECT_EQ(failure([&] { copyItem(folder / "missing", folder / "target/copy"); }), ENOENT);
    EXPECT_EQ(failure([&] { copyItem(folder / "tree", folder / "nowhere/copy"); }), ENOENT);
    EXPECT_EQ(failure([&] { copyItem(folder / "tree", folder / "target/file/copy"); }), ENOTDIR);
    EXPECT_EQ(failure([&] { copyItem(folder / "tree", folder / "tree/folder/copy"); }), EINVAL);
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(copyItem(folder / "tree", folder / "target/copy", source.get_token()), Cancelled);

    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("file"));
    EXPECT_THAT(folderNames(folder / "tree/folder"), ElementsAre("file"));
}

TEST_F(CopyItem, removesTheBeginningOfACopyThatCannotGoOn) {
    folder.write("tree/a/file", "x");
    const auto secret = folder.write("tree/b/secret", "x");
    fs::permissions(folder / "tree/a", fs::perms::owner_read | fs::perms::owner_exec |
                                           fs::perms::others_read | fs::perms::others_exec);
    fs::permissions(secret, fs::perms::none);
    for (const char* open : {"tree", "tree/b", "tree/a/file"})
        fs::permissions(folder / open, fs::perms::others_read | fs::perms::others_exec,
                        fs::perm_options::add);

    asOrdinaryUser([&] {
        EXPECT_EQ(failure([&] { copyItem(folder / "tree", folder / "copy"); }), EACCES);
        EXPECT_THAT(folderNames(folder.path()), ElementsAre("tree"));
    });
    fs::permissions(folder / "tree/a", fs::perms::owner_all);
}

} // namespace tallyglass::test
