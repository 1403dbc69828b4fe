#include "Tallyglass/Models/DiffModel.h"
#include "TallyglassKit/Access/BackupListing.h"
#include "TallyglassKit/Access/BackupPath.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/Models/UserCache.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class Diff : public testing::Test {
protected:
    void prepare() {
        model.prepare();
        waitUntil(
            [this] { return model.error() || (!model.backups().empty() && !model.isLoadingBackups()); });
    }
    void run(bool useCache = true) {
        model.run(useCache);
        waitUntil([this] { return !model.progressText(); });
    }
    [[nodiscard]] int compareRuns() const {
        const auto calls = machine.calls();
        return static_cast<int>(std::ranges::count(calls, "compare"));
    }
    [[nodiscard]] std::vector<std::string> visible() const {
        std::vector<std::string> names;
        for (const auto& change : model.visibleChanges())
            names.emplace_back(change.fileName());
        return names;
    }

    const test::ScriptedMachine machine;
    DiffModel model{machine.environment()};
};

TEST_F(Diff, comparesTwoThatAnotherScreenChoseAsSoonAsTheyAreListed) {
    const auto roots = machine.setBackups(3);
    machine.setAdded(roots[1], {"new"});
    model.compareWhenListed(roots[0], roots[1]);
    waitUntil([this] { return model.comparison().has_value(); });
    EXPECT_EQ(model.comparison()->fromPath, roots[0]);
    EXPECT_EQ(model.toPath(), roots[1]);

    model.compareWhenListed("/gone", roots[2]);
    waitUntil([this] { return !model.isLoadingBackups(); });
    EXPECT_FALSE(model.progressText());
    EXPECT_EQ(compareRuns(), 1);
}

TEST_F(Diff, offersTheBackupsAndTheTwoNewestAsAPair) {
    const auto roots = machine.setBackups(3);
    EXPECT_FALSE(model.canRun());
    prepare();
    ASSERT_THAT(model.backups(), SizeIs(3));
    EXPECT_EQ(model.backups()[2].path, roots[2]);
    EXPECT_EQ(model.backups()[2].date, machine.dateOfBackup(2, 3));
    EXPECT_EQ(model.fromPath(), roots[1]);
    EXPECT_EQ(model.toPath(), roots[2]);
    EXPECT_TRUE(model.canRun());

    model.setToPath(roots[1]);
    EXPECT_FALSE(model.canRun());
}

TEST_F(Diff, keepsAChoiceThatIsStillOnOffer) {
    const auto roots = machine.setBackups(4);
    prepare();
    model.setFromPath(roots[0]);
    model.setToPath(roots[3]);
    machine.answer("listbackups", roots[0] + "\n" + roots[1] + "\n" + roots[2] + "\n");
    model.loadBackups();
    waitUntil([this] { return !model.isLoadingBackups(); });
    EXPECT_EQ(model.fromPath(), roots[0]);
    EXPECT_EQ(model.toPath(), roots[2]);
}

TEST_F(Diff, findsBackupsWithoutTmutilWhereTheManifestIsExported) {
    machine.folder().write("Library/Preferences/com.apple.TimeMachine.plist",
                           "<plist><dict><key>Destinations</key><array><dict><key>DestinationID</key>"
                           "<string>A</string><key>DestinationUUIDs</key><array><string>U-1</string></array>"
                           "</dict></array></dict></plist>");
    machine.setManifest(1);
    prepare();
    ASSERT_THAT(model.backups(), SizeIs(1));
    const Date date = dateSince1970(1784550583);
    EXPECT_EQ(model.backups()[0].date, date);
    EXPECT_EQ(model.backups()[0].path, machine.paths().path(BackupPath::reconstructRoot("U-1", date)));
    EXPECT_EQ(model.fromPath(), model.toPath());
    EXPECT_FALSE(model.canRun());
    EXPECT_THAT(machine.calls(), IsEmpty());
}

