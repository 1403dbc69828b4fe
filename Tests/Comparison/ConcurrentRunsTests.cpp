// Concurrent runs of one comparison on one cache, as from two windows or a window and the command line.

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Platform/Error.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <thread>

namespace tallyglass {
namespace {

const std::string from = "/V/2026-01-01-100000.backup";
const std::string to = "/V/2026-01-02-100000.backup";
constexpr int rowCount = 1000;
const CompareOptions options = CompareOptions::fast(3);

TMUtilResult toolOutput() {
    std::string text = "<plist version=\"1.0\"><dict><key>Changes</key><array>";
    for (int number = 0; number < rowCount; ++number)
        text += fmt::format("<dict><key>AddedItem</key><dict><key>Path</key><string>{}/Data/file {}</string>"
                            "<key>Size</key><integer>10</integer></dict></dict>",
                            to, number);
    return {.exitCode = 0, .stdout = text + "</array></dict></plist>", .stderr = {}};
}

class ConcurrentRunsTest : public testing::Test {
protected:
    /// One run. The other run's store is another connection to the same file.
    Comparison compare(bool useCache, const DiffEngine::OnProgress& progress = {},
                       const std::stop_token& stop = {}) {
        return DiffEngine(runner, store, 100, clock).compare(from, to, options, useCache, progress, stop);
    }

    /// Runs `work` once, when the first batch of a run is stored.
    static DiffEngine::OnProgress atFirstBatch(std::function<void()> work) {
        return [work = std::move(work)](const DiffEngine::Progress& event) mutable {
            if (std::holds_alternative<DiffEngine::Storing>(event) && work)
                std::exchange(work, nullptr)();
        };
    }

