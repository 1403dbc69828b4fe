#include "TallyglassKit/Access/TMUtilError.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "Tests/Comparison/FaultyDisk.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace tallyglass {
namespace {

using test::FaultyDisk;
using test::TemporaryFolder;
using testing::ElementsAre;
using testing::StartsWith;

const std::string from = "/V/2026-01-01-100000.backup";
const std::string to = "/V/2026-01-02-100000.backup";
constexpr std::int64_t allRows = 1'000'000;

std::string outputOf(const std::vector<std::string>& addedPaths) {
    std::string text = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
    for (const auto& path : addedPaths)
        text += fmt::format("<dict><key>AddedItem</key><dict><key>Path</key><string>{}</string>"
                            "<key>Size</key><integer>10</integer></dict></dict>",
                            path);
    return text + "</array></dict></plist>";
}

std::vector<std::string> numberedPaths(int count) {
    std::vector<std::string> paths;
    for (int number = 0; number < count; ++number)
        paths.push_back(fmt::format("{}/Data/file {:04}", to, number));
    return paths;
}

/// A temporary store and a fake tmutil.
class DiffEngineTest : public testing::Test {
protected:
    DiffEngine engine(std::size_t batchSize = 500) {
        return DiffEngine(TMUtilRunner([this](const auto& arguments, auto, const auto& onBytes, auto stop) {
                              ++runs;
                              lastArguments = arguments;
                              return answer(onBytes, stop);
                          }),
                          store, batchSize, [this] { return now; });
    }

    void answerWith(const std::string& output, std::int32_t exitCode = 0, const std::string& errors = "") {
        answer = [=](const TMUtilRunner::OnBytes& onBytes, const std::stop_token&) {
            if (onBytes && !output.empty())
                onBytes(static_cast<std::int64_t>(output.size()));
            return TMUtilResult{.exitCode = exitCode, .stdout = output, .stderr = errors};
        };
    }

    /// Records each event as a word.
    DiffEngine::OnProgress recorder() {
        struct Word {
            std::string operator()(const DiffEngine::Running& event) const {
                return event.bytesReceived > 0 ? "received" : "running";
            }
            std::string operator()(const DiffEngine::Decoding&) const { return "decoding"; }
            std::string operator()(const DiffEngine::Storing& event) const {
                return fmt::format("{} of {}", event.done, event.total);
            }
            std::string operator()(const Comparison&) const { return "finished"; }
        };
        return [this](const DiffEngine::Progress& event) { events.push_back(std::visit(Word{}, event)); };
    }

    std::vector<ChangeRecord> rows(const Comparison& comparison) {
        return store.changes(comparison.id, std::nullopt, std::nullopt, allRows, 0);
    }

    /// The one comparison in the store.
    Comparison stored() {
        const auto comparisons = store.allComparisons();
        EXPECT_EQ(comparisons.size(), 1U);
        return comparisons.empty() ? Comparison() : comparisons.front();
    }