TEST_F(Diff, saysWhyThereIsNothingToCompare) {
    model.prepare();
    waitUntil([this] { return model.unavailableReason().has_value(); });
    EXPECT_EQ(model.unavailableReason(), BackupListing::message());

    machine.fail("listbackups", "tmutil: listbackups requires Full Disk Access privileges.\n");
    model.loadBackups();
    waitUntil([this] { return !model.isLoadingBackups(); });
    EXPECT_NE(model.unavailableReason(), BackupListing::message());

    machine.setBackups(2);
    model.loadBackups();
    waitUntil([this] { return !model.isLoadingBackups(); });
    EXPECT_FALSE(model.unavailableReason());
}

TEST_F(Diff, comparesOnceAndThenReadsTheCache) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"b.txt", "a.txt"});
    prepare();
    model.run(true);
    EXPECT_EQ(model.progressText(), "Comparing…");
    EXPECT_FALSE(model.canRun());
    waitUntil([this] { return !model.progressText(); });
    EXPECT_THAT(visible(), ElementsAre("a.txt", "b.txt"));
    EXPECT_EQ(model.comparison()->addedCount, 2);

    run(true);
    EXPECT_EQ(compareRuns(), 1);
    run(false);
    EXPECT_EQ(compareRuns(), 2);
}

TEST_F(Diff, keepsTheOldResultWhenTheNextRunFailsOrIsCancelled) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"a.txt"});
    prepare();
    run();
    const auto result = model.comparison();

    machine.fail("compare", "tmutil: the backup has gone\n");
    run(false);
    EXPECT_EQ(model.error(), "tmutil: the backup has gone");
    machine.answer("compare", "<plist version=\"1.0\"><dict><key>Changes</key><array><dict>");
    run(false);
    EXPECT_THAT(model.error().value(), StartsWith("Could not read tmutil output: "));

    machine.hold("compare");
    model.run(false);
    EXPECT_FALSE(model.error());
    waitUntil([this] { return compareRuns() == 4; });
    model.cancel();
    waitUntil([this] { return !model.progressText(); });
    EXPECT_EQ(model.error(), "Comparison cancelled.");
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    EXPECT_EQ(model.comparison(), result);
    EXPECT_THAT(visible(), ElementsAre("a.txt"));
}

TEST_F(Diff, dropsARunForTheNextOne) {
    const auto roots = machine.setBackups(2);
    machine.hold("compare");
    prepare();
    model.run(true);
    waitUntil([this] { return compareRuns() == 1; });
    machine.setAdded(roots[1], {"a.txt"});
    run();
    EXPECT_THAT(visible(), ElementsAre("a.txt"));
    EXPECT_FALSE(model.error());
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    EXPECT_FALSE(model.error());
}

TEST_F(Diff, canBeCancelledRightAfterItsStart) {
    machine.setBackups(2);
    machine.hold("compare");
    prepare();
    model.run(true);
    model.cancel();
    waitUntil([this] { return !model.progressText(); });
    EXPECT_EQ(model.error(), "Comparison cancelled.");
    EXPECT_FALSE(model.comparison());
    EXPECT_TRUE(model.canRun());
    waitUntil([] { return test::ProcessResources::now().children == 0; });
}

TEST_F(Diff, opensTheCacheThoughSomethingIsCancelledOrAnotherModelGoes) {
    machine.setBackups(2);
    const test::UserCache cache(machine.cacheFile());
    cache.lock();
    auto other = std::make_unique<DiffModel>(machine.environment());
    other->prepare();
    model.prepare();
    model.run(true);
    model.cancel();
    other.reset();
    EXPECT_FALSE(model.progressText());
    EXPECT_FALSE(model.error());

    cache.unlock();
    waitUntil([this] { return model.canRun(); });
    EXPECT_FALSE(model.error());
    EXPECT_EQ(compareRuns(), 0);
}

TEST_F(Diff, keepsAComparisonInTheCacheWhoseRowsAreCancelled) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"a.txt"});
    test::UserCache cache(machine.cacheFile());
    cache.holdRows();
    prepare();
    model.run(true);
    waitUntil([&] { return cache.hasResult(); });

    model.cancel();
    waitUntil([this] { return !model.progressText(); });
    EXPECT_FALSE(model.comparison());
    EXPECT_THAT(visible(), IsEmpty());

    cache.giveRows();
    run();
    EXPECT_THAT(visible(), ElementsAre("a.txt"));
    EXPECT_EQ(compareRuns(), 1);
}

