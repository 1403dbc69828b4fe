// Comparing all neighbouring backups from a terminal, also through kills.

#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Comparison/TallyglassDatabase.h"
#include "TallyglassKit/Persistence/Connection.h"
#include "TallyglassKit/Platform/Date.h"
#include "TallyglassKit/Platform/Files/FileReading.h"
#include "Tests/CommandLine/TallyTest.h"

#include <gmock/gmock.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <map>
#include <random>
#include <thread>

namespace tallyglass::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t pairCount = SampleMachine::backupCount - 1;

using TallyBackfillTest = TallyTest;

TEST_F(TallyBackfillTest, preparesEveryComparisonOnce) {
    const auto comparisons = [&](const std::vector<std::string>& command) {
        return onMachine(command).json().get<std::vector<nlohmann::json>>();
    };
    const auto first = comparisons({"backfill", "--no-limit", "--json"});
    EXPECT_THAT(first, SizeIs(pairCount));
    EXPECT_THAT(comparisons({"comparisons", "--json"}), testing::UnorderedElementsAreArray(first));

    const auto [from, to] = latestPair();
    EXPECT_EQ(onMachine({"compare", from, to, "--no-limit", "--json"}).json().at("cached"), true);
    const auto second = onMachine({"backfill", "--no-limit", "--concurrency", "0"});
    EXPECT_EQ(second.exitCode, 0) << second.err;
    EXPECT_THAT(second.err, IsEmpty());
    EXPECT_EQ(std::ranges::count(second.out, '\n'), pairCount + 1);
    EXPECT_THAT(second.out, EndsWith("\n7 pairs of backups: 7 ready before, 0 compared, 0 failed\n"));
}

TEST_F(TallyBackfillTest, takesTheOptionsOfAComparison) {
    const std::vector<std::string> options{"--depth",  "1", "--properties", "default",
                                           "--ignore", "a", "--json"};
    const auto with = [&](std::vector<std::string> command) {
        command.insert(command.end(), options.begin(), options.end());
        return onMachine(command).json();
    };
    EXPECT_THAT(with({"backfill"}), SizeIs(pairCount));
    EXPECT_EQ(with({"compare"}).at("cached"), true);
}

class TallyBackfillWithScriptTest : public TallyWithScriptTest {
protected:
    /// A tmutil with three backups, of which the script compares $3 and $4.
    void comparingDoes(const std::string& script) {
        tmutilDoes("if [ $1 = listbackups ]; then printf '/V/2026-01-0%s-000000.backup\\n' 1 2 3; exit; fi\n"
                   "shift 3\n" +
                   script);
    }
    static constexpr auto nothing = "echo '<plist version=\"1.0\"><dict/></plist>'";
};

