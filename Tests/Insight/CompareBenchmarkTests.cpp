#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Insight/CompareBenchmark.h"
#include "TallyglassKit/Platform/Error.h"
#include "Tests/Access/FakeRunner.h"
#include "Tests/Insight/ChildTool.h"
#include "Tests/Support/ProcessResources.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <set>

namespace tallyglass::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Arguments = TMUtilRunner::Arguments;
using Pair = CompareBenchmark::Pair;

const std::string oneChange = "<plist><dict><key>Changes</key><array><dict><key>AddedItem</key>"
                              "<dict><key>Path</key><string>/a</string></dict></dict></array></dict></plist>";

/// "0", "1" and so on.
std::vector<std::string> backups(int count) {
    std::vector<std::string> paths;
    for (int index = 0; index < count; ++index)
        paths.push_back(std::to_string(index));
    return paths;
}

std::vector<Pair> pairs(int count) {
    return CompareBenchmark::recentPairs(backups(count + 1), count);
}

TEST(CompareBenchmark, takesTheNewestPairs) {
    EXPECT_THAT(CompareBenchmark::recentPairs(backups(1), 5), IsEmpty());
    EXPECT_THAT(CompareBenchmark::recentPairs(backups(4), -1), IsEmpty());
    EXPECT_THAT(CompareBenchmark::recentPairs(backups(4), 0), IsEmpty());
    EXPECT_THAT(CompareBenchmark::recentPairs(backups(2), 5), ElementsAre(Pair{"0", "1"}));
    EXPECT_THAT(CompareBenchmark::recentPairs(backups(4), 2), ElementsAre(Pair{"1", "2"}, Pair{"2", "3"}));
}

TEST(CompareBenchmark, givesEachPropertySetPairsOfItsOwn) {
    const FakeRunner runner(oneChange);
    std::vector<std::string> told;

    const auto results = CompareBenchmark::propertySets(runner, backups(6), INT64_MAX, 2,
                                                        [&](const auto& text) { told.push_back(text); });

    EXPECT_THAT(told, ElementsAre("tmutil default (-@gmstu) over 2 pairs", "size + mtime (-st) over 2 pairs",
                                  "size only (-s) over 1 pairs"));
    EXPECT_THAT(runner.calls(), ElementsAre(ElementsAre("compare", "-X", "-@gmstu", "-D", "2", "0", "1"),
                                            ElementsAre("compare", "-X", "-@gmstu", "-D", "2", "3", "4"),
                                            ElementsAre("compare", "-X", "-st", "-D", "2", "1", "2"),
                                            ElementsAre("compare", "-X", "-st", "-D", "2", "4", "5"),
                                            ElementsAre("compare", "-X", "-s", "-D", "2", "2", "3")));
    ASSERT_EQ(results.size(), 3U);
    EXPECT_EQ(results[0].label, "tmutil default (-@gmstu)");
    EXPECT_EQ(results[0].changeCount, 2);
    EXPECT_EQ(results[0].pairsUsed, 2);
    EXPECT_TRUE(results[0].succeeded());
    EXPECT_THAT(results[2].arguments, ElementsAre("-X", "-s", "-D", "2"));
    EXPECT_GT(results[2].seconds, 0);
}

TEST(CompareBenchmark, startsNothingWithTooFewPairs) {
    const FakeRunner runner(oneChange);

    const auto sets = CompareBenchmark::propertySets(runner, backups(3), 3, std::nullopt);
    const auto levels = CompareBenchmark::concurrency(runner, backups(4), {1, 4}, 4, CompareOptions::fast());

    EXPECT_THAT(sets, ElementsAre(BenchmarkResult{.label = "property sets",
                                                  .error = "Need at least 3 backup pairs; found 2."}));
    EXPECT_THAT(levels, ElementsAre(BenchmarkResult{.label = "concurrency",
                                                    .error = "Need at least 4 backup pairs; found 3."}));
    EXPECT_THAT(runner.calls(), IsEmpty());
}

TEST(CompareBenchmark, measuresTheHighestLevelFirst) {
    const FakeRunner runner(oneChange);
    std::vector<std::string> told;

    const auto results = CompareBenchmark::concurrency(runner, backups(8), {1, 4}, 3, CompareOptions::fast(1),
                                                       [&](const auto& text) { told.push_back(text); });

    EXPECT_THAT(told, ElementsAre("concurrency 4 over 3 pairs", "concurrency 1 over 3 pairs"));
    const auto calls = runner.calls();
    ASSERT_EQ(calls.size(), 6U);
    EXPECT_THAT(std::vector(calls.end() - 3, calls.end()), // of the level that goes one by one
                ElementsAre(ElementsAre("compare", "-X", "-st", "-D", "1", "2", "3"),
                            ElementsAre("compare", "-X", "-st", "-D", "1", "4", "5"),
                            ElementsAre("compare", "-X", "-st", "-D", "1", "6", "7")));
    EXPECT_EQ(results[0].changeCount, 3);
}

TEST(CompareBenchmark, runsLevelsOverEarlierPairsIfThereAreEnough) {
    const auto labels = [](int count) {
        std::vector<std::string> all;
        for (const auto& result :
             CompareBenchmark::run(FakeRunner(oneChange), backups(count), 3, std::nullopt))
            all.push_back(result.label + ": " + std::to_string(result.pairsUsed));
        return all;
    };
    EXPECT_THROW(labels(1), Error);
    EXPECT_THAT(labels(2), ElementsAre("property sets: 0"));
    EXPECT_EQ(labels(13).size(), 3U);
    EXPECT_EQ(labels(14)[3], "concurrency 4: 2");
    EXPECT_EQ(labels(40)[4], "concurrency 1: 4");

    const FakeRunner runner(oneChange);
    static_cast<void>(CompareBenchmark::run(runner, backups(16), 3, std::nullopt));
    std::set<std::string> older;
    for (const auto& call : runner.calls())
        older.insert(call[call.size() - 2]);
    EXPECT_EQ(older.size(), runner.calls().size()); // no pair twice
    EXPECT_EQ(older.size(), 15U);
}

