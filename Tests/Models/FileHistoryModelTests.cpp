#include "Tallyglass/Desktop/FilePanels.h"
#include "Tallyglass/Models/FileHistoryModel.h"
#include "TallyglassKit/Access/BackupListing.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QUrl>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace fs = std::filesystem;

constexpr const char* path = "/Users/me/notes.txt";

std::string contents(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class FileHistory : public testing::Test {
protected:
    /// Backups of which each holds what stands here for it: a new version with this text, the version before
    /// it for "=", or nothing for "".
    void setVersions(const std::vector<std::string>& texts) {
        roots = machine.setBackups(static_cast<int>(texts.size()));
        fs::path before;
        for (std::size_t index = 0; index < texts.size(); ++index) {
            const fs::path file = roots[index] + "/Data" + path;
            fs::create_directories(file.parent_path());
            if (texts[index] == "=")
                fs::create_hard_link(before, file);
            else if (!texts[index].empty())
                std::ofstream(file) << texts[index];
            if (!texts[index].empty())
                before = file;
        }
    }
    void scan(const std::string& logicalPath = path) {
        model.setLogicalPath(logicalPath);
        model.scan();
        waitUntil([this] { return !model.progress(); });
    }
    /// Answers the save panel that the export of a version asks with.
    void exportTo(const fs::path& destination, std::size_t span = 0) {
        model.exportVersion(model.spans()[span].version);
        panels.answer({QUrl::fromLocalFile(QString::fromStdString(destination.string()))});
        waitUntil([this] { return !model.currentExport(); });
    }
    [[nodiscard]] AppEnvironment environment() {
        AppEnvironment result = machine.environment();
        result.workspace = &workspace;
        return result;
    }

    const test::ScriptedMachine machine;
    const test::TemporaryFolder home;
    std::vector<std::string> roots;
    test::FakeWorkspace workspace;
    Alerts alerts;
    FilePanels panels{alerts};
    FileHistoryModel model{environment(), panels};
};

TEST_F(FileHistory, findsTheVersionsTheNewestFirst) {
    setVersions({"", "first", "=", "", "second", "="});
    scan("  Users/me/notes.txt\n");

    EXPECT_TRUE(model.hasSearched());
    EXPECT_EQ(model.error(), std::nullopt);
    EXPECT_EQ(model.probedCount(), 6);
    EXPECT_EQ(model.missingCount(), 2);
    ASSERT_THAT(model.spans(), SizeIs(2));
    EXPECT_EQ(model.spans()[0].version.backupRoot, roots[5]);
    EXPECT_EQ(model.spans()[0].backupCount(), 2);
    EXPECT_EQ(model.spans()[1].version.backupRoot, roots[2]);
    EXPECT_EQ(model.spans()[1].version.size, 5);
}

TEST_F(FileHistory, tellsEachStepWhileItScans) {
    setVersions({"a", "=", "="});
    std::vector<std::string> steps;
    QObject::connect(&model, &FileHistoryModel::progressChanged, &model,
                     [&] { steps.push_back(model.progress().value_or("")); });
    scan();
    EXPECT_THAT(steps, ElementsAre("Listing backups…", "Checking backup 1 of 3…", "Checking backup 2 of 3…",
                                   "Checking backup 3 of 3…", ""));
}

TEST_F(FileHistory, startsNothingForAPathOfBlanks) {
    machine.fail("listbackups", "no disk");
    scan();
    const auto error = model.error();
    ASSERT_TRUE(error);

    scan(" \n ");
    EXPECT_EQ(model.error(), error);
    EXPECT_THAT(machine.calls(), ElementsAre("listbackups"));
}

TEST_F(FileHistory, saysWhyThereAreNoBackupsAndKeepsTheResultFromBefore) {
    setVersions({"a", "b"});
    scan();
    machine.fail("listbackups", "the disk is asleep");
    scan();
    EXPECT_THAT(model.error().value_or(""), StartsWith("Backups couldn't be listed: "));
    EXPECT_THAT(model.spans(), SizeIs(2));

    machine.answer("listbackups", "");
    scan();
    EXPECT_EQ(model.error(), BackupListing::message());
    EXPECT_TRUE(model.hasSearched());
}

TEST_F(FileHistory, tellsAPathThatIsInNoBackup) {
    setVersions({"a", "="});
    scan("/nowhere");
    EXPECT_TRUE(model.hasSearched());
    EXPECT_EQ(model.probedCount(), 2);
    EXPECT_EQ(model.missingCount(), 2);
    EXPECT_THAT(model.spans(), IsEmpty());
}

TEST_F(FileHistory, keepsTheResultFromBeforeWhenItIsCancelledOrBeginsAgain) {
    setVersions({"a", "b"});
    scan();
    machine.hold("listbackups");
    model.setLogicalPath("/other");
    model.scan();
    waitUntil([this] { return machine.calls().size() == 2; });
    model.cancelScan();
    EXPECT_EQ(model.progress(), std::nullopt);
    EXPECT_EQ(model.error(), std::nullopt);
    EXPECT_THAT(model.spans(), SizeIs(2));

    model.scan();
    waitUntil([this] { return machine.calls().size() == 3; });
    setVersions({"a"}); // the next listing answers
    scan();
    EXPECT_THAT(model.spans(), SizeIs(1));
}

TEST_F(FileHistory, remembersTheTenPathsThatWereTracedLast) {
    setVersions({"a"});
    for (int number = 1; number <= 11; ++number)
        scan("/file" + std::to_string(number));
    scan("/file5");
    ASSERT_THAT(model.recentPaths(), SizeIs(10));
    EXPECT_THAT(model.recentPaths()[0], "/file5");
    EXPECT_THAT(model.recentPaths()[1], "/file11");
    EXPECT_THAT(model.recentPaths()[9], "/file2");

    FileHistoryModel next(environment(), panels);
    next.prepare();
    waitUntil([&] { return !next.recentPaths().empty(); });
    EXPECT_EQ(next.recentPaths(), model.recentPaths());
}

TEST_F(FileHistory, tracesTheItemOnTheMacOfAnItemElsewhere) {
    setVersions({"a", "b"});
    model.trace(roots[0] + "/Data" + path);
    EXPECT_EQ(model.logicalPath(), path);
    waitUntil([this] { return !model.progress(); });
    EXPECT_THAT(model.spans(), SizeIs(2));

    model.trace(machine.folder() / "Users/me/item"); // the machine's root is this folder
    EXPECT_EQ(model.logicalPath(), "/Users/me/item");

    model.chooseItem();
    panels.answer({QUrl::fromLocalFile("/Users/me/other")});
    EXPECT_EQ(model.logicalPath(), "/Users/me/other");
    waitUntil([this] { return !model.progress(); });
}

TEST_F(FileHistory, exportsAVersionInPlaceOfAnotherAndShowsIt) {
    setVersions({"first", "second"});
    scan();
    const fs::path destination = home.write("notes.txt", "what was there");

    model.exportVersion(model.spans()[1].version);
    EXPECT_EQ(panels.current().message, "Export this version out of the backup");
    EXPECT_EQ(panels.current().name, "notes.txt");
    panels.answer({});
    EXPECT_EQ(model.currentExport(), std::nullopt);
    EXPECT_EQ(contents(destination), "what was there");

    exportTo(destination, 1);
    EXPECT_EQ(model.error(), std::nullopt);
    EXPECT_EQ(contents(destination), "first");
    EXPECT_THAT(workspace.requests, ElementsAre("reveal " + destination.string()));
}

TEST_F(FileHistory, saysWhyAnExportFailsAndLeavesWhatWasThere) {
    setVersions({"a"});
    scan();
    const fs::path destination = home.write("notes.txt", "what was there");
    fs::remove(roots[0] + "/Data" + path);
    exportTo(destination);
    EXPECT_THAT(model.error().value_or(""), StartsWith("Export failed: "));
    EXPECT_EQ(contents(destination), "what was there");
    EXPECT_THAT(model.spans(), SizeIs(1));
    EXPECT_THAT(workspace.requests, IsEmpty());
    EXPECT_EQ(std::distance(fs::directory_iterator(home.path()), {}), 1) << "nothing half is left";
}

TEST_F(FileHistory, opensACopyThatCannotBeWrittenInto) {
    setVersions({"a"});
    scan();
    model.openVersion(model.spans()[0].version);
    waitUntil([this] { return !workspace.requests.empty(); });
    ASSERT_THAT(workspace.requests.front(), StartsWith("open file://"));
    const fs::path copy = workspace.requests.front().substr(12);
    EXPECT_EQ(contents(copy), "a");
    EXPECT_EQ(copy.filename(), "notes.txt");
    EXPECT_FALSE(fs::equivalent(copy, roots[0] + "/Data" + path));
    EXPECT_EQ(fs::status(copy).permissions() & fs::perms::owner_write, fs::perms::none);
    fs::remove_all(copy.parent_path());
}

} // namespace
} // namespace tallyglass
