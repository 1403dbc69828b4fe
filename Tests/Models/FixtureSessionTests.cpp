#include "Tallyglass/Models/AppModel.h"
#include "Tallyglass/Models/BackupChangesModel.h"
#include "Tallyglass/Models/DiffModel.h"
#include "Tallyglass/Models/ExclusionsModel.h"
#include "Tallyglass/Models/FixtureSession.h"
#include "Tests/Support/Models/ReadMachine.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

namespace tallyglass {
namespace {

using test::waitUntil;
using testing::IsEmpty;
using testing::SizeIs;

const Date now = dateSince1970(1'795'376'280); // 2026-11-22 19:38:00 UTC

class Fixture : public testing::Test {
protected:
    [[nodiscard]] static FixtureSession session(std::string_view name) {
        return FixtureSession::make(name, now).value();
    }
    /// A model that has read the session's machine, as the window does.
    [[nodiscard]] static std::unique_ptr<AppModel> read(const FixtureSession& session) {
        auto model = std::make_unique<AppModel>(session.environment);
        test::readMachine(*model);
        model->startPolling();
        if (session.measuresRate)
            waitUntil([&] { return model->backupRate().has_value(); });
        return model;
    }
    [[nodiscard]] static std::unique_ptr<AppModel> read(std::string_view name) { return read(session(name)); }

    /// The changes in the newest backup.
    [[nodiscard]] static std::unique_ptr<BackupChangesModel> load(std::string_view name) {
        auto changes = std::make_unique<BackupChangesModel>(session(name).environment);
        changes->load(now - std::chrono::minutes(38), 2);
        return changes;
    }
};

TEST_F(Fixture, isTheMachineOfItsName) {
    EXPECT_EQ(read("healthy")->overallHealth(), BackupHealth::Level::healthy);
    EXPECT_EQ(read("healthy")->health()->summary(), "Backups healthy");
    EXPECT_THAT(read("healthy")->manifest(), SizeIs(60));
    EXPECT_EQ(read("warning")->overallHealth(), BackupHealth::Level::warning);
    EXPECT_FALSE(read("warning")->health()->gaps.empty());
    EXPECT_EQ(read("critical")->overallHealth(), BackupHealth::Level::critical);
    EXPECT_EQ(read("critical")->lastError(), "The backup disk could not be reached.");
    EXPECT_THAT(read("critical")->health()->suspectedFailedAttempts, SizeIs(5));
    EXPECT_TRUE(read("stopping")->status().isStopping);
    EXPECT_EQ(read("locked")->fdaStatus(), FDAStatus::denied);
    EXPECT_THAT(read("locked")->manifest(), IsEmpty());
    EXPECT_TRUE(read("no-destination")->settings().has_value());
    EXPECT_EQ(read("no-destination")->selectedDestination(), nullptr);
    EXPECT_THAT(read("long")->selectedDestination()->snapshotDates, SizeIs(3000));
    EXPECT_THAT(read("fresh")->selectedDestination()->snapshotDates, SizeIs(1));
    EXPECT_GT(read("words-long")->selectedDestination()->displayName().size(), 100u);
    EXPECT_FALSE(FixtureSession::make("unheard-of", now).has_value());
}

TEST_F(Fixture, isTheSameAtEachReading) {
    const FixtureSession running = session("running");
    const auto model = read(running);
    const BackupStatus status = model->status();
    EXPECT_TRUE(status.isRunning);
    EXPECT_EQ(status.bytesCopied, 3'180'000'000);
    EXPECT_EQ(model->backupRate(), (BackupRate{.bytesPerSecond = 41'300'000, .filesPerSecond = 216}));

    const auto settings = model->settings();
    test::readMachine(*model);

    EXPECT_EQ(model->status(), status);
    EXPECT_EQ(model->settings(), settings);
    EXPECT_TRUE(model->backupRate().has_value());
}

TEST_F(Fixture, goesWithItsLastCopy) {
    std::filesystem::path root;
    {
        const FixtureSession made = session("healthy");
        root = made.environment.paths.root();
        const auto model = read(made);
        EXPECT_TRUE(std::filesystem::exists(root));
    }
    waitUntil([&] { return !std::filesystem::exists(root); });
}

TEST_F(Fixture, comparesItsBackups) {
    const auto compare = [](std::string_view name) {
        auto model = std::make_unique<DiffModel>(session(name).environment);
        model->prepare();
        waitUntil([&] { return model->canRun(); });
        model->run(true);
        return model;
    };
    for (const auto& [name, rows] :
         {std::pair("compare-results", 14), {"compare-none", 0}, {"compare-many", 12'345}}) {
        const auto model = compare(name);
        waitUntil([&] { return !model->progressText(); });
        EXPECT_THAT(model->backups(), SizeIs(31));
        EXPECT_THAT(model->changes(), SizeIs(rows)) << name;
        EXPECT_EQ(model->comparison()->totalChanges(), rows) << name;
    }
    const auto failed = compare("compare-failure");
    waitUntil([&] { return failed->error().has_value(); });
    const auto running = compare("compare-running");
    waitUntil([&] { return running->progressText() == "Running tmutil compare…"; });
    running->cancel();
    waitUntil([&] { return running->error() == "Comparison cancelled."; });
}

TEST_F(Fixture, watchesItemsOfEveryKind) {
    const auto watch = [](std::string_view name) {
        auto model = std::make_unique<ExclusionsModel>(session(name).environment);
        model->refresh();
        waitUntil([&] { return model->isLoaded(); });
        return model;
    };
    EXPECT_THAT(watch("healthy")->statuses(), IsEmpty());
    const auto items = watch("exclusions-items");
    std::vector<std::string_view> explanations;
    for (const auto& status : items->statuses())
        explanations.push_back(status.explanation());
    std::ranges::sort(explanations);
    EXPECT_EQ(std::ranges::unique(explanations).size(), 0u);
    EXPECT_THAT(explanations, SizeIs(5));

    for (const auto& [name, fails] : {std::pair("exclusions-items", false), {"exclusions-failure", true}}) {
        const auto model = watch(name);
        const auto item =
            *std::ranges::find(model->statuses(), ExclusionState::included, &ExclusionStatus::state);
        model->setExcluded(true, item.path);
        waitUntil([&] { return !model->isBusy(); });
        EXPECT_EQ(model->error().has_value(), fails) << name;
        EXPECT_EQ(std::ranges::count(model->statuses(), item), fails ? 1 : 0) << name;
    }
}

TEST_F(Fixture, isDiagnosedAndMeasured) {
    const auto capture = [](std::string_view name) {
        auto model = std::make_unique<AppModel>(session(name).environment);
        model->captureDiagnostics();
        return model;
    };
    for (const auto& [name, summary] : {std::pair("diagnostics-results", "7 of 8 probes succeeded"),
                                        {"diagnostics-denied", "1 of 7 probes succeeded"}}) {
        const auto model = capture(name);
        waitUntil([&] { return !model->diagnosticsProgress(); });
        EXPECT_EQ(model->lastDump()->summary(), summary);
    }
    const auto failed = capture("diagnostics-failure");
    waitUntil([&] { return failed->lastError().has_value(); });
    const auto running = capture("diagnostics-running");
    running->runBenchmark(3);
    waitUntil([&] {
        return running->diagnosticsProgress() == "Latest backup" && running->diagnosticsElapsed() == "0:02" &&
               running->benchmarkProgress()->starts_with("Timing");
    });

    AppModel measured(session("diagnostics-results").environment);
    measured.runBenchmark(3);
    waitUntil([&] { return !measured.benchmarkProgress(); });
    EXPECT_THAT(measured.benchmarkResults(), SizeIs(5));
    EXPECT_NE(CompareBenchmark::fastestSet(measured.benchmarkResults()), nullptr);
}

TEST_F(Fixture, showsTheChangesInItsNewestBackup) {
    for (const std::string_view name : FixtureSession::names()) {
        const auto changes = load(name);
        const bool isEndless = session(name).actions.changes.has_value();
        waitUntil([&] { return isEndless ? changes->elapsed() > 0 : !changes->isBusy(); });
        const int states = (changes->progressText() ? 1 : 0) + (changes->error() ? 1 : 0) +
                           (changes->isOldest() ? 1 : 0) + (changes->comparison() ? 1 : 0);
        EXPECT_EQ(states, 1) << name;
    }
    const auto running = load("changes-running");
    waitUntil([&] { return running->elapsedText() == "1:15" && running->bytesReceived() == 3'410'220; });
    const auto results = load("changes-results");
    waitUntil([&] { return !results->isBusy(); });
    EXPECT_NE(results->tree().find("/Users/alex/Documents"), nullptr);
}

} // namespace
} // namespace tallyglass
