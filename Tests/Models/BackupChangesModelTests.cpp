#include "Tallyglass/Models/BackupChangesModel.h"
#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Comparison/CacheSession.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "Tests/Support/HostMachine.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/Models/UserCache.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <cstdio>
#include <cstdlib>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

using Texts = std::vector<std::string>;

Texts shown(const BackupChangesModel& model) {
    Texts lines;
    for (const DisplayRow& row : model.visibleRows())
        lines.push_back(std::string(static_cast<std::size_t>(row.indent) * 2, ' ') +
                        std::string(row.change->fileName()));
    return lines;
}

class Changes : public testing::Test {
protected:
    void load(Date target) {
        model.load(target, 2);
        waitUntil([this] { return !model.isBusy(); });
    }
    [[nodiscard]] long compareRuns() const {
        const auto calls = machine.calls();
        return std::ranges::count(calls, "compare");
    }

    const test::ScriptedMachine machine;
    BackupChangesModel model{machine.environment()};
};

TEST_F(Changes, areThoseFromTheBackupBefore) {
    const auto roots = machine.setBackups(3);
    machine.setAdded(roots[2], {"b.txt", "a.txt"});
    load(machine.dateOfBackup(2, 3) + std::chrono::seconds(300));
    EXPECT_EQ(model.resolvedFrom(), machine.dateOfBackup(1, 3));
    EXPECT_EQ(model.resolvedTo(), machine.dateOfBackup(2, 3));
    EXPECT_EQ(model.comparison()->addedCount, 2);
    EXPECT_THAT(shown(model), ElementsAre("a.txt", "b.txt"));
    EXPECT_FALSE(model.progressText());
    EXPECT_FALSE(machine.timer->remaining); // the seconds stand still
    EXPECT_FALSE(model.error());
}

TEST_F(Changes, areNotGuessedForAPointFarFromAnyBackup) {
    machine.setBackups(3);
    load(machine.dateOfBackup(2, 3) + std::chrono::seconds(301));
    EXPECT_EQ(model.error(),
              "Couldn't confidently match this point to a specific backup, so no diff is shown "
              "rather than risk showing the wrong one.");
    EXPECT_EQ(compareRuns(), 0);
}

TEST_F(Changes, ofTheOldestBackupOrTheOnlyOneAreNone) {
    for (const int count : {3, 1}) {
        machine.setBackups(count);
        load(machine.dateOfBackup(0, count));
        EXPECT_TRUE(model.isOldest());
        EXPECT_EQ(model.resolvedTo(), machine.dateOfBackup(0, count));
        EXPECT_FALSE(model.resolvedFrom());
        EXPECT_FALSE(model.error());
    }
    EXPECT_EQ(compareRuns(), 0);
}

TEST_F(Changes, sayWhyTheyCantBeTold) {
    load(*machine.now);
    EXPECT_EQ(model.error(), BackupListing::message());

    machine.setBackups(2);
    machine.fail("compare", "tmutil: no such backup\n");
    load(machine.dateOfBackup(1, 2));
    EXPECT_EQ(model.error(), "tmutil: no such backup");
    EXPECT_THAT(shown(model), IsEmpty());

    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"a.txt"});
    load(machine.dateOfBackup(1, 2));
    EXPECT_FALSE(model.error());
    EXPECT_THAT(shown(model), ElementsAre("a.txt"));
}

TEST_F(Changes, sayThatTheCacheCantBeOpened) {
    machine.folder().write("data", "a file where the folder should be");
    load(*machine.now);
    EXPECT_THAT(model.error().value(), StartsWith("Could not open the diff cache: "));
}

TEST_F(Changes, countTheSecondsWhileAComparisonRunsAndEndWithTheirChild) {
    machine.setBackups(2);
    machine.hold("compare");
    model.load(machine.dateOfBackup(1, 2), 2);
    waitUntil([this] { return compareRuns() == 1; });
    for (int second = 0; second < 75; ++second)
        machine.timer->fire();
    EXPECT_EQ(model.elapsedText(), "1:15");

    model.cancel();
    EXPECT_FALSE(model.progressText());
    EXPECT_FALSE(machine.timer->remaining);
    EXPECT_EQ(model.error(), "Comparison cancelled.");
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    EXPECT_FALSE(model.comparison());
    EXPECT_EQ(model.elapsed(), 75);
}

TEST_F(Changes, canBeCancelledBeforeTheirComparisonAndLoadedAgain) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"a.txt"});
    test::UserCache cache(machine.cacheFile());
    const auto cancelWhen = [this](const std::function<bool()>& condition) {
        model.load(machine.dateOfBackup(1, 2), 2);
        EXPECT_TRUE(model.isBusy());
        waitUntil(condition);
        model.cancel();
        EXPECT_FALSE(model.isBusy());
        EXPECT_FALSE(model.progressText());
        EXPECT_FALSE(model.error()); // no comparison was under way
        EXPECT_FALSE(machine.timer->remaining);
    };

    cancelWhen([] { return true; });
    cache.lock();
    cancelWhen([] { return true; }); // the cache can't be opened yet
    cache.unlock();
    machine.hold("listbackups");
    cancelWhen([this] { return model.progressText() == "Finding backup…" && !machine.calls().empty(); });
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    cancelWhen([] { return true; }); // the cache is open

    machine.setBackups(2);
    load(machine.dateOfBackup(1, 2));
    EXPECT_THAT(shown(model), ElementsAre("a.txt"));
    model.cancel(); // of nothing
    EXPECT_FALSE(model.error());
}

