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
using test::TemporaryFolder;
using testing::AllOf;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;
using Progress = DiffEngine::BackfillProgress;

const CompareOptions options = CompareOptions::fast(3);

std::string nameOf(std::int64_t backup) {
    return fmt::format("2026-01-01-{:06}.backup", backup);
}
std::string rootOf(std::int64_t backup) {
    return "/V/" + nameOf(backup);
}

/// A cache, and a tmutil that lists `backupCount` backups and finds `rowCount` changes between any two.
class BackfillTest : public testing::Test {
protected:
    struct Pair {
        std::string from;
        std::string to;
        friend bool operator==(const Pair&, const Pair&) = default;
    };

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

    /// A comparison is finished with all of its rows, or isn't finished.
    void expectNothingHalf(const std::vector<Comparison>& finished) {
        std::int64_t ready = 0;
        for (const auto& row : store.allComparisons()) {
            EXPECT_EQ(store.changeCount(row.id), row.addedCount);
            EXPECT_TRUE(row.completedAt);
            EXPECT_EQ(row.errorMessage.has_value(), row.isPartial);
            EXPECT_TRUE(row.isPartial || row.addedCount == rowCount);
            ready += !row.isPartial;
        }
        EXPECT_EQ(ready, std::ssize(finished));
        for (const auto& comparison : finished)
            EXPECT_EQ(store.comparison(comparison.id), comparison);
    }

    /// The numbers of all events, in whichever order they came.
    void expectConsistentEvents(std::int64_t skipped, std::int64_t failed) {
        ASSERT_THAT(events, SizeIs(total() + 1));
        EXPECT_EQ(events.front(), (Progress{.total = total(),
                                            .currentLabel = fmt::format("Comparing {} backups…", total())}));
        std::ranges::sort(events, {}, &Progress::completed);
        std::set<std::string> labels;
        for (std::int64_t number = 0; number <= total(); ++number) {
            const auto& event = events[number];
            EXPECT_EQ(event.completed, number);
            EXPECT_EQ(event.total, total());
            EXPECT_LE(event.skipped + event.failed, event.completed);
            const auto& previous = events[std::max<std::int64_t>(number - 1, 0)];
            EXPECT_GE(event.skipped, previous.skipped);
            EXPECT_GE(event.failed, previous.failed);
            labels.insert(event.currentLabel);
        }
        EXPECT_EQ(labels.size(), events.size());
        EXPECT_EQ(events.back().skipped, skipped);
        EXPECT_EQ(events.back().failed, failed);
    }