    TemporaryFolder folder;
    Date now = dateSince1970(1'800'000'000);
    BackupStore store{folder / "cache.sqlite", [this] { return now; }};
    CompareOptions options = CompareOptions::fast(3);
    std::function<TMUtilResult(const TMUtilRunner::OnBytes&, const std::stop_token&)> answer;
    std::atomic<int> runs = 0;
    std::vector<std::string> lastArguments;
    std::vector<std::string> events;
};

TEST_F(DiffEngineTest, storesAComparisonAndServesItFromTheCacheTheNextTime) {
    answerWith(outputOf({to + "/Data/a", to + "/Data/b"}));

    const auto first = engine().compare(from, to, options, true, recorder());
    const auto firstEvents = std::exchange(events, {});
    const auto second = engine().compare(from, to, options, true, recorder());

    EXPECT_THAT(firstEvents, ElementsAre("running", "received", "decoding", "2 of 2", "finished"));
    EXPECT_THAT(lastArguments, ElementsAre("compare", "-X", "-st", "-D", "3", from, to));
    EXPECT_EQ(first.addedCount, 2);
    EXPECT_EQ(first.bytesAdded, 20);
    EXPECT_FALSE(first.isPartial);
    EXPECT_EQ(first.startedAt, now);
    EXPECT_TRUE(first.fromDate && first.toDate && *first.fromDate < *first.toDate);
    EXPECT_EQ(rows(first).at(1).path, "/b");
    EXPECT_EQ(second, first);
    EXPECT_THAT(events, ElementsAre("finished"));
    EXPECT_EQ(runs, 1);
}

TEST_F(DiffEngineTest, comparesAfreshAndReplacesTheRowsWhenTheCacheIsNotWanted) {
    answerWith(outputOf({to + "/Data/a"}));
    const auto first = engine().compare(from, to, options, true);
    now += std::chrono::seconds(60);
    answerWith(outputOf({to + "/Data/b", to + "/Data/c"}));

    const auto second = engine().compare(from, to, options, false);

    EXPECT_EQ(second.id, first.id);
    EXPECT_EQ(second.startedAt, now);
    EXPECT_EQ(rows(second).size(), 2U);
    EXPECT_EQ(rows(second).front().path, "/b");
}

TEST_F(DiffEngineTest, storesInBatchesAndFinishesWithoutAnyWhenNothingChanged) {
    answerWith(outputOf(numberedPaths(1000)));
    (void)engine().compare(from, to, options, true, recorder());
    EXPECT_THAT(events,
                ElementsAre("running", "received", "decoding", "500 of 1000", "1000 of 1000", "finished"));

    events.clear();
    answerWith("<plist><dict/></plist>");
    const auto empty = engine().compare(from, to, CompareOptions::fast(4), true, recorder());
    EXPECT_THAT(events, ElementsAre("running", "received", "decoding", "finished"));
    EXPECT_EQ(empty.totalChanges(), 0);
    EXPECT_TRUE(store.completedComparison(from, to, CompareOptions::fast(4)));
}

TEST_F(DiffEngineTest, keepsWholeBatchesWhenItIsCancelledBetweenThem) {
    answerWith(outputOf(numberedPaths(1000)));
    std::stop_source stop;
    const auto stopAtFirstBatch = [&](const DiffEngine::Progress& event) {
        if (std::holds_alternative<DiffEngine::Storing>(event))
            stop.request_stop();
    };

    EXPECT_THROW(engine(100).compare(from, to, options, true, stopAtFirstBatch, stop.get_token()), Cancelled);

    EXPECT_EQ(stored().errorMessage, "Cancelled");
    EXPECT_TRUE(stored().isPartial);
    EXPECT_EQ(stored().completedAt, now);
    EXPECT_EQ(stored().addedCount, 100);
    EXPECT_EQ(rows(stored()).size(), 100U);
    EXPECT_EQ(engine().compare(from, to, options, true).addedCount, 1000);
    EXPECT_EQ(runs, 2);
}

TEST_F(DiffEngineTest, recordsACancellationOfTheToolAndOneJustAfterIt) {
    answer = [](const auto&, const auto&) -> TMUtilResult { throw Cancelled(); };
    EXPECT_THROW(engine().compare(from, to, options, true, recorder()), Cancelled);
    EXPECT_EQ(stored().errorMessage, "Cancelled");
    EXPECT_THAT(events, ElementsAre("running"));

    std::stop_source stop;
    answer = [&](const auto&, const auto&) {
        stop.request_stop();
        return TMUtilResult{.exitCode = 0, .stdout = outputOf(numberedPaths(1)), .stderr = {}};
    };
    EXPECT_THROW(engine().compare(from, to, options, true, {}, stop.get_token()), Cancelled);
    EXPECT_TRUE(rows(stored()).empty());
}

TEST_F(DiffEngineTest, endsWithoutRowsWhenItIsCancelledBeforeThem) {
    answerWith(outputOf(numberedPaths(3)));
    std::stop_source stop;
    const auto stopBeforeTheFirst = [&](const DiffEngine::Progress& event) {
        if (std::holds_alternative<DiffEngine::Decoding>(event))
            stop.request_stop();
    };
    EXPECT_THROW(engine().compare(from, to, options, true, stopBeforeTheFirst, stop.get_token()), Cancelled);
    EXPECT_EQ(stored().errorMessage, "Cancelled");
    EXPECT_EQ(stored().completedAt, now);
    EXPECT_TRUE(rows(stored()).empty());

    const auto result = engine().compare(from, to, options, true);
    runs = 0;
    EXPECT_THROW(engine().compare(from, to, options, false, {}, stop.get_token()), Cancelled);
    EXPECT_EQ(runs, 0);
    EXPECT_EQ(stored(), result) << "stopped from the start, it leaves what is there";
}

TEST_F(DiffEngineTest, tellsOfADiskThatFillsAmongTheRowsAndKeepsWholeBatches) {
    answerWith(outputOf(numberedPaths(1000)));
    std::optional<FaultyDisk> disk;
    const auto fillDisk = [&](const DiffEngine::Progress& event) {
        if (const auto* storing = std::get_if<DiffEngine::Storing>(&event); storing && storing->done == 200)
            disk.emplace(FaultyDisk::Fault::full, 3);
        recorder()(event);
    };
    try {
        (void)engine(100).compare(from, to, options, true, fillDisk);
        FAIL() << "compared";
    } catch (const DatabaseError& failure) {
        EXPECT_EQ(failure.errorDescription(), "database or disk is full");
    }
    disk.reset();

    EXPECT_THAT(events, ElementsAre("running", "received", "decoding", "100 of 1000", "200 of 1000"));
    EXPECT_TRUE(stored().isPartial);
    EXPECT_EQ(stored().addedCount, 200);
    EXPECT_EQ(rows(stored()).size(), 200U);
    EXPECT_EQ(engine().compare(from, to, options, true).addedCount, 1000);
}

TEST_F(DiffEngineTest, recordsWhyTheToolFailedOrCouldNotBeUnderstood) {
    answerWith("", 70, "  no such backup\n");
    EXPECT_THROW(engine().compare(from, to, options, true, recorder()), TMUtilError);
    EXPECT_EQ(stored().errorMessage, "no such backup");
    EXPECT_TRUE(stored().completedAt);

    answerWith("<plist><array/></plist>");
    EXPECT_THROW(engine().compare(from, to, options, true, recorder()), TMUtilError);
    EXPECT_THAT(stored().errorMessage.value_or(""), StartsWith("Could not read tmutil output: "));
    EXPECT_TRUE(rows(stored()).empty());
    EXPECT_FALSE(store.completedComparison(from, to, options));
    EXPECT_EQ(std::ranges::count(events, "finished"), 0);
}

TEST_F(DiffEngineTest, comparesOneFolderUnderItsFullLogicalPath) {
    answerWith(outputOf({to + "/Data/Users/anna/notes.txt"}));

    const auto folderOnly = engine().compareFolder(from, to, "Data", "/Users", options, true);
    const auto arguments = lastArguments;
    const auto wholeVolume = engine().compareFolder(from, to, "Data", "", options, true);

    EXPECT_EQ(arguments.back(), to + "/Data/Users");
    EXPECT_EQ(folderOnly.fromPath, from + "/Data/Users");
    EXPECT_TRUE(folderOnly.toDate);
    EXPECT_EQ(folderOnly.toDate, wholeVolume.toDate);
    EXPECT_EQ(rows(folderOnly).front().path, "/Users/anna/notes.txt");
    EXPECT_EQ(wholeVolume.toPath, to + "/Data");
}

TEST_F(DiffEngineTest, returnsWhatItBeganWithWhenTheRowIsDeletedMeanwhile) {
    answerWith(outputOf(numberedPaths(3)));
    const auto deleteRow = [&](const DiffEngine::Progress& event) {
        if (std::holds_alternative<DiffEngine::Storing>(event))
            store.deleteComparison(stored().id);
    };

    const auto comparison = engine().compare(from, to, options, true, deleteRow);

    EXPECT_EQ(comparison.fromPath, from);
    EXPECT_TRUE(comparison.isPartial);
    EXPECT_TRUE(store.allComparisons().empty());
}

TEST_F(DiffEngineTest, listsBackupsWithTheirDatesOrSaysWhyNot) {
    answerWith(from + "\n/Volumes/disk/Backups.backupdb/host/2011-08-26-104514\n");
    const auto backups = engine().availableBackupsThrowing();
    ASSERT_EQ(backups.size(), 2U);
    EXPECT_EQ(backups[0].path, from);
    EXPECT_TRUE(backups[0].date);
    EXPECT_FALSE(backups[1].date);

    answerWith("", 80, "tmutil: listbackups requires Full Disk Access privileges.");
    EXPECT_TRUE(engine().availableBackups().empty());
    EXPECT_THROW((void)engine().availableBackupsThrowing(), TMUtilError);
}

TEST_F(DiffEngineTest, runsSeveralComparisonsAtOnce) {
    const auto output = outputOf(numberedPaths(300));
    const TMUtilRunner runner([&](const auto&, auto, const auto&, auto) {
        return TMUtilResult{.exitCode = 0, .stdout = output, .stderr = {}};
    });
    const DiffEngine shared(runner, store, 50);
    std::vector<std::jthread> threads;
    for (int depth = 0; depth < 4; ++depth)
        threads.emplace_back(
            [&, depth] { (void)shared.compare(from, to, CompareOptions::fast(depth), true); });
    threads.clear();

    for (int depth = 0; depth < 4; ++depth)
        EXPECT_EQ(store.completedComparison(from, to, CompareOptions::fast(depth))
                      .value_or(Comparison())
                      .addedCount,
                  300);
}

} // namespace
} // namespace tallyglass
