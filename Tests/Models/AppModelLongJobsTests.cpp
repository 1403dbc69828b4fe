#include "Tallyglass/Models/AppModel.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "Tests/Support/FakeWorkspace.h"
#include "Tests/Support/Models/ScriptedMachine.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/QtMain/EventLoop.h"

#include <gmock/gmock.h>

#include <QSignalSpy>
#include <filesystem>
#include <memory>

namespace tallyglass {
namespace {

namespace fs = std::filesystem;
using test::waitUntil;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::SizeIs;

class LongJobs : public testing::Test {
protected:
    [[nodiscard]] AppEnvironment environment() {
        AppEnvironment result = machine.environment();
        result.workspace = &workspace;
        return result;
    }
    void capture() {
        model->captureDiagnostics();
        waitUntil([this] { return !model->diagnosticsProgress(); });
    }
    void benchmark() {
        model->runBenchmark(2);
        waitUntil([this] { return !model->benchmarkProgress(); });
    }
    static void untilNoChildIsLeft() {
        waitUntil([] { return test::ProcessResources::now().children == 0; });
    }

    const test::ScriptedMachine machine;
    const fs::path desktop = machine.folder() / "Desktop";
    const fs::path dump = desktop / "Tallyglass Diagnostics";
    test::FakeWorkspace workspace;
    std::unique_ptr<AppModel> model = std::make_unique<AppModel>(environment());
};

TEST_F(LongJobs, captureDiagnosticsAndShowTheFolder) {
    machine.setBackups(2);
    std::vector<std::string> told;
    QObject::connect(model.get(), &AppModel::diagnosticsChanged, [&] {
        if (model->diagnosticsProgress() && (told.empty() || told.back() != *model->diagnosticsProgress()))
            told.push_back(*model->diagnosticsProgress());
    });

    capture();

    EXPECT_THAT(told, ElementsAre("Starting…", "Destination info", "Engine status", "Machine directory",
                                  "Backup list", "Latest backup", "Compare last two backups (depth 3)",
                                  "Compare latest against live source (depth 1)", "Backup manifest"));
    EXPECT_EQ(model->lastDump()->directory, dump);
    EXPECT_EQ(model->lastDump()->summary(), "7 of 8 probes succeeded");
    EXPECT_THAT(workspace.requests, ElementsAre("reveal " + dump.string()));
    EXPECT_FALSE(model->lastError());

    fs::remove_all(desktop);
    machine.folder().write("Desktop", "a file");
    capture();
    EXPECT_THAT(model->lastError().value(), EndsWith("Not a directory"));
    EXPECT_EQ(model->diagnosticsError(), model->lastError());
    EXPECT_THAT(model->lastDump()->steps, SizeIs(8));
    EXPECT_THAT(workspace.requests, SizeIs(1));
}

TEST_F(LongJobs, cancelACaptureAtOnceAndSayNothing) {
    capture();
    machine.hold("latestbackup");
    model->captureDiagnostics();
    waitUntil([this] { return model->diagnosticsProgress() == "Latest backup"; });
    machine.timer->fire();
    EXPECT_EQ(model->diagnosticsElapsed(), "0:01");

    QSignalSpy changes(model.get(), &AppModel::diagnosticsChanged);
    model->cancelDiagnostics();

    EXPECT_FALSE(model->diagnosticsProgress());
    EXPECT_EQ(changes.size(), 1);
    EXPECT_FALSE(machine.timer->remaining);
    untilNoChildIsLeft();
    EXPECT_FALSE(model->lastError());
    EXPECT_EQ(model->lastDump()->summary(), "5 of 7 probes succeeded");
    EXPECT_THAT(workspace.requests, SizeIs(1));
}

TEST_F(LongJobs, startAgainInPlaceOfTheOneBefore) {
    machine.hold("status");
    model->captureDiagnostics();
    waitUntil([this] { return model->diagnosticsProgress() == "Engine status"; });

    model->captureDiagnostics();
    EXPECT_EQ(model->diagnosticsProgress(), "Starting…");
    machine.setStatus("Running = 0;");
    waitUntil([this] { return !model->diagnosticsProgress(); });

    untilNoChildIsLeft();
    EXPECT_THAT(workspace.requests, SizeIs(1));
}

TEST_F(LongJobs, endWithTheModel) {
    machine.setBackups(2);
    machine.hold("status");
    machine.hold("compare");
    machine.hold("listbackups");
    model->captureDiagnostics();
    model->runBenchmark(std::nullopt);
    waitUntil([this] {
        return model->diagnosticsProgress() == "Engine status" && test::ProcessResources::now().children == 2;
    });

    model.reset();

    untilNoChildIsLeft();
    EXPECT_FALSE(fs::exists(dump / "manifest.txt"));
}

TEST_F(LongJobs, measureComparisonsAndSaveTheReport) {
    const auto roots = machine.setBackups(14);
    machine.setAdded(roots.back(), {"a"});
    std::vector<std::string> told;
    QObject::connect(model.get(), &AppModel::benchmarkChanged, [&] {
        if (model->benchmarkProgress() && (told.empty() || told.back() != *model->benchmarkProgress()))
            told.push_back(*model->benchmarkProgress());
    });

    benchmark();

    EXPECT_THAT(told,
                ElementsAre("Listing backups…", "Timing tmutil default (-@gmstu) over 3 pairs…",
                            "Timing size + mtime (-st) over 3 pairs…", "Timing size only (-s) over 3 pairs…",
                            "Timing concurrency 4 over 2 pairs…", "Timing concurrency 1 over 2 pairs…"));
    const auto& results = model->benchmarkResults();
    ASSERT_THAT(results, SizeIs(5));
    EXPECT_EQ(results[0].changeCount, 3);
    EXPECT_THAT(results[4].arguments, ElementsAre("-X", "-st", "-D", "2"));
    EXPECT_TRUE(model->isBenchmarkSaved());
    EXPECT_EQ(readFile(dump / "benchmark.txt").view(), CompareBenchmark::report(results));

    fs::remove_all(desktop);
    machine.folder().write("Desktop", "a file");
    benchmark();
    EXPECT_FALSE(model->isBenchmarkSaved());
    EXPECT_FALSE(model->lastError());
}

TEST_F(LongJobs, keepTheResultsWhenANewBenchmarkComesToNothing) {
    machine.setBackups(4);
    benchmark();
    const auto results = model->benchmarkResults();
    EXPECT_EQ(results[0].error, "All 1 comparisons failed."); // without output

    machine.hold("compare");
    model->runBenchmark(2);
    waitUntil([this] { return model->benchmarkProgress() != "Listing backups…"; });
    model->cancelBenchmark();
    EXPECT_FALSE(model->benchmarkProgress());
    untilNoChildIsLeft();
    EXPECT_FALSE(model->lastError());
    EXPECT_EQ(model->benchmarkResults(), results);

    machine.fail("listbackups", "denied");
    benchmark();
    EXPECT_EQ(model->lastError(), "Need at least two backups to benchmark.");
    EXPECT_EQ(model->benchmarkError(), model->lastError());
    EXPECT_EQ(model->benchmarkResults(), results);
}

} // namespace
} // namespace tallyglass
