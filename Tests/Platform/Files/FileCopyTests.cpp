#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileCopy.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/Platform/Files/FilesTest.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace tallyglass::test {

namespace {

using CopyItem = FilesTest;

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

TEST_F(CopyItem, keepsContentsAndProperties) {
    const std::string contents(3000000, 'x');
    folder.write("tree/folder/file", contents);
    folder.write("tree/empty", "");
    fs::create_symlink("nowhere", folder / "tree/link");
    mkfifo((folder / "tree/pipe").c_str(), S_IRUSR | S_IWUSR);
    fs::permissions(folder / "tree/pipe", fs::perms::all);
    setExtendedAttribute(folder / "tree/folder/file", "com.apple.marker", "file");
    setExtendedAttribute(folder / "tree/folder", "com.apple.marker", "folder");
    const std::vector<std::string> items = {"folder/file", "empty", "link", "pipe", "folder", ""};
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
    std::stop_source source;
    source.request_stop();
    EXPECT_THROW(
        copyItem(folder / "tree", folder / "target/copy", ExistingItem::keep, {}, source.get_token()),
        Cancelled);

    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("file"));
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

TEST_F(CopyItem, reportsItsProgress) {
    const auto file = folder.write("tree/a", std::string(1000, 'x'));
    folder.write("tree/b", std::string(234, 'x'));
    std::vector<CopyProgress> seen;
    const auto note = [&](const CopyProgress& progress) { seen.push_back(progress); };

    copyItem(folder / "tree", folder / "copy", ExistingItem::keep, note);
    EXPECT_EQ(seen.front(), CopyProgress{});
    EXPECT_EQ(seen.back(), (CopyProgress{.items = 3, .bytes = 1234}));

    seen.clear();
    copyItem(file, folder / "a", ExistingItem::keep, note);
    EXPECT_EQ(seen.front(), (CopyProgress{.totalBytes = 1000}));
    EXPECT_EQ(seen.back(), (CopyProgress{.items = 1, .bytes = 1000, .totalBytes = 1000}));
}

TEST_F(CopyItem, copiesNoDevices) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can make a device";
    fs::create_directory(folder / "tree");
    if (mknod((folder / "tree/device").c_str(), S_IFCHR | S_IRUSR, makedev(1, 3)) != 0)
        GTEST_SKIP() << "no devices can be made here";

    EXPECT_EQ(failure([&] { copyItem(folder / "tree", folder / "copy"); }), ENOTSUP);
    EXPECT_THAT(folderNames(folder.path()), ElementsAre("tree"));
}

} // namespace tallyglass::test
