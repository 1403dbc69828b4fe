// What a copy does to the item that it replaces: nothing, until it is complete, whatever happens.

#include "TallyglassKit/Platform/Files/FileCopy.h"
#include "TallyglassKit/Platform/Files/FolderWalk.h"
#include "TallyglassKit/Platform/Files/Folders.h"
#include "Tests/Platform/Files/FaultyFiles.h"
#include "Tests/Platform/Files/FilesTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <thread>
#include <utility>

namespace fs = std::filesystem;
using testing::ElementsAre;

namespace tallyglass::test {

namespace {

/// The contents of all files in a tree, by path; those of a file are under "".
using Contents = std::map<std::string, std::string>;

Contents contentsOf(const fs::path& item) {
    const auto read = [](const fs::path& file) {
        std::ostringstream text;
        text << std::ifstream(file, std::ios::binary).rdbuf();
        return text.str();
    };
    Contents contents;
    if (!fs::is_directory(item))
        return fs::exists(item) ? Contents{{"", read(item)}} : Contents{};
    contents["/"];
    for (const auto& entry : fs::recursive_directory_iterator(item))
        contents[entry.path().lexically_relative(item)] = entry.is_regular_file() ? read(entry) : "";
    return contents;
}

class FileReplacement : public FilesTest {
protected:
    FileReplacement() {
        folder.write("new file", std::string(100000, 'n'));
        folder.write("new folder/a/file", "new a");
        folder.write("new folder/b/file", "new b");
        fs::create_symlink("nowhere", folder / "new folder/link");
        fs::permissions(folder / "new folder/b", fs::perms::owner_read | fs::perms::owner_exec);
    }
    ~FileReplacement() override {
        fs::permissions(folder / "new folder/b", fs::perms::owner_all);
        removeTarget();
    }

    /// Puts the old item of that name, or nothing if it is empty, at the destination.
    void makeOld(const std::string& name) const {
        removeTarget();
        fs::create_directory(folder / "target");
        if (name == "old file")
            folder.write("target/item", "old");
        else if (name == "old folder") {
            folder.write("target/item/a/file", "old a");
            folder.write("target/item/c", "old c");
        }
    }
    [[nodiscard]] std::string destination() const { return folder / "target/item"; }
    void replaceBy(const std::string& source, const std::stop_token& stop = {}) const {
        copyItem(folder / source, destination(), ExistingItem::replace, {}, stop);
    }

    /// Runs `work` for every combination of an old and a new item.
    template <typename Work>
    void forAll(const Work& work) {
        for (const std::string source : {"new file", "new folder", "new folder/link"})
            for (const std::string old : {"", "old file", "old folder"}) {
                SCOPED_TRACE(source + " in place of " + (old.empty() ? "nothing" : old));
                makeOld(old);
                m_old = old;
                const Contents before = contentsOf(destination());
                work(source, before);
            }
    }
    /// What remains of a copy that died must not count for the next one.
    void makeOldAgain() const { makeOld(m_old); }
    [[nodiscard]] bool isThere() const {
        return fs::symlink_status(destination()).type() != fs::file_type::not_found;
    }

private:
    /// Copies in it may hold folders that their owner can't write to.
    void removeTarget() const {
        if (fs::exists(folder / "target"))
            remove(WalkItem::at(folder / "target"), Removal::forced, {});
    }

