// Measures what a comparison of backups costs, depending on the properties that tmutil compares and on how
// many comparisons run at once. It only reads.
//
// No two conditions of a run share a pair of backups: reading a tree warms caches, so that a second condition
// would look faster than it is.
//
// Static operations only; any thread. They block; a stop ends the children that run and throws Cancelled.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace tallyglass {

struct CompareOptions;

/// One measured condition. A value.
struct BenchmarkResult {
    std::string label;
    std::vector<std::string> arguments = {};      ///< options of "tmutil compare"
    double seconds = 0;                           ///< of the whole condition
    std::optional<std::int64_t> changeCount = {}; ///< found in all pairs
    std::int64_t pairsUsed = 0;
    std::optional<std::string> error = {};

    [[nodiscard]] bool succeeded() const { return !error; }
    /// All seconds if there is no pair.
    [[nodiscard]] double secondsPerPair() const;

    friend bool operator==(const BenchmarkResult&, const BenchmarkResult&) = default;
};

struct CompareBenchmark {
    /// Two backup paths, the older first.
    struct Pair {
        std::string from;
        std::string to;
        friend bool operator==(const Pair&, const Pair&) = default;
    };

    using Backups = std::span<const std::string>; ///< paths, oldest first
    /// Called on the measuring thread with each condition before it is measured, such as "size only (-s) over
    /// 3 pairs".
    using OnProgress = std::function<void(const std::string& text)>;

    /// The newest `limit` pairs of neighbours, oldest first.
    [[nodiscard]] static std::vector<Pair> recentPairs(Backups backups, std::int64_t limit);

    /// Measures three sets of properties, one comparison at a time. With fewer than three pairs it is a
    /// single failed result.
    static std::vector<BenchmarkResult> propertySets(const TMUtilRunner& runner, Backups backups,
                                                     std::int64_t pairsPerCondition,
                                                     std::optional<std::int64_t> depth,
                                                     const OnProgress& progress = {},
                                                     const std::stop_token& stop = {});

    /// Measures numbers of comparisons that run at once, the highest first. With fewer than two pairs for
    /// each it is a single failed result.
    static std::vector<BenchmarkResult> concurrency(const TMUtilRunner& runner, Backups backups,
                                                    std::vector<std::int64_t> levels,
                                                    std::int64_t pairsPerLevel, const CompareOptions& options,
                                                    const OnProgress& progress = {},
                                                    const std::stop_token& stop = {});

    /// The property sets over the newest pairs, and, if there are two pairs for each left, one and four
    /// comparisons at once over earlier ones, with size and date. Throws Error without two backups.
    static std::vector<BenchmarkResult> run(const TMUtilRunner& runner, Backups backups,
                                            std::int64_t pairsPerCondition, std::optional<std::int64_t> depth,
                                            const OnProgress& progress = {},
                                            const std::stop_token& stop = {});

    /// Compares all pairs, `concurrency` of them at once but at least one. Pairs that fail don't stop the
    /// others.
    static BenchmarkResult measure(const TMUtilRunner& runner, const std::string& label,
                                   const CompareOptions& options, std::span<const Pair> pairs,
                                   std::int64_t concurrency, const std::stop_token& stop = {});

    /// The text of "benchmark.txt".
    [[nodiscard]] static std::string report(std::span<const BenchmarkResult> results);

    /// The fastest set of properties among those that tell a changed file by its date too, and that found
    /// changes; null if there are no two of them to compare.
    [[nodiscard]] static const BenchmarkResult* fastestSet(std::span<const BenchmarkResult> results);
};

} // namespace tallyglass