TEST_F(TallyBackfillWithScriptTest, namesThePairsThatFail) {
    comparingDoes(std::string("case $2 in *02-000000.backup) echo 'no such backup' >&2; exit 70;; esac; ") +
                  nothing);

    const auto run = tally({"--root", root(), "backfill", "--no-limit", "--json"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err, "tally: 2026-01-01-000000 → 2026-01-02-000000: no such backup\n"
                       "tally: 1 of 2 comparisons failed.\n");
    EXPECT_THAT(run.json(), SizeIs(1));

    EXPECT_THAT(tally({"--root", root(), "backfill", "--no-limit"}).out,
                EndsWith("2 pairs of backups: 1 ready before, 0 compared, 1 failed\n"));
    tmutilDoes("echo 'tmutil: listbackups requires Full Disk Access privileges.' >&2; exit 80");
    EXPECT_EQ(tally({"--root", root(), "backfill"}).exitCode, 3);
}

TEST_F(TallyBackfillWithScriptTest, keepsWhatIsFinishedWhenItIsInterrupted) {
    const auto started = folder() / "started";
    comparingDoes(std::string("case $2 in *02-000000.backup) : > '") + started.string() +
                  "'; exec sleep 600;; esac; " + nothing);
    const pid_t pid = start({"--root", root(), "backfill", "--no-limit", "--concurrency", "1"});
    while (!std::filesystem::exists(started))
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    kill(pid, SIGINT);
    int status = 0;
    ASSERT_EQ(waitpid(pid, &status, 0), pid);

    EXPECT_EQ(WEXITSTATUS(status), 130);
    EXPECT_THAT(readFile(folder() / "output").view(),
                HasSubstr("2026-01-02-000000 → 2026-01-03-000000: 0 a"));
    const auto comparisons = tally({"comparisons", "--json"}).json();
    ASSERT_THAT(comparisons, SizeIs(2));
    EXPECT_EQ(comparisons.at(0).at("errorMessage"), "Cancelled");
    EXPECT_EQ(comparisons.at(1).at("isPartial"), false);
}

/// Kills the program at random moments and looks at what it leaves.
class TallyBackfillKillTest : public TallyTest {
protected:
    static constexpr int rounds = 20; // repeat the test for more

    struct Result {
        Comparison comparison;
        std::vector<ChangeRecord> rows;
    };
    /// The finished comparisons. Whatever finished must be whole.
    std::map<std::string, Result> finished() const {
        std::map<std::string, Result> results;
        BackupStore store(m_file);
        for (const auto& comparison : store.allComparisons()) {
            Result result{comparison, store.changes(comparison.id, {}, {}, 1'000'000, 0)};
            EXPECT_EQ(comparison.totalChanges(), std::ssize(result.rows));
            if (!comparison.isPartial)
                results.emplace(comparison.id, std::move(result));
        }
        return results;
    }

    void expectIntact() const {
        const auto connection = TallyglassDatabase::makeQueue(m_file);
        const auto check = connection->query("PRAGMA integrity_check");
        ASSERT_TRUE(check->step());
        EXPECT_EQ(check->value(0).text(), "ok");
        connection->execute("INSERT INTO fileChangeSearch (fileChangeSearch) VALUES ('integrity-check')");
    }

    /// Compares what doesn't depend on when a comparison ran.
    static void expectSameResults(std::map<std::string, Result> results,
                                  std::map<std::string, Result> expected) {
        ASSERT_EQ(results.size(), expected.size());
        for (auto& [id, result] : results) {
            for (auto* each : {&result, &expected.at(id)}) {
                each->comparison.startedAt = Date();
                each->comparison.completedAt.reset();
                for (auto& row : each->rows)
                    row.id.reset();
            }
            EXPECT_EQ(result.comparison, expected.at(id).comparison);
            EXPECT_EQ(result.rows, expected.at(id).rows);
        }
    }

    /// Starts the program and kills it after `delay`, unless it has ended by then.
    void startAndKill(std::chrono::microseconds delay) const {
        const pid_t pid = start({"--root", SampleMachine::shared().root(), "backfill", "--no-limit"});
        std::this_thread::sleep_for(delay);
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }

    const std::filesystem::path m_file = TallyglassDatabase::defaultURL();
};

TEST_F(TallyBackfillKillTest, losesAndRepeatsNothing) {
    static_cast<void>(SampleMachine::shared()); // made outside of the time that is measured
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(onMachine({"backfill", "--no-limit"}).exitCode, 0);
    const auto longest =
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start);
    const auto undisturbed = finished();
    ASSERT_EQ(undisturbed.size(), pairCount);
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::minstd_rand random(seed);
    std::uniform_int_distribution<std::int64_t> delay(0, longest.count());

    std::map<std::string, Result> known;
    TallyglassDatabase::reset(m_file);
    int interrupted = 0;
    for (int round = 0; round < rounds; ++round) {
        startAndKill(std::chrono::microseconds(delay(random)));
        expectIntact();
        auto now = finished();
        for (const auto& [id, result] : known) {
            ASSERT_TRUE(now.contains(id));
            EXPECT_EQ(now.at(id).comparison, result.comparison) << "the same start: it didn't run again";
        }
        interrupted += now.size() < pairCount;
        known = std::move(now);
        if (known.size() == pairCount) { // begin anew
            expectSameResults(known, undisturbed);
            known.clear();
            TallyglassDatabase::reset(m_file);
        }
    }
    EXPECT_GT(interrupted, 0);
    ASSERT_EQ(onMachine({"backfill", "--no-limit"}).exitCode, 0);
    expectIntact();
    expectSameResults(finished(), undisturbed);
}

} // namespace
} // namespace tallyglass::test