TEST_F(Changes, thatAreComparedStayInTheCacheWhenTheirLoadIsCancelled) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"a.txt"});
    test::UserCache cache(machine.cacheFile());
    cache.holdRows();
    model.load(machine.dateOfBackup(1, 2), 2);
    waitUntil([&] { return cache.hasResult(); });

    model.cancel();
    EXPECT_EQ(model.error(), "Comparison cancelled.");
    EXPECT_FALSE(model.comparison());
    EXPECT_THAT(shown(model), IsEmpty());

    cache.giveRows();
    load(machine.dateOfBackup(1, 2));
    EXPECT_THAT(shown(model), ElementsAre("a.txt"));
    EXPECT_EQ(compareRuns(), 1);
}

TEST_F(Changes, areNoneWhenTheStoreFailsAmongThem) {
    const auto roots = machine.setBackups(2);
    Texts names;
    for (int number = 1'000; number < 2'000; ++number)
        names.push_back(std::to_string(number));
    machine.setAdded(roots[1], names);
    const test::UserCache cache(machine.cacheFile());
    cache.fillDiskAt("/1700"); // some are stored by then
    load(machine.dateOfBackup(1, 2));
    EXPECT_THAT(model.error().value(), testing::HasSubstr("the disk is full"));
    EXPECT_FALSE(model.comparison());
    EXPECT_FALSE(model.progressText());
    EXPECT_THAT(shown(model), IsEmpty());

    cache.makeRoom();
    load(machine.dateOfBackup(1, 2));
    EXPECT_FALSE(model.error());
    EXPECT_EQ(shown(model), names);
}

TEST_F(Changes, areThoseOfTheLoadThatWasAskedForLast) {
    const auto roots = machine.setBackups(3);
    machine.hold("compare");
    model.load(machine.dateOfBackup(1, 3), 2);
    waitUntil([this] { return compareRuns() == 1; });
    machine.setAdded(roots[2], {"new.txt"});
    load(machine.dateOfBackup(2, 3));
    EXPECT_THAT(shown(model), ElementsAre("new.txt"));
    EXPECT_FALSE(model.error());
    EXPECT_EQ(model.elapsed(), 0);
}

/// A first comparison that is in the cache already and brought the folders a to e.
class ChangesInFolders : public Changes {
protected:
    ChangesInFolders() {
        machine.setAdded(roots[1], {"a/", "b/", "c/", "d/", "e/"});
        machine.cache->open().engine().compare(roots[0], roots[1], CompareOptions::fast(2), true);
    }

    /// A model that has loaded it, and whose own comparisons are held.
    [[nodiscard]] std::unique_ptr<BackupChangesModel> openSheet() const {
        machine.hold("compare");
        auto sheet = std::make_unique<BackupChangesModel>(machine.environment());
        sheet->load(machine.dateOfBackup(1, 2), 2);
        waitUntil([&] { return sheet->comparison().has_value(); });
        return sheet;
    }
    void untilRuns(long count) const {
        waitUntil([&] { return compareRuns() == count; });
    }

    const std::vector<std::string> roots = machine.setBackups(2);
};

TEST_F(ChangesInFolders, areFetchedThreeAheadAndOneMoreOnDemand) {
    const auto sheet = openSheet();
    const ChangeTree& tree = sheet->tree();
    untilRuns(1 + 3);
    EXPECT_EQ(tree.prefetchInFlight(), 3);
    EXPECT_TRUE(tree.isFetching("/c"));
    EXPECT_TRUE(tree.isQueued("/d"));

    sheet->toggleExpand(*tree.find("/e"));
    untilRuns(1 + 3 + 1);
    EXPECT_TRUE(tree.isFetching("/e"));
    EXPECT_FALSE(tree.isFetching("/d"));

    machine.setAdded(roots[1], {"e/new.txt"});
    waitUntil([&] { return !sheet->isBusy(); });
    EXPECT_TRUE(tree.isFetched("/d"));
    EXPECT_THAT(shown(*sheet), testing::Contains("  new.txt"));
    EXPECT_EQ(compareRuns(), 1 + 5);
}

