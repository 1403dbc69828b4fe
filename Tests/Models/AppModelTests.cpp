#include "Tallyglass/Models/AppModel.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <array>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Texts = std::vector<std::string>;

class App : public testing::Test {
protected:
    void SetUp() override {
        for (const auto topic : topics)
            QObject::connect(&model, topic, [this] { ++changes; });
    }

    /// Refreshes, and waits for its end.
    void refresh() {
        bool ended = false;
        model.refresh([&ended] { ended = true; });
        waitUntil([&] { return ended; });
    }

    void startPolling() {
        model.startPolling();
        starts = machine.timer->starts;
    }

    /// Lets the poll's time pass, with the clock, and waits until it sleeps again.
    void tick() {
        *machine.now += std::chrono::duration<double>(machine.timer->remaining.value());
        machine.timer->fire();
        waitUntil([this] { return machine.timer->starts > starts; });
        starts = machine.timer->starts;
    }

    /// Asks for the status, and waits until it was answered.
    void refreshStatus() {
        const auto before = machine.calls().size();
        const int changesBefore = changes;
        model.refreshStatus();
        waitUntil([&] { return machine.calls().size() > before && changes > changesBefore; });
    }

    [[nodiscard]] std::optional<std::int64_t> manifestRow() const {
        return model.manifest().empty() ? std::nullopt : model.manifest()[0].xid;
    }

    static constexpr std::array topics{&AppModel::statusChanged,     &AppModel::errorChanged,
                                       &AppModel::settingsChanged,   &AppModel::manifestChanged,
                                       &AppModel::permissionChanged, &AppModel::refreshingChanged};

    const test::ScriptedMachine machine;
    AppModel model{machine.environment()};
    int changes = 0;
    int starts = 0;
};

TEST_F(App, readsEverythingInOrderOnARefresh) {
    machine.setDestinations({"A", "B"});
    machine.setManifest(7);
    machine.grantAccess();
    machine.setStatus("Running = 1; BackupPhase = Copying;");

    Texts order;
    const auto note = [&](const char* part, bool isThere) {
        if (isThere && std::ranges::find(order, part) == order.end())
            order.emplace_back(part);
    };
    const auto look = [&] {
        note("permission", model.fdaStatus() == FDAStatus::granted);
        note("settings", model.hasReadSettings());
        note("selection", model.selectedDestinationID() == "A");
        note("status", model.status().isRunning);
        note("manifest", manifestRow().has_value());
    };
    for (const auto topic : topics)
        QObject::connect(&model, topic, look);

    bool ended = false;
    model.refresh([&ended] { ended = true; });
    const bool wasRefreshing = model.isRefreshing();
    const bool waited = !order.empty(); // for a file
    waitUntil([&] { return ended; });

    EXPECT_TRUE(wasRefreshing);
    EXPECT_FALSE(waited);
    EXPECT_THAT(order, ElementsAre("permission", "settings", "selection", "status", "manifest"));
    EXPECT_EQ(model.status().phase, "Copying");
    EXPECT_EQ(manifestRow(), 7);
    EXPECT_FALSE(model.isRefreshing());
    EXPECT_EQ(model.health().value().summary(), "Backups healthy");
    EXPECT_THAT(machine.calls(), ElementsAre("status"));
}

TEST_F(App, hasNoHealthWithoutADestination) {
    machine.setDestinations({});
    refresh();
    EXPECT_TRUE(model.settings());
    EXPECT_FALSE(model.selectedDestinationID());
    EXPECT_EQ(model.selectedDestination(), nullptr);
    EXPECT_FALSE(model.health());
    EXPECT_EQ(model.overallHealth(), BackupHealth::Level::healthy);
}

TEST_F(App, keepsTheSelectionOfADestinationThatHasGone) {
    machine.setDestinations({"A", "B"});
    model.setSelectedDestinationID("B");
    refresh();
    ASSERT_NE(model.selectedDestination(), nullptr);
    EXPECT_EQ(model.selectedDestination()->id, "B");

    machine.setDestinations({"A", "C"});
    refresh();

    EXPECT_EQ(model.selectedDestinationID(), "B");
    EXPECT_EQ(model.selectedDestination()->id, "A");
}

