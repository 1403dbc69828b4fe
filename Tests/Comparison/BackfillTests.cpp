// The comparisons of all neighbouring backups ahead of need, with a fake tmutil and with real children.

#include "TallyglassKit/Comparison/AdjacentPairs.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Platform/Error.h"
#include "Tests/Support/ProcessResources.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <thread>

namespace tallyglass {
namespace {

using test::ResourceGuard;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Progress = DiffEngine::BackfillProgress;
using State = AdjacentPair::State;

const CompareOptions options = CompareOptions::fast(3);

std::string nameOf(std::int64_t backup) {
    return fmt::format("2026-01-01-{:06}.backup", backup);
}
std::string rootOf(std::int64_t backup) {
    return "/V/" + nameOf(backup);
}
std::string idOf(std::int64_t older) {
    return Comparison::makeID(rootOf(older), rootOf(older + 1), options.cacheKey());
}

/// A cache, and a tmutil that lists `backupCount` backups and finds `rowCount` changes between any two.
class BackfillTest : public testing::Test {
protected:
    [[nodiscard]] std::int64_t total() const { return backupCount - 1; }
    [[nodiscard]] std::vector<std::string> roots() const {
        std::vector<std::string> all;
        for (std::int64_t backup = 0; backup < backupCount; ++backup)
            all.push_back(rootOf(backup));
        return all;
    }
    std::vector<Comparison> backfill(std::int64_t concurrency, const std::stop_token& stop = {}) {
        compared.clear();
        events.clear();
        return DiffEngine(runner, store)
            .backfillAdjacentPairs(
                concurrency, options,
                [this](const Progress& event) {
                    {
                        const std::lock_guard lock(mutex);
                        events.push_back(event);
                    }
                    if (onEvent)
                        onEvent(event);
                },
                stop);
    }
    std::vector<State> states(std::optional<Date> runningSince = {}) {
        std::vector<State> result;
        for (const auto& pair : adjacentPairs(store, roots(), options, runningSince)) {
            EXPECT_EQ(pair.failure.has_value(), pair.state == State::failed);
            result.push_back(pair.state);
        }
        return result;
    }
    void emptyCache() {
        for (const auto& comparison : store.allComparisons())
            store.deleteComparison(comparison.id);
    }

    /// The comparisons in the cache are these, whole, or have ended otherwise.
    void expectOnlyWholeResults(const std::vector<Comparison>& finished) {
        for (const auto& row : store.allComparisons()) {
            EXPECT_EQ(store.changeCount(row.id), row.addedCount);
            EXPECT_TRUE(row.completedAt);
            EXPECT_TRUE(row.isPartial || row.addedCount == rowCount);
            EXPECT_EQ(!row.isPartial, std::ranges::count(finished, row) == 1);
        }
    }

    /// The numbers of the events agree, in whichever order they came.
    void expectConsistentEvents(std::int64_t skipped, std::int64_t failed) {
        ASSERT_THAT(events, SizeIs(total() + 1));
        std::ranges::sort(events, {}, &Progress::completed);
        std::set<std::string> labels;
        for (std::int64_t number = 0; number <= total(); ++number) {
            const auto& event = events[number];
            EXPECT_EQ(event.completed, number);
            EXPECT_EQ(event.total, total());
            EXPECT_LE(event.skipped + event.failed, event.completed);
            labels.insert(event.currentLabel);
        }
        EXPECT_EQ(labels.size(), events.size());
        EXPECT_EQ(events.back().skipped, skipped);
        EXPECT_EQ(events.back().failed, failed);
    }

    TMUtilResult run(const TMUtilRunner::Arguments& arguments, const std::stop_token& stop) {
        if (arguments.front() == "listbackups")
            return listing();
        const std::string& newer = arguments.back();
        {
            const std::lock_guard lock(mutex);
            compared.push_back(newer);
        }
        if (onCompare)
            onCompare();
        if (stop.stop_requested())
            throw Cancelled();
        if (failing.contains(newer))
            return {.exitCode = 70, .stdout = {}, .stderr = "no such backup"};
        std::string text = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
        for (int number = 0; number < rowCount; ++number)
            text += fmt::format("<dict><key>AddedItem</key><dict><key>Path</key><string>{}/Data/{}</string>"
                                "</dict></dict>",
                                newer, number);
        return {.exitCode = 0, .stdout = text + "</array></dict></plist>", .stderr = {}};
    }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
    BackupStore store{file};
    TMUtilRunner runner{
        [this](const auto& arguments, auto, const auto&, const auto& stop) { return run(arguments, stop); }};
    std::int64_t backupCount = 4;
    int rowCount = 3;
    std::set<std::string> failing; ///< the newer backups of the pairs
    std::function<TMUtilResult()> listing = [this] {
        return TMUtilResult{
            .exitCode = 0, .stdout = fmt::format("{}\n", fmt::join(roots(), "\n")), .stderr = {}};
    };
    std::function<void()> onCompare;
    std::function<void(const Progress&)> onEvent;