    /// The other run, begun that many seconds after this one.
    Comparison otherBegins(int seconds) {
        return other.beginComparison(
            Comparison(from, to, {}, {}, 3, options.cacheKey(), dateSince1970(1'800'000'000.0 + seconds)));
    }
    void otherStores(int rows) {
        for (int row = 0; row < rows; ++row)
            other.appendChanges(std::array{ChangeRecord(std::nullopt, id, fmt::format("/other {}", row),
                                                        ChangeKind::removed, false, 1, 1, std::nullopt)},
                                id);
    }

    void expectOwnRows(const Comparison& result) {
        EXPECT_EQ(store.comparison(id), result);
        EXPECT_FALSE(result.isPartial);
        EXPECT_EQ(result.addedCount, rowCount);
        EXPECT_EQ(result.removedCount, 0);
        EXPECT_EQ(store.changeCount(id), rowCount);
    }
    void expectOthersRows(const Comparison& result, std::int64_t rows) {
        EXPECT_EQ(store.comparison(id), result);
        EXPECT_FALSE(result.isPartial);
        EXPECT_EQ(result.totalChanges(), rows);
        EXPECT_EQ(result.removedCount, rows);
        EXPECT_EQ(store.changeCount(id), rows);
    }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
    BackupStore store{file};
    BackupStore other{file};
    Clock clock = [] { return dateSince1970(1'800'000'000); };
    std::function<TMUtilResult()> tool = toolOutput;
    TMUtilRunner runner{[this](const auto&, auto, const auto&, auto) { return tool(); }};
    const std::string id = Comparison::makeID(from, to, options.cacheKey());
};

TEST_F(ConcurrentRunsTest, takesTheResultOfARunThatEndedMeanwhile) {
    const auto otherRuns = [this] {
        otherBegins(-60);
        otherStores(2);
        other.finishComparison(id, std::nullopt);
    };
    expectOthersRows(compare(true, atFirstBatch(otherRuns)), 2);
}

TEST_F(ConcurrentRunsTest, returnsNoOlderResultWhenTheCacheIsNotWanted) {
    const auto otherRuns = [this](int seconds, bool ends) {
        return atFirstBatch([this, seconds, ends] {
            otherBegins(seconds);
            otherStores(2);
            if (ends)
                other.finishComparison(id, std::nullopt);
        });
    };
    expectOwnRows(compare(false, otherRuns(-60, true)));
    expectOwnRows(compare(false, otherRuns(-60, false)));
    expectOthersRows(compare(false, otherRuns(60, true)), 2);
}

TEST_F(ConcurrentRunsTest, takesTheRowBackFromARunThatHasNoRowsYetOrFailed) {
    expectOwnRows(compare(false, atFirstBatch([this] { otherBegins(60); })));
    expectOwnRows(compare(false, atFirstBatch([this] {
                              otherBegins(60);
                              otherStores(2);
                              other.finishComparison(id, "Cancelled");
                          })));
}

TEST_F(ConcurrentRunsTest, takesTheRowBackWithNoRowsOfItsOwn) {
    tool = [this] {
        otherBegins(60);
        return TMUtilResult{.exitCode = 0, .stdout = "<plist><dict/></plist>", .stderr = {}};
    };
    EXPECT_EQ(compare(true).startedAt, clock());
    EXPECT_FALSE(store.comparison(id)->isPartial);
}

TEST_F(ConcurrentRunsTest, waitsForARunThatIsStoringAndTakesItsResult) {
    std::jthread storing;
    const auto result = compare(true, atFirstBatch([&] {
                                    otherBegins(60);
                                    otherStores(1);
                                    storing = std::jthread([&] {
                                        otherStores(300);
                                        other.finishComparison(id, std::nullopt);
                                    });
                                }));
    expectOthersRows(result, 301);
}

TEST_F(ConcurrentRunsTest, takesTheRowBackFromARunThatDied) {
    expectOwnRows(compare(true, atFirstBatch([this] { // makes no progress for five seconds
                              otherBegins(60);
                              otherStores(2);
                          })));
}

TEST_F(ConcurrentRunsTest, isStoppedWhileItWaitsAndLeavesTheOthersRow) {
    std::stop_source stop;
    std::jthread stopper;
    const auto otherStoresAndWeStop = [&] {
        otherBegins(60);
        otherStores(2);
        stopper = std::jthread([&] { stop.request_stop(); });
    };

    EXPECT_THROW(compare(true, atFirstBatch(otherStoresAndWeStop), stop.get_token()), Cancelled);

    EXPECT_EQ(store.comparison(id)->removedCount, 2);
    EXPECT_EQ(store.comparison(id)->completedAt, std::nullopt);
}

TEST_F(ConcurrentRunsTest, leavesTheOthersRowAloneWhenItFails) {
    for (const bool isCancelled : {false, true}) {
        tool = [&]() -> TMUtilResult {
            otherBegins(60);
            if (isCancelled)
                throw Cancelled();
            return {.exitCode = 70, .stdout = {}, .stderr = "no such backup"};
        };
        EXPECT_ANY_THROW(compare(true));
        EXPECT_EQ(store.comparison(id)->errorMessage, std::nullopt);
        EXPECT_EQ(store.comparison(id)->completedAt, std::nullopt);
    }
}

TEST_F(ConcurrentRunsTest, storesAgainWhenTheRowIsDeletedAmongItsBatches) {
    expectOwnRows(compare(true, atFirstBatch([this] { other.deleteComparison(id); })));
}

TEST_F(ConcurrentRunsTest, returnsTheResultOfARunThatEndsJustBeforeItBegins) {
    clock = [this] { // called after the cache lookup
        otherBegins(-60);
        otherStores(2);
        other.finishComparison(id, std::nullopt);
        return dateSince1970(1'800'000'000);
    };
    tool = []() -> TMUtilResult { throw std::logic_error("the tool ran"); };
    expectOthersRows(compare(true), 2);
}

TEST_F(ConcurrentRunsTest, writesForARunOnlyWhileTheRowIsItsOwn) {
    const auto expectNoWrites = [this](const Comparison& run) {
        const auto before = store.comparison(id);
        const auto rows = store.changeCount(id);
        const std::array change{
            ChangeRecord(std::nullopt, id, "/lost", ChangeKind::added, false, 1, 1, std::nullopt)};
        EXPECT_THROW(store.appendChanges(change, run), RunReplaced);
        EXPECT_THROW(store.finishComparison(run, std::nullopt), RunReplaced);
        EXPECT_EQ(store.takeOver(run, run, change, true), std::nullopt);
        EXPECT_EQ(store.comparison(id), before);
        EXPECT_EQ(store.changeCount(id), rows);
    };
    const auto first = otherBegins(0);
    auto second = otherBegins(1);
    expectNoWrites(first);
    second = store.appendChanges({}, second);
    otherStores(1);
    expectNoWrites(second);
    second = store.comparison(id).value();
    const auto finished = store.finishComparison(second, std::nullopt);
    EXPECT_EQ(finished, store.comparison(id));
    expectNoWrites(second);
}

TEST_F(ConcurrentRunsTest, completesInAllThreadsOfAProcess) {
    clock = systemTime;
    std::vector<std::jthread> threads;
    for (int number = 0; number < 6; ++number)
        threads.emplace_back([this, number] {
            const DiffEngine engine(runner, number % 2 ? store : other, 100);
            const auto result = engine.compare(from, to, options, number < 4);
            EXPECT_FALSE(result.isPartial);
            EXPECT_EQ(result.addedCount, rowCount);
        });
    threads.clear();
    expectOwnRows(store.comparison(id).value());
}

TEST_F(ConcurrentRunsTest, completesInAllProcessesThatSurvive) {
    std::minstd_rand random(17);
    for (int round = 0; round < 4; ++round) {
        store.deleteComparison(id);
        std::vector<pid_t> children;
        for (int number = 0; number < 3; ++number) {
            children.push_back(fork());
            if (children.back() != 0)
                continue;
            alarm(60);
            usleep(static_cast<useconds_t>(random() % 20'000 * number));
            BackupStore own(file);
            const auto result = DiffEngine(runner, own, 20).compare(from, to, options, true);
            _exit(!result.isPartial && result.addedCount == rowCount ? 0 : 1);
        }
        usleep(static_cast<useconds_t>(random() % 60'000));
        kill(children[random() % 3], SIGKILL);
        int right = 0;
        for (const pid_t child : children) {
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            right += WIFEXITED(status) && WEXITSTATUS(status) == 0;
        }
        EXPECT_GE(right, 2);
        expectOwnRows(store.comparison(id).value());
    }
}

} // namespace
} // namespace tallyglass