TEST_F(App, takesTheWorstOfAllDestinationsAndJudgesByTheClock) {
    machine.setDestinations({"A", "B"});
    refresh();
    TMSettings settings = model.settings().value();
    settings.destinations[1].bytesUsed = 88;
    settings.destinations[1].bytesAvailable = 12;
    model.setSettings(settings);

    EXPECT_EQ(model.health()->level(), BackupHealth::Level::healthy);
    EXPECT_EQ(model.overallHealth(), BackupHealth::Level::warning);
    *machine.now += std::chrono::hours(48);
    EXPECT_EQ(model.health()->level(), BackupHealth::Level::critical);
    EXPECT_EQ(model.overallHealth(), BackupHealth::Level::critical);
}

TEST_F(App, showsIdleAndTheWordsOfAFailedStatusUntilOneWorks) {
    machine.setStatus("Running = 1;");
    refreshStatus();
    machine.fail("status", "tmutil: no engine\n");
    refreshStatus();
    EXPECT_EQ(model.status(), BackupStatus::idle);
    EXPECT_EQ(model.lastError(), "tmutil: no engine");

    machine.setStatus("Running = 1;");
    refreshStatus();
    EXPECT_TRUE(model.status().isRunning);
    EXPECT_FALSE(model.lastError());
}

TEST_F(App, saysThatItsToolIsMissing) {
    std::filesystem::remove(machine.folder() / "usr/bin/tmutil");
    machine.setDestinations({"A"});
    refresh();
    EXPECT_EQ(model.lastError(), "Could not run tmutil: No such file or directory");
    EXPECT_EQ(model.selectedDestinationID(), "A");
    EXPECT_THAT(model.manifest(), IsEmpty());
}

TEST_F(App, dropsTheManifestSilentlyWhenItCantBeRead) {
    machine.setManifest(7);
    refresh();
    ASSERT_EQ(manifestRow(), 7);
    std::filesystem::remove(machine.folder() / ManifestReader::exportPath.substr(1));
    model.setLastError("something else");

    model.reloadManifest();
    waitUntil([this] { return model.manifest().empty(); });

    EXPECT_EQ(model.lastError(), "something else");
}

TEST_F(App, wakesNobodyWhenNothingChanged) {
    machine.setDestinations({"A"});
    machine.setManifest(7);
    refresh();
    changes = 0;
    refresh();
    EXPECT_EQ(changes, 2); // the refresh's own beginning and end
}

TEST_F(App, sleepsFirstAndByWhatRan) {
    startPolling();
    const bool asked = !machine.calls().empty();
    EXPECT_FALSE(asked);
    EXPECT_EQ(machine.timer->remaining, AppModel::idleInterval);

    machine.setStatus("Running = 1;");
    tick();
    EXPECT_TRUE(model.status().isRunning);
    EXPECT_EQ(machine.timer->remaining, AppModel::runningInterval);

    machine.setStatus("Running = 0;");
    tick();
    EXPECT_EQ(machine.timer->remaining, AppModel::idleInterval);
    EXPECT_THAT(machine.calls(), ElementsAre("status", "status", "machinedirectory"));
}

TEST_F(App, readsSettingsAndManifestOnceAtTheEndOfABackup) {
    machine.setStatus("Running = 1;");
    machine.setDestinations({"A"}, 3);
    refresh();
    startPolling();
    machine.setDestinations({"A"}, 4);
    machine.setManifest(8);
    tick();
    EXPECT_THAT(model.selectedDestination()->snapshotDates, SizeIs(3)); // it still runs

    machine.setStatus("Running = 0;");
    tick();
    EXPECT_THAT(model.selectedDestination()->snapshotDates, SizeIs(4));
    EXPECT_EQ(manifestRow(), 8);

    machine.setDestinations({"A"}, 5);
    machine.setManifest(9);
    tick();
    EXPECT_THAT(model.selectedDestination()->snapshotDates, SizeIs(4));
    EXPECT_EQ(manifestRow(), 8);
}

