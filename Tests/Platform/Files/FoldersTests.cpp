#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/Platform/Files/FilesTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace tallyglass::test {

namespace {

using FolderNames = FilesTest;
using RemoveItem = FilesTest;

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

} // namespace tallyglass::test