TEST(CompareBenchmark, keepsExactlySoManyComparisonsRunning) {
    std::barrier together(3); // passes only if three run at once
    std::atomic<int> running = 0;
    std::atomic<int> most = 0;
    const TMUtilRunner runner([&](const auto&, auto, const auto&, const auto&) {
        const int now = ++running;
        for (int before = most; before < now && !most.compare_exchange_weak(before, now);) {
        }
        together.arrive_and_wait();
        --running;
        return TMUtilResult{.exitCode = 0, .stdout = oneChange, .stderr = {}};
    });
    const ResourceGuard guard;

    const auto result = CompareBenchmark::measure(runner, "three", CompareOptions::fast(), pairs(9), 3);

    EXPECT_EQ(most, 3);
    EXPECT_EQ(result.changeCount, 9);
    EXPECT_EQ(CompareBenchmark::measure(FakeRunner(oneChange), "none", {}, pairs(2), -1).changeCount, 2);
}

TEST(CompareBenchmark, countsComparisonsThatFail) {
    const ResourceGuard guard;
    const auto runner = childTool([](const Arguments& command) -> Arguments {
        const auto& from = command[command.size() - 2];
        return from == "0"   ? Arguments{"--garbage"}
               : from == "1" ? Arguments{"--err", "no", "--exit", "1"}
               : from == "2" ? Arguments{"--die", "9"}
                             : Arguments{"--out", oneChange};
    });

    const auto some = CompareBenchmark::measure(runner, "some", {}, pairs(5), 2);
    const auto all = CompareBenchmark::measure(runner, "all", {}, pairs(3), 4);

    EXPECT_EQ(some.error, "3 of 5 failed.");
    EXPECT_EQ(some.changeCount, 2);
    EXPECT_EQ(some.pairsUsed, 5);
    EXPECT_EQ(all.error, "All 3 comparisons failed.");
    EXPECT_EQ(all.changeCount, 0);
}

TEST(CompareBenchmark, isCancelledWithAllItsChildren) {
    const ResourceGuard guard;
    std::stop_source source;
    std::atomic<int> started = 0;
    const auto runner = childTool(
        [](const auto&) {
            return Arguments{"--out", "x", "--pause"};
        },
        [&](std::int64_t) {
            if (++started == 3)
                source.request_stop();
        });

    EXPECT_THROW(CompareBenchmark::concurrency(runner, backups(10), {3}, 9, CompareOptions::fast(), {},
                                               source.get_token()),
                 Cancelled);
    EXPECT_EQ(started, 3);
}

TEST(CompareBenchmark, reportsWhatItMeasured) {
    const std::vector<BenchmarkResult> results{
        {.label = "one",
         .arguments = {"-X", "-s"},
         .seconds = 3,
         .changeCount = 12,
         .pairsUsed = 2,
         .error = {}},
        {.label = "two",
         .arguments = {"-X"},
         .seconds = 4.25,
         .changeCount = 0,
         .pairsUsed = 1,
         .error = "All 1 comparisons failed."},
        {.label = "three", .error = "Need more."},
    };

    const auto text = CompareBenchmark::report(results);

    EXPECT_TRUE(text.starts_with("Tallyglass — compare benchmark\n\nEach condition ran against its own"));
    EXPECT_EQ(text.substr(text.find("one\n")), "one\n"
                                               "    tmutil compare -X -s …\n"
                                               "    2 pairs\n"
                                               "    3.0 s total  ·  1.50 s/pair  ·  1.00× fastest\n"
                                               "    12 changes detected\n"
                                               "\n"
                                               "two\n"
                                               "    tmutil compare -X …\n"
                                               "    1 pair\n"
                                               "    NOTE: All 1 comparisons failed.\n"
                                               "    4.2 s total  ·  4.25 s/pair  ·  2.83× fastest\n"
                                               "    0 changes detected\n"
                                               "\n"
                                               "three\n"
                                               "    tmutil compare  …\n"
                                               "    0 pairs\n"
                                               "    NOTE: Need more.\n"
                                               "\n");
    EXPECT_TRUE(CompareBenchmark::report({}).ends_with("as inconclusive.\n\n"));
}

TEST(CompareBenchmark, namesTheFastestSetOnlyAmongOthersLikeIt) {
    const FakeRunner runner(oneChange);
    auto results = CompareBenchmark::propertySets(runner, backups(4), 1, std::nullopt);
    results[0].seconds = 3;
    results[1].seconds = 2;
    results[2].seconds = 1; // of sizes alone
    results.push_back({.label = "concurrency 4", .seconds = 0.1, .changeCount = 1, .pairsUsed = 1});

    EXPECT_EQ(CompareBenchmark::fastestSet(results), &results[1]);
    results[1].changeCount = 0;
    EXPECT_EQ(CompareBenchmark::fastestSet(results), nullptr);
    results[1].changeCount = 1;
    results[0].error = "1 of 1 failed.";
    EXPECT_EQ(CompareBenchmark::fastestSet(results), nullptr);
}

} // namespace
} // namespace tallyglass::test