    std::mutex mutex; // of the two lists
    std::vector<std::string> compared;
    std::vector<Progress> events;
};

TEST_F(BackfillTest, comparesEachBackupWithTheOneBeforeItTheNewestFirst) {
    const auto finished = backfill(1);

    EXPECT_THAT(compared, ElementsAre(rootOf(3), rootOf(2), rootOf(1)));
    EXPECT_THAT(events,
                ElementsAre(Progress{0, 3, 0, 0, "Comparing 3 backups…"}, Progress{1, 3, 0, 0, nameOf(3)},
                            Progress{2, 3, 0, 0, nameOf(2)}, Progress{3, 3, 0, 0, nameOf(1)}));
    ASSERT_THAT(finished, SizeIs(3));
    for (std::int64_t index = 0; index < 3; ++index)
        EXPECT_EQ(finished[index].id, idOf(2 - index));
    expectOnlyWholeResults(finished);
}

TEST_F(BackfillTest, runsOnlyWhatIsMissing) {
    failing = {rootOf(2)};
    EXPECT_THAT(backfill(2), SizeIs(2));
    EXPECT_THAT(compared, SizeIs(3));
    EXPECT_EQ(store.comparison(idOf(1))->errorMessage, "no such backup");

    failing.clear();
    const auto finished = backfill(2);
    EXPECT_THAT(finished, SizeIs(3));
    EXPECT_THAT(compared, ElementsAre(rootOf(2)));
    expectConsistentEvents(2, 0);

    EXPECT_THAT(backfill(2), testing::UnorderedElementsAreArray(finished));
    EXPECT_THAT(compared, IsEmpty());
    expectConsistentEvents(3, 0);
}

TEST_F(BackfillTest, isSilentWithoutTwoBackups) {
    for (backupCount = 0; backupCount < 2; ++backupCount)
        EXPECT_THAT(backfill(4), IsEmpty());
    listing = [] { return TMUtilResult{.exitCode = 80, .stdout = {}, .stderr = "Full Disk Access"}; };
    EXPECT_THAT(backfill(4), IsEmpty());
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BackfillTest, runsAsManyAtOnceAsItMay) {
    const ResourceGuard guard;
    backupCount = 9;
    for (const auto& [concurrency, expected] :
         {std::pair(-1, 1), std::pair(0, 1), std::pair(4, 4), std::pair(8, 8), std::pair(1000, 8)}) {
        std::atomic<int> active = 0;
        std::atomic<bool> areTooMany = false;
        std::barrier allAreHere(expected); // never passed with fewer
        onCompare = [&, most = expected] {
            if (++active > most)
                areTooMany = true;
            allAreHere.arrive_and_wait();
            --active;
            allAreHere.arrive_and_wait();
        };
        EXPECT_THAT(backfill(concurrency), SizeIs(8));
        EXPECT_FALSE(areTooMany) << concurrency;
        emptyCache();
    }
}

TEST_F(BackfillTest, countsEveryPairOnceHoweverItEnds) {
    backupCount = 41;
    for (std::int64_t older = 0; older < total(); older += 4)
        (void)DiffEngine(runner, store).compare(rootOf(older), rootOf(older + 1), options, false);
    for (std::int64_t newer = 2; newer < backupCount; newer += 4)
        failing.insert(rootOf(newer));

    const auto finished = backfill(4);

    EXPECT_THAT(finished, SizeIs(30));
    EXPECT_THAT(compared, SizeIs(30));
    expectConsistentEvents(10, 10);
    expectOnlyWholeResults(finished);
}

TEST_F(BackfillTest, canBeStoppedAtEveryEvent) {
    const ResourceGuard guard;
    for (const std::int64_t concurrency : {1, 3})
        for (std::int64_t moment = 0; moment <= total(); ++moment) {
            emptyCache();
            std::stop_source stop;
            onEvent = [&](const Progress& event) {
                if (event.completed >= moment)
                    stop.request_stop();
            };
            const auto finished = backfill(concurrency, stop.get_token());
            EXPECT_GE(std::ssize(finished), moment);
            expectOnlyWholeResults(finished);
            if (moment == 0) {
                EXPECT_EQ(std::ssize(events), 1 + concurrency) << "those that were to run first are counted";
            }

            onEvent = nullptr;
            EXPECT_THAT(backfill(concurrency), SizeIs(total()));
            EXPECT_EQ(std::ssize(compared), total() - std::ssize(finished)) << "runs nothing again";
        }
}

TEST_F(BackfillTest, canBeStoppedBeforeAndWhileItListsTheBackups) {
    std::stop_source stop;
    listing = [&]() -> TMUtilResult {
        stop.request_stop();
        throw Cancelled();
    };
    for (int run = 0; run < 2; ++run)
        EXPECT_THAT(backfill(4, stop.get_token()), IsEmpty());
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BackfillTest, canBeStoppedWhileItStores) {
    const ResourceGuard guard;
    rowCount = 20'000;
    BackupStore other(file);
    std::stop_source stop;
    std::jthread stopper([&] {
        while (other.changeCount(idOf(2)) == 0)
            std::this_thread::yield();
        stop.request_stop();
    });
    const auto finished = backfill(2, stop.get_token());
    stopper.join();

    expectOnlyWholeResults(finished);
    EXPECT_THAT(states(), testing::Not(testing::Contains(State::failed)));
}

TEST_F(BackfillTest, beginsNoPairWhileAnotherComparisonOfItsEngineRuns) {
    rowCount = 5000;
    const DiffEngine engine(runner, store);
    std::atomic<bool> isFilling = false;
    std::jthread filling;
    std::once_flag once;
    onCompare = [&] { // first by the other comparison
        std::call_once(once, [&] {
            filling = std::jthread([&] {
                const auto start = [&](const Progress&) {
                    isFilling = true;
                    isFilling.notify_one();
                };
                EXPECT_THAT(engine.backfillAdjacentPairs(2, options, start), SizeIs(total()));
            });
            isFilling.wait(false);
        });
    };
    (void)engine.compare(rootOf(0), "/V/other", options, true, [&](const DiffEngine::Progress&) {
        const std::lock_guard lock(mutex);
        EXPECT_THAT(compared, SizeIs(testing::Le(1)));
    });
    filling.join();
    EXPECT_THAT(compared, SizeIs(1 + total()));
}

TEST_F(BackfillTest, failsEachPairWhileAnotherProcessKeepsTheCacheLocked) {
    BackupStore impatient(TallyglassDatabase::makeQueue(file, std::chrono::milliseconds(0)));
    const auto occupant = TallyglassDatabase::makeQueue(file);
    occupant->execute("BEGIN EXCLUSIVE");
    std::atomic<int> failures = 0;
    const auto count = [&](const Progress& event) { failures += event.completed > 0 && event.failed > 0; };
    EXPECT_THAT(DiffEngine(runner, impatient).backfillAdjacentPairs(2, options, count), IsEmpty());
    EXPECT_EQ(failures, total());
    EXPECT_THAT(compared, IsEmpty());

    std::jthread release;
    onEvent = [&](const Progress& event) { // the store waits for the lock
        if (event.completed == 0)
            release = std::jthread([&] { occupant->execute("ROLLBACK"); });
    };
    EXPECT_THAT(backfill(2), SizeIs(total()));
}

TEST_F(BackfillTest, leavesNoChildBehindWhenItIsStopped) {
    const ResourceGuard guard;
    const auto script =
        folder.write("tmutil", fmt::format("#!/bin/sh\n"
                                           "if [ $1 = listbackups ]; then printf '{}\\n'; exit; fi\n"
                                           ": > '{}/started '$$\n"
                                           "exec '{}' --pause\n",
                                           fmt::join(roots(), "\\n"), folder.path().string(),
                                           test::program("test-child")));
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    const auto started = [this] {
        return std::ranges::count_if(
            std::filesystem::directory_iterator(folder.path()),
            [](const auto& entry) { return entry.path().filename().string().starts_with("started"); });
    };
    std::stop_source stop;
    std::jthread stopper([&] {
        while (started() < 2)
            std::this_thread::yield();
        stop.request_stop();
    });

    EXPECT_THAT(
        DiffEngine(TMUtilRunner(script), store).backfillAdjacentPairs(2, options, {}, stop.get_token()),
        IsEmpty());

    stopper.join();
    EXPECT_EQ(started(), 2);
    EXPECT_THAT(store.allComparisons(),
                AllOf(SizeIs(2), Each(Field(&Comparison::errorMessage, "Cancelled"))));
}

TEST_F(BackfillTest, tellsHowFarEachPairIs) {
    backupCount = 8;
    const Date now = dateSince1970(1'800'000'000.0004); // between two that can be stored
    const auto begin = [&](std::int64_t older, double seconds, const CompareOptions& with = options) {
        return store
            .beginComparison(Comparison(rootOf(older), rootOf(older + 1), {}, {}, 3, with.cacheKey(),
                                        now + std::chrono::duration<double>(seconds)))
            .id;
    };
    store.finishComparison(begin(0, 0, CompareOptions::thorough()), std::nullopt);
    store.finishComparison(begin(1, 0), std::nullopt);
    store.finishComparison(begin(2, 0), "no such backup");
    store.finishComparison(begin(3, 0), "Cancelled");
    begin(4, -1);
    begin(5, 0);
    begin(6, 1);

    EXPECT_THAT(states(now), ElementsAre(State::missing, State::ready, State::failed, State::missing,
                                         State::missing, State::running, State::running));
    EXPECT_THAT(states(), ElementsAre(State::missing, State::ready, State::failed, State::missing,
                                      State::missing, State::missing, State::missing));
    EXPECT_EQ(adjacentPairs(store, roots(), options)[2],
              (AdjacentPair{rootOf(2), rootOf(3), idOf(2), State::failed, "no such backup"}));
    EXPECT_THAT(adjacentPairs(store, {rootOf(1)}, options), IsEmpty());
    EXPECT_THAT(adjacentPairs(store, {}, options), IsEmpty());
}

} // namespace
} // namespace tallyglass