TEST_F(ChangesInFolders, areComparedToTheEndThoughTheirSheetIsClosed) {
    auto sheet = openSheet();
    untilRuns(1 + 3);

    sheet.reset();
    machine.setAdded(roots[1], {"a/new.txt"});
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    EXPECT_EQ(compareRuns(), 1 + 3); // those that waited for their turn don't begin

    sheet = openSheet();
    waitUntil([&] { return sheet->tree().isFetched("/a"); }); // though tmutil is held again
    EXPECT_NE(sheet->tree().find("/a/new.txt"), nullptr);
}

TEST_F(ChangesInFolders, ofAnEarlierLoadGoToTheCacheAlone) {
    const auto sheet = openSheet();
    untilRuns(1 + 3);
    sheet->load(machine.dateOfBackup(0, 2), 2);
    waitUntil([&] { return sheet->isOldest(); });

    machine.setAdded(roots[1], {"a/new.txt"});
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    EXPECT_FALSE(sheet->isBusy());
    EXPECT_EQ(sheet->tree().size(), 0u);
    EXPECT_EQ(compareRuns(), 1 + 3);
}

TEST_F(ChangesInFolders, tellOfAFailureWithTheirFolder) {
    const auto data = std::filesystem::path(roots[0]) / "Data";
    std::filesystem::remove(data);
    load(machine.dateOfBackup(1, 2));
    ASSERT_NE(model.tree().folderError("/a"), nullptr);
    EXPECT_EQ(*model.tree().folderError("/a"), "Couldn't locate the backup volume.");
    EXPECT_EQ(compareRuns(), 1);

    const test::UserCache cache(machine.cacheFile());
    cache.fillDiskAt("/a/new.txt");
    std::filesystem::create_directory(data);
    machine.setAdded(roots[1], {"a/new.txt"});
    const auto fetch = [this] {
        model.fetchChildren("/a");
        EXPECT_EQ(model.tree().folderError("/a"), nullptr);
        waitUntil([this] { return !model.isBusy(); });
    };
    fetch();
    ASSERT_NE(model.tree().folderError("/a"), nullptr);
    EXPECT_THAT(*model.tree().folderError("/a"), testing::HasSubstr("the disk is full"));

    cache.makeRoom();
    fetch();
    EXPECT_TRUE(model.tree().isFetched("/a"));
    EXPECT_FALSE(model.error()); // it never was the load's
}

using ChangesInFoldersDeathTest = ChangesInFolders;

TEST_F(ChangesInFoldersDeathTest, areEndedWithTheApplication) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto quit = [this] {
        auto sheet = openSheet();
        untilRuns(1 + 3);
        sheet.reset();
        qApp->~QCoreApplication(); // as at the end of main
        std::fprintf(stderr, "%zu children", test::ProcessResources::now().children);
        std::_Exit(0);
    };
    EXPECT_EXIT(quit(), testing::ExitedWithCode(0), "0 children");
}

/// Over backups that are real: folders three levels deep, one of which holds the only changes.
class ChangesOfAMachine : public testing::Test {
protected:
    ChangesOfAMachine() {
        machine.folder().write("source/a/b/c/deep.txt", "one");
        machine.folder().write("source/a/same.txt", "same");
        machine.folder().write("source/other/file.txt", "same");
        machine.setUp();
        machine.backUp();
        machine.folder().write("source/a/b/c/deep.txt", "another");
        machine.folder().write("source/a/b/c/new.txt", "new");
        machine.backUp();
    }

    [[nodiscard]] AppEnvironment environment() const {
        AppEnvironment result(SystemPaths(machine.root()), TMUtilRunner(machine.tool()));
        result.cache = std::make_shared<CacheSession>(result.runner, machine.folder() / "cache.sqlite");
        return result;
    }

    const test::HostMachine machine;
    BackupChangesModel model{environment()};
};

TEST_F(ChangesOfAMachine, areFoundByOpeningFolders) {
    model.load(machine.destination().snapshotDates.back(), 2);
    waitUntil([this] { return model.error() || (model.comparison() && !model.progressText()); });
    ASSERT_EQ(model.error(), std::nullopt);

    // Opens whatever can be opened until nothing more comes, as an untiring user would.
    const auto isSettled = [this] {
        for (const DisplayRow& row : model.visibleRows()) {
            if (row.isLoading || model.tree().isFetching(row.change->path))
                return false;
        }
        return true;
    };
    for (bool opened = true; opened;) {
        waitUntil(isSettled);
        opened = false;
        for (const DisplayRow& row : model.visibleRows()) {
            if (row.isExpandable && !row.isExpanded) {
                model.toggleExpand(*row.change);
                opened = true;
                break; // the rows are new now
            }
        }
    }
    Texts names;
    for (const DisplayRow& row : model.visibleRows())
        names.emplace_back(row.change->fileName());
    EXPECT_THAT(names, testing::IsSupersetOf({"deep.txt", "new.txt"}));
    EXPECT_THAT(names, testing::Not(testing::Contains("file.txt")));
    EXPECT_THAT(names, testing::Not(testing::Contains("Data"))); // the volume itself
    EXPECT_EQ(test::ProcessResources::now().children, 0u);
}

} // namespace
} // namespace tallyglass