    TMUtilResult run(const TMUtilRunner::Arguments& arguments, const std::stop_token& stop) {
        if (arguments.front() == "listbackups")
            return listing(stop);
        const Pair pair{arguments[arguments.size() - 2], arguments.back()};
        {
            const std::lock_guard lock(mutex);
            compared.push_back(pair);
        }
        if (onCompare)
            onCompare(pair);
        if (stop.stop_requested())
            throw Cancelled();
        if (failing.contains(pair.to))
            return {.exitCode = 70, .stdout = {}, .stderr = "no such backup"};
        std::string text = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
        for (int number = 0; number < rowCount; ++number)
            text +=
                fmt::format("<dict><key>AddedItem</key><dict><key>Path</key><string>{}/Data/file {}</string>"
                            "<key>Size</key><integer>10</integer></dict></dict>",
                            pair.to, number);
        return {.exitCode = 0, .stdout = text + "</array></dict></plist>", .stderr = {}};
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
    BackupStore store{file};
    TMUtilRunner runner{
        [this](const auto& arguments, auto, const auto&, const auto& stop) { return run(arguments, stop); }};
    std::int64_t backupCount = 4;
    int rowCount = 3;
    std::set<std::string> failing; ///< the newer backups of the pairs
    std::function<TMUtilResult(const std::stop_token&)> listing = [this](const std::stop_token&) {
        return TMUtilResult{
            .exitCode = 0, .stdout = fmt::format("{}\n", fmt::join(roots(), "\n")), .stderr = {}};
    };
    std::function<void(const Pair&)> onCompare;
    std::function<void(const Progress&)> onEvent;

    std::mutex mutex; // of the two lists
    std::vector<Pair> compared;
    std::vector<Progress> events;
};

TEST_F(BackfillTest, comparesEachBackupWithTheOneBeforeItTheNewestFirst) {
    const auto finished = backfill(1);

    EXPECT_THAT(compared, ElementsAre(Pair{rootOf(2), rootOf(3)}, Pair{rootOf(1), rootOf(2)},
                                      Pair{rootOf(0), rootOf(1)}));
    EXPECT_THAT(events,
                ElementsAre(Progress{0, 3, 0, 0, "Comparing 3 backups…"}, Progress{1, 3, 0, 0, nameOf(3)},
                            Progress{2, 3, 0, 0, nameOf(2)}, Progress{3, 3, 0, 0, nameOf(1)}));
    EXPECT_THAT(finished, SizeIs(3));
    EXPECT_EQ(finished.front().toPath, rootOf(3));
    expectNothingHalf(finished);
}

TEST_F(BackfillTest, runsOnlyWhatIsMissing) {
    failing = {rootOf(2)};
    EXPECT_THAT(backfill(2), SizeIs(2));
    EXPECT_THAT(compared, SizeIs(3));
    expectConsistentEvents(0, 1);
    EXPECT_EQ(adjacentPairs(store, roots(), options)[1].failure, "no such backup");

    failing.clear();
    const auto finished = backfill(2);
    EXPECT_THAT(finished, SizeIs(3));
    EXPECT_THAT(compared, ElementsAre(Pair{rootOf(1), rootOf(2)}));
    expectConsistentEvents(2, 0);

    EXPECT_THAT(backfill(2), testing::UnorderedElementsAreArray(finished));
    EXPECT_THAT(compared, IsEmpty());
    expectConsistentEvents(3, 0);
}

TEST_F(BackfillTest, isSilentWithoutTwoBackups) {
    for (backupCount = 0; backupCount < 2; ++backupCount)
        EXPECT_THAT(backfill(4), IsEmpty());
    listing = [](const auto&) {
        return TMUtilResult{.exitCode = 80, .stdout = {}, .stderr = "requires Full Disk Access"};
    };
    EXPECT_THAT(backfill(4), IsEmpty());
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(BackfillTest, runsAsManyAtOnceAsItMay) {
    const ResourceGuard guard;
    backupCount = 13;
    struct Case {
        std::int64_t concurrency;
        std::ptrdiff_t expected;
    };
    for (const auto [concurrency, expected] :
         {Case{-1, 1}, Case{0, 1}, Case{1, 1}, Case{4, 4}, Case{12, 12}, Case{1000, 12}}) {
        std::atomic<std::int64_t> active = 0;
        std::atomic<std::int64_t> most = 0;
        std::barrier allAreHere(expected); // never passed with fewer
        onCompare = [&](const Pair&) {
            const auto now = ++active;
            for (auto seen = most.load(); seen < now && !most.compare_exchange_weak(seen, now);) {
            }
            allAreHere.arrive_and_wait();
            --active;
            allAreHere.arrive_and_wait();
        };
        EXPECT_THAT(backfill(concurrency), SizeIs(12));
        EXPECT_EQ(most, expected) << concurrency;
        for (const auto& comparison : store.allComparisons())
            store.deleteComparison(comparison.id);
    }
}

TEST_F(BackfillTest, countsEveryPairOnceHoweverItEnds) {
    backupCount = 41;
    const DiffEngine engine(runner, store);
    for (std::int64_t backup = 0; backup < total(); backup += 4)
        (void)engine.compare(rootOf(backup), rootOf(backup + 1), options, false);
    for (std::int64_t backup = 2; backup < backupCount; backup += 4)
        failing.insert(rootOf(backup));

    const auto finished = backfill(4);

    EXPECT_THAT(finished, SizeIs(30));
    expectConsistentEvents(10, 10);
    EXPECT_THAT(compared, SizeIs(30));
    expectNothingHalf(finished);
}

TEST_F(BackfillTest, canBeStoppedAtEveryEvent) {
    const ResourceGuard guard;
    for (const std::int64_t concurrency : {1, 3})
        for (std::int64_t moment = 0; moment <= total(); ++moment) {
            for (const auto& comparison : store.allComparisons())
                store.deleteComparison(comparison.id);
            std::stop_source stop;
            onEvent = [&](const Progress& event) {
                if (event.completed >= moment)
                    stop.request_stop();
            };
            const auto finished = backfill(concurrency, stop.get_token());
            expectNothingHalf(finished);
            EXPECT_GE(std::ssize(finished), moment);
            EXPECT_EQ(std::ranges::max(events, {}, &Progress::completed).completed, std::ssize(events) - 1);
            if (moment == 0) {
                EXPECT_EQ(std::ssize(events), 1 + concurrency) << "those that were to run first are counted";
                EXPECT_THAT(store.allComparisons(), IsEmpty());
            }
            onEvent = nullptr;
            EXPECT_THAT(backfill(concurrency), SizeIs(total()));
            EXPECT_EQ(std::ssize(compared), total() - std::ssize(finished)) << "runs nothing again";
        }
}

TEST_F(BackfillTest, canBeStoppedBeforeAndWhileItListsTheBackups) {
    std::stop_source stop;
    listing = [&](const std::stop_token& token) -> TMUtilResult {
        stop.request_stop();
        EXPECT_TRUE(token.stop_requested());
        throw Cancelled();
    };
    for (int run = 0; run < 2; ++run) {
        EXPECT_THAT(backfill(4, stop.get_token()), IsEmpty());
        EXPECT_THAT(events, IsEmpty());
        EXPECT_THAT(compared, IsEmpty());
    }
}

TEST_F(BackfillTest, canBeStoppedWhileItStores) {
    const ResourceGuard guard;
    rowCount = 20'000;
    BackupStore other(file);
    std::stop_source stop;
    std::jthread stopper;
    onCompare = [&](const Pair& pair) {
        if (pair.to == rootOf(3))
            stopper = std::jthread([&, pair] {
                while (other.changeCount(Comparison::makeID(pair.from, pair.to, options.cacheKey())) == 0)
                    std::this_thread::yield();
                stop.request_stop();
            });
    };
    const auto finished = backfill(2, stop.get_token());
    stopper.join();

    expectNothingHalf(finished);
    EXPECT_THAT(
        adjacentPairs(store, roots(), options),
        Each(Field(&AdjacentPair::state, AnyOf(AdjacentPair::State::missing, AdjacentPair::State::ready))));
}

TEST_F(BackfillTest, failsEachPairWhileAnotherProcessKeepsTheCacheLocked) {
    BackupStore impatient(TallyglassDatabase::makeQueue(file, std::chrono::milliseconds(0)));
    const auto occupant = TallyglassDatabase::makeQueue(file);
    occupant->execute("BEGIN EXCLUSIVE");
    std::int64_t failed = 0;
    EXPECT_THAT(DiffEngine(runner, impatient)
                    .backfillAdjacentPairs(2, options,
                                           [&](const Progress& event) {
                                               const std::lock_guard lock(mutex);
                                               failed = std::max(failed, event.failed);
                                           }),
                IsEmpty());
    EXPECT_EQ(failed, total());
    EXPECT_THAT(compared, IsEmpty());

    std::jthread release;
    onEvent = [&](const Progress& event) { // the store waits for the lock
        if (event.completed == 0)
            release = std::jthread([&] { occupant->execute("ROLLBACK"); });
    };
    EXPECT_THAT(backfill(2), SizeIs(total()));
    expectConsistentEvents(0, 0);
}

TEST_F(BackfillTest, leavesNoChildBehindWhenItIsStopped) {
    const ResourceGuard guard;
    const auto script = folder.write("tmutil", fmt::format(R"(#!/bin/sh
if [ $1 = listbackups ]; then printf '{}\n'; exit; fi
: > '{}/started '$$
exec '{}' --pause
)",
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
    using State = AdjacentPair::State;
    backupCount = 8;
    const Date now = dateSince1970(1'800'000'000.0004); // between two that can be stored
    const auto begin = [&](std::int64_t older, double seconds) {
        return store
            .beginComparison(Comparison(rootOf(older), rootOf(older + 1), {}, {}, 3, options.cacheKey(),
                                        now + std::chrono::duration<double>(seconds)))
            .id;
    };
    store.finishComparison(begin(1, 0), std::nullopt);
    store.finishComparison(begin(2, 0), "no such backup");
    store.finishComparison(begin(3, 0), "Cancelled");
    begin(4, -1);
    begin(5, 0);
    begin(6, 1);
    store.finishComparison(store
                               .beginComparison(Comparison(rootOf(0), rootOf(1), {}, {}, 0,
                                                           CompareOptions::thorough().cacheKey(), now))
                               .id,
                           std::nullopt);

    const auto states = [&](std::optional<Date> runningSince) {
        std::vector<State> result;
        for (const auto& pair : adjacentPairs(store, roots(), options, runningSince)) {
            EXPECT_EQ(pair.failure.has_value(), pair.state == State::failed);
            result.push_back(pair.state);
        }
        return result;
    };

    EXPECT_THAT(states(now), ElementsAre(State::missing, State::ready, State::failed, State::missing,
                                         State::missing, State::running, State::running));
    EXPECT_THAT(states({}), ElementsAre(State::missing, State::ready, State::failed, State::missing,
                                        State::missing, State::missing, State::missing));
    const auto pair = adjacentPairs(store, roots(), options)[2];
    EXPECT_EQ(pair.from, rootOf(2));
    EXPECT_EQ(pair.to, rootOf(3));
    EXPECT_EQ(pair.failure, "no such backup");
    EXPECT_EQ(store.comparison(pair.comparisonID)->errorMessage, pair.failure);
    EXPECT_THAT(adjacentPairs(store, {rootOf(1)}, options), IsEmpty());
    EXPECT_THAT(adjacentPairs(store, {}, options), IsEmpty());

    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_THROW((void)adjacentPairs(store, roots(), options, {}, stopped.get_token()), Cancelled);
}

} // namespace
} // namespace tallyglass