TEST_F(App, takesAFailedStatusForTheEndOfABackup) {
    machine.setStatus("Running = 1;");
    machine.setDestinations({"A"}, 3);
    refresh();
    startPolling();
    machine.setDestinations({"A"}, 4);
    machine.fail("status", "gone");
    tick();
    EXPECT_THAT(model.selectedDestination()->snapshotDates, SizeIs(4));
    EXPECT_EQ(model.lastError(), "gone");
    EXPECT_EQ(machine.timer->remaining, AppModel::idleInterval);
}

TEST_F(App, pollsInOneLoopHoweverOftenItIsStarted) {
    startPolling();
    startPolling();
    tick();
    EXPECT_THAT(machine.calls(), ElementsAre("status"));

    machine.timer->fire(); // and again while a reading is on its way
    startPolling();
    tick();
    waitUntil([] { return test::ProcessResources::now().children == 0; });
    EXPECT_EQ(machine.timer->starts, 5); // the reading that was under way starts none
}

TEST_F(App, measuresTheRateWithTheSetClock) {
    machine.setStatus("Running = 1; Progress = { bytes = 1000; files = 10; };");
    refresh();
    startPolling();
    EXPECT_FALSE(model.backupRate());
    machine.setStatus("Running = 1; Progress = { bytes = 5000; files = 20; };");
    tick(); // two seconds later
    EXPECT_EQ(model.backupRate(), (BackupRate{.bytesPerSecond = 2000, .filesPerSecond = 5}));
    machine.setStatus("Running = 0;");
    tick();
    EXPECT_FALSE(model.backupRate());
}

TEST_F(App, readsTheStatusAfterACommandThatWorked) {
    machine.setStatus("Running = 1;");
    model.startBackup();
    waitUntil([this] { return model.status().isRunning; });
    machine.setStatus("Running = 0;");
    model.stopBackup();
    waitUntil([this] { return !model.status().isRunning; });
    EXPECT_THAT(machine.calls(), ElementsAre("startbackup", "status", "stopbackup", "status"));
}

TEST_F(App, keepsTheWordsOfAFailedCommandUntilTheNextStatus) {
    machine.fail("startbackup", "No destination is set.\n");
    model.startBackup();
    waitUntil([this] { return model.lastError().has_value(); });
    EXPECT_EQ(model.lastError(), "No destination is set.");
    EXPECT_THAT(machine.calls(), ElementsAre("startbackup"));
    refreshStatus();
    EXPECT_FALSE(model.lastError());
}

TEST_F(App, readsEverythingWhenThePermissionComesAndElseTheManifest) {
    machine.setDestinations({"A"});
    machine.setManifest(1);
    model.recheckPermission();
    waitUntil([this] { return manifestRow() == 1; });
    EXPECT_FALSE(model.settings());
    EXPECT_NE(model.fdaStatus(), FDAStatus::granted);

    machine.grantAccess();
    model.recheckPermission();
    waitUntil([this] { return model.settings() && !model.isRefreshing(); });

    machine.setManifest(2);
    model.recheckPermission();
    waitUntil([this] { return manifestRow() == 2; });
    EXPECT_THAT(machine.calls(), ElementsAre("status"));
}

TEST(AppModel, goesAwayWithReadingsUnderway) {
    const test::ScriptedMachine machine;
    machine.setStatus("Running = 1;");
    {
        AppModel model(machine.environment());
        model.startPolling();
        machine.timer->fire();
        model.refresh();
    }
    EXPECT_EQ(machine.timer->timer, nullptr);
    waitUntil([] { return test::ProcessResources::now().children == 0; });
}

} // namespace
} // namespace tallyglass
