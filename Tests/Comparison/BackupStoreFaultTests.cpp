#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Persistence/DatabaseError.h"
#include "Tests/Comparison/FaultyDisk.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <chrono>
#include <random>
#include <thread>

using namespace tallyglass;
using test::FaultyDisk;

namespace {

constexpr std::int64_t batchSize = 25;

Comparison makeComparison(const std::string& to) {
    return Comparison("/a", to, {}, {}, 0, "k", dateSince1970(1e9));
}

std::vector<ChangeRecord> makeBatch(const SharedText& id, std::int64_t number) {
    std::vector<ChangeRecord> batch;
    for (std::int64_t row = 0; row < batchSize; ++row)
        batch.emplace_back(std::nullopt, id, fmt::format("/folder {}/some file {}.txt", number, row),
                           allChangeKinds[static_cast<std::size_t>(row % 3)], false, row, row, std::nullopt);
    return batch;
}

/// The store operations of a comparison run.
void storeComparison(BackupStore& store, const std::string& to, std::int64_t batches) {
    const auto id = store.beginComparison(makeComparison(to)).id;
    for (std::int64_t number = 0; number < batches; ++number)
        store.appendChanges(makeBatch(id, number), id);
    store.finishComparison(id, std::nullopt);
}

/// Opens the file as the next start of the program would, and checks its consistency.
void expectSound(const std::filesystem::path& file) {
    const auto connection = TallyglassDatabase::makeQueue(file);
    const Query integrity = connection->query("PRAGMA integrity_check");
    ASSERT_TRUE(integrity->step());
    EXPECT_EQ(integrity->value(0).text(), "ok");
    EXPECT_FALSE(connection->query("PRAGMA foreign_key_check")->step());
    connection->execute("INSERT INTO fileChangeSearch(fileChangeSearch, rank) VALUES('integrity-check', 1)");

    BackupStore store(file);
    for (const Comparison& comparison : store.allComparisons()) {
        Comparison recounted = comparison;
        recounted.addedCount = recounted.removedCount = recounted.modifiedCount = 0;
        recounted.bytesAdded = recounted.bytesRemoved = 0;
        for (const ChangeRecord& change : store.changes(comparison.id, {}, {}, -1, 0))
            recounted.count(change);
        EXPECT_EQ(recounted, comparison);
        EXPECT_EQ(comparison.totalChanges() % batchSize, 0);
        EXPECT_EQ(comparison.isPartial, !comparison.completedAt);
    }
}

/// Runs `work` in a child process. Returns whether it finished.
bool survives(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) || WTERMSIG(status) == SIGKILL) << "ended by signal " << WTERMSIG(status);
    return WIFEXITED(status);
}

class BackupStoreFaultTest : public testing::Test {
protected:
    test::TemporaryFolder folder;
    std::filesystem::path file = folder / "cache.sqlite";
};

TEST_F(BackupStoreFaultTest, opensWithItsRowsAfterACrashAtAnyWrite) {
    {
        BackupStore store(file);
        storeComparison(store, "/kept", 2);
    }
    const auto original = folder / "original.sqlite";
    std::filesystem::copy_file(file, original);

    bool hasEnded = false;
    for (int calls = 0; !hasEnded && !HasFailure(); calls += calls < 20 ? 1 : 7) {
        std::filesystem::copy_file(original, file, std::filesystem::copy_options::overwrite_existing);
        hasEnded = survives([&] {
            BackupStore store(file);
            const FaultyDisk disk(FaultyDisk::Fault::death, calls);
            store.deleteComparison(makeComparison("/gone").id);
            storeComparison(store, "/b", 2);
            storeComparison(store, "/b", 1);
        });
        SCOPED_TRACE(fmt::format("died after {} calls", calls));
        expectSound(file);
        EXPECT_EQ(BackupStore(file).changeCount(makeComparison("/kept").id), 2 * batchSize);
    }
}

TEST_F(BackupStoreFaultTest, opensAfterACrashWhileItWasMade) {
    bool hasEnded = false;
    for (int calls = 0; !hasEnded && !HasFailure(); calls += calls < 20 ? 1 : 5) {
        TallyglassDatabase::reset(file);
        hasEnded = survives([&] {
            const FaultyDisk disk(FaultyDisk::Fault::death, calls);
            static_cast<void>(TallyglassDatabase::makeQueue(file));
        });
        SCOPED_TRACE(fmt::format("died after {} calls", calls));
        expectSound(file);
    }
}

TEST_F(BackupStoreFaultTest, opensWithItsRowsWhenAStoringProcessIsKilled) {
    std::minstd_rand random(17);
    for (int round = 0; round < 8; ++round) {
        int pipeEnds[2];
        ASSERT_EQ(pipe(pipeEnds), 0);
        const pid_t child = fork();
        if (child == 0) {
            BackupStore store(file);
            for (;;) {
                storeComparison(store, "/b", 4);
                static_cast<void>(!write(pipeEnds[1], "x", 1));
            }
        }
        char stored = 0;
        ASSERT_EQ(read(pipeEnds[0], &stored, 1), 1); // it is running
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30'000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        close(pipeEnds[0]);
        close(pipeEnds[1]);
        expectSound(file);
    }
}

TEST_F(BackupStoreFaultTest, keepsWhatItHasWhenTheDiskIsFull) {
    BackupStore store(file);
    const auto id = store.beginComparison(makeComparison("/b")).id;
    store.appendChanges(makeBatch(id, 0), id);

    bool hasFailed = true;
    std::int64_t batches = 1;
    for (int calls = 0; hasFailed; calls += 3) {
        {
            const FaultyDisk disk(FaultyDisk::Fault::full, calls);
            try {
                store.appendChanges(makeBatch(id, batches), id);
                ++batches;
            } catch (const DatabaseError& failure) {
                EXPECT_EQ(failure.errorDescription(), "database or disk is full");
                EXPECT_EQ(failure.code(), SQLITE_FULL);
            }
            hasFailed = FaultyDisk::hasFailed();
        }
        ASSERT_EQ(store.changeCount(id), batches * batchSize); // readable after the fault
    }
    expectSound(file);
}

TEST_F(BackupStoreFaultTest, isNotMadeOnAFullDiskButAfterIt) {
    {
        const FaultyDisk disk(FaultyDisk::Fault::full, 5);
        EXPECT_THROW(BackupStore store(file), DatabaseError);
    }
    expectSound(file);
}

} // namespace