    std::string m_old;
};

/// Runs `work` in a child process. Returns how it ended.
template <typename Work>
int inChild(const Work& work) {
    const pid_t child = fork();
    if (child == 0)
        [&]() noexcept {
            work();
            std::_Exit(0);
        }();
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

TEST_F(FileReplacement, putsAnyItemInPlaceOfAnyOther) {
    forAll([&](const std::string& source, const Contents&) {
        replaceBy(source);

        EXPECT_EQ(contentsOf(destination()), contentsOf(folder / source));
        EXPECT_TRUE(isThere());
        EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
    });
}

TEST_F(FileReplacement, worksWhereItemsCannotBeExchanged) {
    const PlainRename plain;
    forAll([&](const std::string& source, const Contents&) {
        replaceBy(source);

        EXPECT_EQ(contentsOf(destination()), contentsOf(folder / source));
        EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
    });
}

TEST_F(FileReplacement, replacesALinkAndNotWhatItLeadsTo) {
    const auto kept = folder.write("kept", "kept");
    fs::create_directory(folder / "target");
    fs::create_symlink(kept, destination());

    replaceBy("new file");

    EXPECT_FALSE(fs::is_symlink(destination()));
    EXPECT_EQ(contentsOf(kept).at(""), "kept");
}

TEST_F(FileReplacement, refusesItemsThatHoldEachOther) {
    makeOld("old folder");
    fs::create_symlink(folder / "target/item/a", folder / "link");
    const auto refuses = [&](const std::string& source, const std::string& to) {
        const auto replace = [&] { copyItem(folder / source, folder / to, ExistingItem::replace); };
        EXPECT_EQ(failure(replace), EINVAL) << source << " to " << to;
    };

    refuses("target/item", "target/item");
    refuses("target/item", "target/item/a/copy");
    refuses("target/item", "link/copy");
    refuses("target/item", "target/item/a/file");
    refuses("target/item/a", "target/item");
    refuses("link/file", "target/item");
    refuses("link/file", "target/item/a/file");
    EXPECT_EQ(failure([&] { copyItem(folder / "target/item", folder / "link/copy"); }), EINVAL);

    EXPECT_EQ(contentsOf(destination()),
              (Contents{{"/", ""}, {"a", ""}, {"a/file", "old a"}, {"c", "old c"}}));
}

TEST_F(FileReplacement, leavesEverythingAsItWasWhenACallFails) {
    const auto failAtEachCall = [&](const std::string& source, const Contents& before) {
        int callsBefore = 0;
        for (;; ++callsBefore) {
            const FaultyFiles faulty(callsBefore, ENOSPC);
            const int error = failure([&] { replaceBy(source); });
            if (error == 0)
                break; // only the removal of the old item was left, which doesn't fail
            EXPECT_EQ(error, ENOSPC);
            EXPECT_EQ(contentsOf(destination()), before) << "call " << callsBefore;
            EXPECT_EQ(folderNames(folder / "target").size(), before.empty() ? 0 : 1)
                << "call " << callsBefore;
        }
        EXPECT_GE(callsBefore, 2);
        EXPECT_EQ(contentsOf(destination()), contentsOf(folder / source));
    };
    forAll(failAtEachCall);
    const PlainRename plain;
    forAll(failAtEachCall);
}

TEST_F(FileReplacement, leavesEverythingAsItWasWhenReadingFailsHalfWay) {
    folder.write("large", std::string(std::size_t{40} << 20, 'x'));
    makeOld("old file");
    const FaultyFiles faulty(1, EIO); // the second of three chunks

    try {
        replaceBy("large");
        ADD_FAILURE();
    } catch (const FileError& error) {
        EXPECT_EQ(error.code(), EIO);
        EXPECT_EQ(error.path(), folder / "large");
    }
    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
    EXPECT_EQ(contentsOf(destination()).at(""), "old");
}

TEST_F(FileReplacement, leavesEverythingAsItWasWhenItIsStopped) {
    makeOld("old folder");
    const auto before = contentsOf(destination());
    std::stop_source source;
    const auto stop = [&](const CopyProgress&) { source.request_stop(); };

    EXPECT_THROW(
        copyItem(folder / "new folder", destination(), ExistingItem::replace, stop, source.get_token()),
        Cancelled);

    EXPECT_EQ(contentsOf(destination()), before);
    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
}

TEST_F(FileReplacement, isWholeOrNotDoneWhenTheProcessDiesAtAnyCall) {
    forAll([&](const std::string& source, const Contents& before) {
        const Contents after = contentsOf(folder / source);
        int callsBefore = 0;
        for (;; ++callsBefore) {
            const int status = inChild([&] {
                const FaultyFiles faulty(callsBefore, 0);
                replaceBy(source);
            });
            EXPECT_THAT(contentsOf(destination()), testing::AnyOf(before, after)) << "call " << callsBefore;
            if (WIFEXITED(status))
                break;
            if (contentsOf(destination()) != before)
                makeOldAgain();
        }
        EXPECT_GE(callsBefore, 2);
        copyItem(folder / "new file", folder / "target/other"); // which clears what the dead have left
        EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item", "other"));
    });
}

TEST_F(FileReplacement, isWholeOrNotDoneWhenTheProcessIsKilledAtAnyMoment) {
    for (int index = 0; index < 200; ++index)
        for (const char* const tree : {"one/", "two/"})
            folder.write(tree + std::to_string(index % 10) + "/" + std::to_string(index), tree);
    const Contents one = contentsOf(folder / "one");
    const Contents two = contentsOf(folder / "two");
    fs::create_directory(folder / "target");
    copyItem(folder / "one", destination());
    std::minstd_rand random(20);

    for (int round = 0; round < 30; ++round) {
        const pid_t child = fork();
        if (child == 0)
            while (true)
                for (const char* const tree : {"two", "one"})
                    copyItem(folder / tree, destination(), ExistingItem::replace);
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 40000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);

        ASSERT_THAT(contentsOf(destination()), testing::AnyOf(one, two)) << "round " << round;
    }
    copyItem(folder / "one", destination(), ExistingItem::replace);
    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item"));
}

TEST_F(FileReplacement, leavesTheDraftsOfOtherCopiesAlone) {
    fs::create_directory(folder / "target");
    bool hasBegun = false;
    const auto copyAnother = [&](const CopyProgress&) {
        if (!std::exchange(hasBegun, true))
            copyItem(folder / "new folder", folder / "target/other");
    };
    folder.write("target/.tallyglass-copy-of-the-user's/file", "left by a copy that was killed");

    copyItem(folder / "new folder", destination(), ExistingItem::keep, copyAnother);

    EXPECT_EQ(contentsOf(destination()), contentsOf(folder / "target/other"));
    EXPECT_THAT(folderNames(folder / "target"), ElementsAre("item", "other"));
}

TEST_F(FileReplacement, leavesEverythingAsItWasWhenTheDiskIsFull) {
    makeOld("old file");
    const int status = inChild([&] {
        const std::string target = folder / "target";
        if (unshare(CLONE_NEWNS) != 0 || mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", target.c_str(), "tmpfs", 0, "size=64k") != 0)
            std::_Exit(2);
        folder.write("target/item", "old");
        EXPECT_EQ(failure([&] { replaceBy("new file"); }), ENOSPC);
        EXPECT_THAT(folderNames(target), ElementsAre("item"));
        EXPECT_EQ(contentsOf(destination()).at(""), "old");
        std::_Exit(HasFailure() ? 1 : 0);
    });
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 2)
        GTEST_SKIP() << "only root can mount a file system";
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

} // namespace tallyglass::test
