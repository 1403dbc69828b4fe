#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/Internal/ComparisonRun.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "TallyglassKit/Platform/Error.h"
#include "Tests/Support/Sanitizers.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <mutex>
#include <thread>

using namespace tallyglass;

namespace {

class BackupStoreSharingTest : public testing::Test {
protected:
    static std::string begin(BackupStore& store, const std::string& to) {
        return store.beginComparison(Comparison("/a", to, {}, {}, 0, "k", Date())).id;
    }
    static std::vector<ChangeRecord> batch(const SharedText& id, int count) {
        std::vector<ChangeRecord> result;
        for (int row = 0; row < count; ++row)
            result.emplace_back(std::nullopt, id, fmt::format("/file {}", row), ChangeKind::added, false, 1,
                                1, std::nullopt);
        return result;
    }

    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
};

TEST_F(BackupStoreSharingTest, showsEveryReaderWholeBatches) {
    constexpr int rounds = 15;
    constexpr int size = 20;
    BackupStore one(file);
    BackupStore other(file);
    const std::array ids{begin(one, "/b"), begin(other, "/c")};
    std::atomic<int> writing = 2;
    const auto write = [&](BackupStore& store, const std::string& id) {
        for (int round = 0; round < rounds; ++round)
            store.appendChanges(batch(id, size), id);
        store.finishComparison(id, std::nullopt);
        --writing;
    };
    const auto read = [&](BackupStore& store, const std::string& id) {
        do {
            const auto before = store.comparison(id)->addedCount;
            const auto rows = store.changeCount(id);
            EXPECT_EQ(rows % size, 0);
            EXPECT_LE(before, rows);
            EXPECT_GE(store.comparison(id)->addedCount, rows);
            static_cast<void>(store.searchPaths("file", 10));
        } while (writing > 0);
    };
    {
        std::vector<std::jthread> threads;
        threads.emplace_back(write, std::ref(one), ids[0]);
        threads.emplace_back(write, std::ref(other), ids[1]);
        threads.emplace_back(read, std::ref(one), ids[0]);
        threads.emplace_back(read, std::ref(other), ids[0]);
    }
    for (const std::string& id : ids)
        EXPECT_EQ(one.comparison(id)->addedCount, rounds * size);
}

TEST_F(BackupStoreSharingTest, opensForManyAtOnceOnAFreshFile) {
    std::vector<std::jthread> threads;
    for (int index = 0; index < 4; ++index)
        threads.emplace_back([this] { EXPECT_TRUE(BackupStore(file).allComparisons().empty()); });
}

TEST_F(BackupStoreSharingTest, opensAndReadsBesideAWriter) {
    BackupStore store(file);
    const auto id = begin(store, "/b");
    const auto writer = TallyglassDatabase::makeQueue(file);
    const Transaction transaction(*writer, Transaction::Kind::write);
    writer->execute("DELETE FROM comparison");

    BackupStore reader(TallyglassDatabase::makeQueue(file, std::chrono::milliseconds(0)));
    EXPECT_TRUE(reader.comparison(id));
    EXPECT_THROW(reader.deleteComparison(id), DatabaseError);
}

TEST_F(BackupStoreSharingTest, stopsReadsAndNothingElse) {
    BackupStore store(file);
    const auto id = begin(store, "/b");
    store.appendChanges(batch(id, 10), id);
    std::stop_source stopped;
    stopped.request_stop();
    const auto token = stopped.get_token();

    EXPECT_THROW(static_cast<void>(store.changes(id, {}, {}, 10, 0, token)), Cancelled);
    EXPECT_THROW(static_cast<void>(store.rollups(id, 10, token)), Cancelled);
    EXPECT_THROW(static_cast<void>(store.history("/file 1", token)), Cancelled);
    EXPECT_THROW(static_cast<void>(store.searchPaths("file", 10, token)), Cancelled);

    EXPECT_EQ(store.changes(id, {}, {}, 10, 0).size(), 10U);
    store.appendChanges(batch(id, 10), id);
    EXPECT_EQ(store.changeCount(id), 20);
}

TEST_F(BackupStoreSharingTest, stopsTheWaitsOfARunAndLimitsThoseOfItsCleanUp) {
    BackupStore store(TallyglassDatabase::makeQueue(file, std::chrono::hours(1)));
    BackupStore busy(TallyglassDatabase::makeQueue(file, std::chrono::hours(1)));
    const auto run = store.beginComparison(Comparison("/a", "/b", {}, {}, 0, "k", Date()));
    const auto expectStops = [&](BackupStore& waiting) {
        const auto expectStop = [](const std::function<void(std::stop_token)>& work) {
            std::stop_source source;
            const std::jthread stopper([&] { source.request_stop(); });
            EXPECT_THROW(work(source.get_token()), Cancelled);
        };
        expectStop([&](auto stop) { (void)waiting.completedComparison("/a", "/b", {}, stop); });
        expectStop([&](auto stop) { (void)waiting.comparison(run.id, stop); });
        expectStop([&](auto stop) { waiting.beginComparison(run, stop); });
        expectStop([&](auto stop) { waiting.beginUnlessCompleted(run, stop); });
        expectStop([&](auto stop) { waiting.appendChanges(batch(run.id, 1), run, stop); });
        expectStop([&](auto stop) { waiting.finishComparison(run, std::nullopt, stop); });
        expectStop([&](auto stop) { waiting.takeOver(run, run, {}, true, stop); });
        EXPECT_THROW(waiting.finishComparison(run, "Cancelled"), DatabaseError);
    };
    const auto writer = TallyglassDatabase::makeQueue(file);
    writer->execute("BEGIN EXCLUSIVE");
    const std::jthread occupant([&] { busy.deleteComparison("none"); });
    {
        const std::jthread waitsForTheLock([&] { expectStops(store); });
        expectStops(busy); // waits for the occupant
    }
    writer->execute("ROLLBACK");
    EXPECT_EQ(BackupStore(file).comparison(run.id), run);
}

TEST_F(BackupStoreSharingTest, letsOthersHaveTheirTurnWhileRunsStore) {
    BackupStore store(file);
    BackupStore other(file);
    for (const std::vector<std::string>& runs : {std::vector<std::string>{"/b"}, {"/c", "/d", "/e"}}) {
        std::stop_source stop;
        std::jthread small;
        std::once_flag once;
        const auto startSmallRuns = [&](std::size_t) {
            std::call_once(once, [&] {
                small = std::jthread([&] {
                    for (int number = 0; number < 5; ++number)
                        begin(other, fmt::format("/{}", number));
                    stop.request_stop();
                });
            });
        };
        std::vector<std::jthread> threads;
        for (const std::string& to : runs)
            threads.emplace_back([&] {
                const auto begun = store.beginComparison(Comparison("/a", to, {}, {}, 0, "k", Date()));
                const auto changes = batch(begun.id, 300'000 / static_cast<int>(runs.size()));
                EXPECT_THROW(
                    ComparisonRun(store, begun, true).store(changes, 500, startSmallRuns, stop.get_token()),
                    Cancelled);
            });
    }
}

TEST_F(BackupStoreSharingTest, leavesALongReadSoonAfterItIsStopped) {
    BackupStore store(file);
    const auto id = begin(store, "/b");
    store.appendChanges(batch(id, 5000), id);
    std::stop_source source;
    std::atomic<bool> isDone = false;
    std::jthread reader([&] {
        // Each query is long enough to check the token, so the loop ends soon after the stop.
        EXPECT_THROW(
            {
                while (true)
                    static_cast<void>(store.changes(id, {}, "no such text", 10, 0, source.get_token()));
            },
            Cancelled);
        isDone = true;
    });
    while (!isDone) {
        EXPECT_EQ(store.changeCount(id), 5000); // other operations aren't affected
        source.request_stop();
    }
}

TEST_F(BackupStoreSharingTest, holdsAMillionRowsInLittleMemory) {
    if (test::isSanitized)
        GTEST_SKIP() << "a sanitizer keeps the memory";
    constexpr std::int64_t rows = 1'000'000;
    const auto connection = TallyglassDatabase::makeQueue(file);
    BackupStore store(file);
    const auto id = begin(store, "/" + std::string(200, 'b'));
    connection->execute(fmt::format(
        "PRAGMA synchronous = OFF; DROP TRIGGER __fileChangeSearch_ai; DROP INDEX idx_change_path; "
        "DROP INDEX index_fileChange_on_comparisonID; DROP INDEX index_fileChange_on_parentPath; "
        "WITH RECURSIVE c(x) AS (VALUES (100000000) UNION ALL SELECT x + 1 FROM c LIMIT {0}) "
        "INSERT INTO fileChange (comparisonID, path, parentPath, kind, size, sizeDelta, differences) "
        "SELECT '{1}', '/folder/' || x, '/folder', 'modified', x, x, iif(x % 2, 'size,mtime', "
        "'mode,uid,gid') "
        "FROM c; UPDATE comparison SET modifiedCount = {0}",
        rows, id));
    constexpr std::int64_t pathLength = 17;
    static_cast<void>(store.changes(id, {}, {}, 1, rows - 1)); // fills SQLite's cache
    const auto used = [] {
        const auto info = mallinfo2();
        return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
    };

    const auto before = used();
    const auto changes = store.changes(id, {}, {}, rows, 0);
    const auto each = (used() - before) / rows - pathLength;

    ASSERT_EQ(std::ssize(changes), rows);
    EXPECT_LE(each, 160);
    RecordProperty("bytesPerRow", std::to_string(each));
    EXPECT_LE(changes.capacity(), changes.size() * 9 / 8);
}

} // namespace