TEST_F(Diff, keepsTheOldResultWhenTheStoreFailsAmongTheRows) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"old.txt"});
    prepare();
    run();
    const auto result = model.comparison();
    std::vector<std::string> names;
    for (int number = 1'000; number < 2'000; ++number)
        names.push_back(std::to_string(number));
    machine.setAdded(roots[1], names);
    const test::UserCache cache(machine.cacheFile());
    cache.fillDiskAt("/1700"); // some are stored by then

    run(false);
    EXPECT_THAT(model.error().value(), testing::HasSubstr("the disk is full"));
    EXPECT_EQ(model.comparison(), result);
    EXPECT_THAT(visible(), ElementsAre("old.txt"));

    cache.makeRoom();
    run();
    EXPECT_FALSE(model.error());
    EXPECT_EQ(visible(), names);
}

TEST_F(Diff, filtersWhatIsLoaded) {
    const auto roots = machine.setBackups(2);
    machine.setAdded(roots[1], {"Apple.txt", "banana.txt", "cherry.txt"});
    prepare();
    run();
    model.setSearchText("AN");
    EXPECT_THAT(visible(), ElementsAre("banana.txt"));
    model.setSearchText("");
    model.setKindFilter({ChangeKind::removed});
    EXPECT_THAT(visible(), IsEmpty());
    model.setKindFilter({});
    EXPECT_THAT(visible(), IsEmpty());
    model.setKindFilter({ChangeKind::added});
    model.setShowContentChangesOnly(true);
    EXPECT_THAT(visible(), SizeIs(3));
}

TEST_F(Diff, loadsTheFirstTwentyThousandRowsAndCountsAll) {
    const auto roots = machine.setBackups(2);
    std::vector<std::string> names;
    for (int number = 0; number < 20'500; ++number)
        names.push_back(fmt::format("{:05}", number));
    machine.setAdded(roots[1], names);
    prepare();
    run();
    EXPECT_THAT(model.changes(), SizeIs(LoadedComparison::rowLimit));
    EXPECT_EQ(model.comparison()->addedCount, 20'500);
    EXPECT_EQ(model.changes().back().fileName(), "19999");
}

TEST_F(Diff, tellsOfEachTopicAloneAndOfNoEqualValue) {
    machine.setBackups(2);
    prepare();
    std::vector<std::string> topics;
    const auto note = [&](auto signal, const char* topic) {
        QObject::connect(&model, signal, [&topics, topic] { topics.emplace_back(topic); });
    };
    note(&DiffModel::backupsChanged, "backups");
    note(&DiffModel::selectionChanged, "selection");
    note(&DiffModel::optionsChanged, "options");
    note(&DiffModel::progressChanged, "progress");
    note(&DiffModel::resultChanged, "result");
    note(&DiffModel::errorChanged, "error");
    note(&DiffModel::filterChanged, "filter");
    note(&DiffModel::rowsChanged, "rows");

    model.setFromPath(model.fromPath());
    model.setDepth(3);
    model.setSearchText("");
    EXPECT_THAT(topics, IsEmpty());
    model.setDepth(4);
    EXPECT_THAT(topics, ElementsAre("options"));
    EXPECT_EQ(model.options(), CompareOptions::fromFlags(4, false, false));
    model.setFromPath(model.toPath());
    model.setSearchText("a");
    EXPECT_THAT(topics, ElementsAre("options", "selection", "filter", "rows"));
}

TEST_F(Diff, saysThatTheCacheCantBeOpened) {
    machine.folder().write("data", "a file where the folder should be");
    machine.setBackups(2);
    prepare();
    EXPECT_THAT(model.error().value(), StartsWith("Could not open the diff cache: "));
    EXPECT_THAT(model.backups(), IsEmpty());
}

TEST_F(Diff, givesUpOnACacheThatSomebodyElseHoldsLocked) {
    machine.setBackups(2);
    prepare();
    const auto other = TallyglassDatabase::makeQueue(machine.cacheFile());
    other->execute("BEGIN EXCLUSIVE");
    run(); // waits for five seconds, while the window goes on
    EXPECT_THAT(model.error().value(), testing::HasSubstr("locked"));
    EXPECT_EQ(compareRuns(), 0);
    other->execute("ROLLBACK");
}

} // namespace
} // namespace tallyglass
