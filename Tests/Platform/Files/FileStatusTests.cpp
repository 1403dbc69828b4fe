#include "TallyglassKit/Platform/ContinuousClock.h"
#include "TallyglassKit/Platform/Files/ExtendedAttributes.h"
#include "TallyglassKit/Platform/Files/FileError.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "TallyglassKit/Platform/Files/FileStatus.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>

namespace fs = std::filesystem;

namespace tallyglass::test {

namespace {

constexpr const char* marker = "com.apple.metadata:com_apple_backup_excludeItem";

/// The error number with which `work` fails, 0 if it doesn't.
template <typename Work>
int failure(const Work& work) {
    try {
        work();
        return 0;
    } catch (const FileError& error) {
        return error.code();
    }
}

} // namespace

TEST(FileStatus, tellsWhatAnItemIsWithoutFollowingLinks) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", "12345");
    fs::create_symlink("file", folder / "link");
    mkfifo((folder / "pipe").c_str(), S_IRUSR);

    EXPECT_EQ(FileStatus::of(file)->kind, FileStatus::Kind::file);
    EXPECT_EQ(FileStatus::of(file)->size, 5);
    EXPECT_EQ(FileStatus::of(folder / "link")->kind, FileStatus::Kind::symbolicLink);
    EXPECT_EQ(FileStatus::of(folder / "link")->size, 4);
    EXPECT_NE(FileStatus::of(folder / "link")->inode, FileStatus::of(file)->inode);
    EXPECT_EQ(FileStatus::of(folder / "pipe")->kind, FileStatus::Kind::other);
    EXPECT_TRUE(FileStatus::of(folder.path())->isFolder());
    EXPECT_EQ(FileStatus::of(folder / "missing"), std::nullopt);
    EXPECT_EQ(FileStatus::of(file / "below"), std::nullopt);
}

TEST(FileStatus, keepsTheFractionOfTheModificationTimeApart) {
    const TemporaryFolder folder;
    const auto file = folder.write("file", "");
    const std::array<timespec, 2> times = {{{0, 0}, {-2, 250000000}}};
    utimensat(AT_FDCWD, file.c_str(), times.data(), 0);

    const auto status = FileStatus::of(file);

    EXPECT_EQ(status->modifiedSeconds, -2);
    EXPECT_EQ(status->modifiedNanoseconds, 250000000);
    EXPECT_EQ(status->modified(), dateSince1970(-1.75));
}

TEST(FileExists, followsALink) {
    const TemporaryFolder folder;
    fs::create_symlink("nowhere", folder / "link");

    EXPECT_TRUE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(folder / "link"));
}

TEST(OpenStatus, isTheErrorNumberAndKeepsNothingOpen) {
    const ResourceGuard guard;
    const TemporaryFolder folder;
    mkfifo((folder / "pipe").c_str(), S_IRUSR);

    EXPECT_EQ(openStatus(folder.write("file", "")), 0);
    EXPECT_EQ(openStatus(folder / "pipe"), 0);
    EXPECT_EQ(openStatus(folder / "missing"), ENOENT);
}

TEST(ReadFile, returnsAllBytes) {
    const ResourceGuard guard;
    const TemporaryFolder folder;
    const std::string contents = std::string("a\0b", 3) + std::string(100000, 'x');

    EXPECT_EQ(readFile(folder.write("file", contents)).view(), contents);
    EXPECT_EQ(readFile(folder.write("empty", "")).view(), "");
    EXPECT_TRUE(readFile("/proc/self/status").view().starts_with("Name:")); // which reports no size
}

TEST(ReadFile, refusesMoreThanTheMostOfAFileOfAnySize) {
    const ResourceGuard guard;
    const TemporaryFolder folder;
    const auto file = folder.write("file", "1234");

    EXPECT_EQ(readFile(file, {}, 4).view(), "1234");
    EXPECT_EQ(failure([&] { static_cast<void>(readFile(file, {}, 3)); }), EFBIG);
    EXPECT_EQ(failure([&] { static_cast<void>(readFile("/proc/self/status", {}, 3)); }), EFBIG);
}

TEST(ReadFile, failsWithThePlatformsText) {
    const ResourceGuard guard;
    const TemporaryFolder folder;
    mkfifo((folder / "pipe").c_str(), S_IRUSR | S_IWUSR);
    std::stop_source source;
    source.request_stop();

    EXPECT_EQ(failure([&] { static_cast<void>(readFile(folder.path())); }), EISDIR);
    EXPECT_EQ(failure([&] { static_cast<void>(readFile(folder / "pipe")); }), EINVAL);
    EXPECT_THROW(static_cast<void>(readFile(folder.write("file", "x"), source.get_token())), Cancelled);
    try {
        static_cast<void>(readFile(folder / "missing"));
        ADD_FAILURE();
    } catch (const FileError& error) {
        EXPECT_EQ(error.path(), folder / "missing");
        EXPECT_EQ(error.errorDescription(), (folder / "missing").string() + ": No such file or directory");
    }
}

TEST(ExtendedAttribute, comesAndGoes) {
    const TemporaryFolder folder;
    const std::string file = folder.write("file", "");

    setExtendedAttribute(file, marker, "old");
    setExtendedAttribute(file, marker, std::string("com.apple\0backupd", 17));
    EXPECT_TRUE(hasExtendedAttribute(file, marker));
    EXPECT_EQ(extendedAttribute(file, marker), std::string("com.apple\0backupd", 17));
    setExtendedAttribute(file, "empty", "");
    EXPECT_EQ(extendedAttribute(file, "empty"), "");

    removeExtendedAttribute(file, marker);
    removeExtendedAttribute(file, marker);
    EXPECT_FALSE(hasExtendedAttribute(file, marker));
    EXPECT_EQ(extendedAttribute(file, marker), std::nullopt);
}

TEST(ExtendedAttribute, ofALinkIsNotThatOfItsTarget) {
    const TemporaryFolder folder;
    setExtendedAttribute(folder.write("file", ""), marker, "x");
    fs::create_symlink("file", folder / "link");

    EXPECT_FALSE(hasExtendedAttribute(folder / "link", marker));
    EXPECT_EQ(extendedAttribute(folder / "missing", marker), std::nullopt);
    EXPECT_EQ(failure([&] { removeExtendedAttribute(folder / "missing", marker); }), ENOENT);
}

TEST(ContinuousClock, neverGoesBack) {
    const auto before = ContinuousClock::now();
    const auto after = ContinuousClock::now();

    EXPECT_GT(before.time_since_epoch().count(), 0);
    EXPECT_GE(after, before);
}

} // namespace tallyglass::test
