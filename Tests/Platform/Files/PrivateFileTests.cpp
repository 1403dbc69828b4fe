#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "TallyglassKit/Platform/Files/PrivateFile.h"
#include "Tests/Platform/Files/FaultyFiles.h"
#include "Tests/Platform/Files/FilesTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace tallyglass::test {

namespace {

using PrivateFile = FilesTest;

TEST_F(PrivateFile, isWrittenForItsUserAlone) {
    const auto before = umask(0777);
    writePrivateFile(folder / "file", "first");
    umask(before);

    EXPECT_EQ(fs::status(folder / "file").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(readFile(folder / "file").view(), "first");
    writePrivateFile(folder / "file", "");
    EXPECT_EQ(readFile(folder / "file").view(), "");
    EXPECT_THAT(folderNames(folder.path()), ElementsAre("file"));
}

TEST_F(PrivateFile, replacesALinkInsteadOfItsTarget) {
    const auto target = folder.write("target", "mine");
    fs::create_symlink(target, folder / "file");

    writePrivateFile(folder / "file", "new");

    EXPECT_EQ(readFile(target).view(), "mine");
    EXPECT_FALSE(fs::is_symlink(folder / "file"));
    EXPECT_EQ(readFile(folder / "file").view(), "new");
}

TEST_F(PrivateFile, isNotWrittenInPlaceOfAFolderOrWithoutOne) {
    folder.write("folder/file", "kept");
    EXPECT_EQ(failure([&] { writePrivateFile(folder / "folder", "new"); }), EISDIR);
    EXPECT_EQ(failure([&] { writePrivateFile(folder / "missing/file", "new"); }), ENOENT);
    EXPECT_EQ(failure([&] { writePrivateFile("/dev/null", "new"); }), EINVAL);
    EXPECT_EQ(failure([&] { writePrivateFile(folder / "folder/file/below", "new"); }), ENOTDIR);
    EXPECT_EQ(readFile(folder / "folder/file").view(), "kept");
}

TEST_F(PrivateFile, staysAsItWasWhenAWriteFails) {
    folder.write("file", "old");
    int calls = 0;
    for (bool fails = true; fails; ++calls) {
        const FaultyFiles fault(calls, ENOSPC);
        fails = failure([&] { writePrivateFile(folder / "file", "new"); }) == ENOSPC;
        EXPECT_EQ(readFile(folder / "file").view(), fails ? "old" : "new") << calls;
        EXPECT_THAT(folderNames(folder.path()), ElementsAre("file")) << calls;
    }
    EXPECT_GT(calls, 3); // the rights, the disk, the name, and then none failed
}

} // namespace
} // namespace tallyglass::test
