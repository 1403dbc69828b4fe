#include "TallyglassKit/Insight/CompareBenchmark.h"

#include "TallyglassKit/Comparison/CompareOptions.h"
#include "TallyglassKit/Comparison/TMUtilCompare.h"
#include "TallyglassKit/Platform/ContinuousClock.h"
#include "TallyglassKit/Platform/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <iterator>
#include <thread>
#include <utility>

namespace tallyglass {

namespace {

using Pair = CompareBenchmark::Pair;
using Pairs = std::vector<Pair>;

constexpr std::size_t setCount = 3;

struct PropertySet {
    std::string label;
    CompareOptions options;
};

std::array<PropertySet, setCount> allSets(std::optional<std::int64_t> depth) {
    const CompareOptions sizeOnly{
        .properties = {CompareOptions::Property::size}, .depth = depth, .ignoredComponents = {}};
    return {PropertySet{"tmutil default (-@gmstu)", CompareOptions::tmutilDefault(depth)},
            PropertySet{"size + mtime (-st)", CompareOptions::fast(depth)},
            PropertySet{"size only (-s)", sizeOnly}};
}

std::int64_t count(const auto& list) {
    return static_cast<std::int64_t>(list.size());
}

/// The newest pairs for so many conditions. No more than there are, so that no count is too large to
/// multiply.
Pairs pairsFor(std::size_t conditions, std::int64_t perCondition, CompareBenchmark::Backups backups) {
    return CompareBenchmark::recentPairs(backups, static_cast<std::int64_t>(conditions) *
                                                      std::min(perCondition, count(backups)));
}

std::vector<BenchmarkResult> tooFewPairs(std::string label, std::size_t needed, const Pairs& found) {
    return {{.label = std::move(label),
             .error = fmt::format("Need at least {} backup pairs; found {}.", needed, found.size())}};
}

/// What condition `index` of `conditions` gets when the pairs are dealt in turns.
Pairs share(const Pairs& pairs, std::size_t index, std::size_t conditions) {
    Pairs dealt;
    for (std::size_t next = index; next < pairs.size(); next += conditions)
        dealt.push_back(pairs[next]);
    return dealt;
}

void tell(const CompareBenchmark::OnProgress& progress, const std::string& label, const Pairs& pairs) {
    if (progress)
        progress(fmt::format("{} over {} pairs", label, pairs.size()));
}

/// What the comparisons of one condition add up to. Thread-safe.
struct Totals {
    std::atomic<std::int64_t> changes = 0;
    std::atomic<std::int64_t> failures = 0;
};

void compare(const TMUtilRunner& runner, const Pair& pair, const CompareOptions& options, Totals& totals,
             const std::stop_token& stop) {
    try {
        totals.changes +=
            count(TMUtilCompare::compare(runner, pair.from, pair.to, options, "benchmark", {}, stop).changes);
    } catch (const std::exception&) { // a cancellation too, which all comparisons share
        ++totals.failures;
    }
}

std::optional<std::string> describeFailures(std::int64_t failed, std::size_t all) {
    if (failed == static_cast<std::int64_t>(all))
        return fmt::format("All {} comparisons failed.", all);
    return failed > 0 ? std::optional(fmt::format("{} of {} failed.", failed, all)) : std::nullopt;
}

constexpr auto preamble = "Tallyglass — compare benchmark\n\n"
                          "Each condition ran against its own disjoint set of backup pairs, so every\n"
                          "measurement starts from a cold cache. Reading a tree over SMB warms local\n"
                          "metadata caches enough to swamp what is being measured, so conditions\n"
                          "cannot share pairs.\n\n"
                          "Caveat: backup pairs differ in how much actually changed, so these\n"
                          "numbers are noisy. Compare per-pair figures, and treat small differences\n"
                          "as inconclusive.\n\n";

/// The least time for a pair, 0 if nothing was measured.
double fastestTime(std::span<const BenchmarkResult> results) {
    double fastest = 0;
    for (const BenchmarkResult& result : results)
        if (result.seconds > 0 && (fastest == 0 || result.secondsPerPair() < fastest))
            fastest = result.secondsPerPair();
    return fastest;
}

std::string describe(const BenchmarkResult& result, double fastest) {
    std::string text =
        fmt::format("{}\n    tmutil compare {} …\n    {} pair{}\n", result.label,
                    fmt::join(result.arguments, " "), result.pairsUsed, result.pairsUsed == 1 ? "" : "s");
    if (result.error)
        text += fmt::format("    NOTE: {}\n", *result.error);
    if (result.seconds > 0) {
        text += fmt::format("    {:.1f} s total  ·  {:.2f} s/pair", result.seconds, result.secondsPerPair());
        if (fastest > 0)
            text += fmt::format("  ·  {:.2f}× fastest", result.secondsPerPair() / fastest);
        text += "\n";
    }
    if (result.changeCount)
        text += fmt::format("    {} changes detected\n", *result.changeCount);
    return text + "\n";
}

} // namespace

double BenchmarkResult::secondsPerPair() const {
    return pairsUsed < 1 ? seconds : seconds / static_cast<double>(pairsUsed);
}

Pairs CompareBenchmark::recentPairs(Backups backups, std::int64_t limit) {
    Pairs pairs;
    if (backups.size() < 2 || limit < 0)
        return pairs;
    const auto used = std::min(limit, count(backups) - 1);
    for (auto older = backups.size() - 1 - static_cast<std::size_t>(used); older + 1 < backups.size();
         ++older)
        pairs.push_back({backups[older], backups[older + 1]});
    return pairs;
}

std::vector<BenchmarkResult> CompareBenchmark::propertySets(const TMUtilRunner& runner, Backups backups,
                                                            std::int64_t pairsPerCondition,
                                                            std::optional<std::int64_t> depth,
                                                            const OnProgress& progress,
                                                            const std::stop_token& stop) {
    const auto pairs = pairsFor(setCount, pairsPerCondition, backups);
    if (pairs.size() < setCount)
        return tooFewPairs("property sets", setCount, pairs);
    std::vector<BenchmarkResult> results;
    for (const auto& [label, options] : allSets(depth)) {
        const auto dealt = share(pairs, results.size(), setCount);
        tell(progress, label, dealt);
        results.push_back(measure(runner, label, options, dealt, 1, stop));
    }
    return results;
}

std::vector<BenchmarkResult>
CompareBenchmark::concurrency(const TMUtilRunner& runner, Backups backups, std::vector<std::int64_t> levels,
                              std::int64_t pairsPerLevel, const CompareOptions& options,
                              const OnProgress& progress, const std::stop_token& stop) {
    std::ranges::sort(levels, std::ranges::greater());
    const auto pairs = pairsFor(levels.size(), pairsPerLevel, backups);
    if (pairs.size() < 2 * levels.size())
        return tooFewPairs("concurrency", 2 * levels.size(), pairs);
    std::vector<BenchmarkResult> results;
    for (const std::int64_t level : levels) {
        const auto label = fmt::format("concurrency {}", level);
        const auto dealt = share(pairs, results.size(), levels.size());
        tell(progress, label, dealt);
        results.push_back(measure(runner, label, options, dealt, level, stop));
    }
    return results;
}

std::vector<BenchmarkResult> CompareBenchmark::run(const TMUtilRunner& runner, Backups backups,
                                                   std::int64_t pairsPerCondition,
                                                   std::optional<std::int64_t> depth,
                                                   const OnProgress& progress, const std::stop_token& stop) {
    if (backups.size() < 2)
        throw Error("Need at least two backups to benchmark.");
    auto results = propertySets(runner, backups, pairsPerCondition, depth, progress, stop);
    const auto used =
        static_cast<std::int64_t>(setCount) * std::clamp<std::int64_t>(pairsPerCondition, 0, count(backups));
    const auto pairsPerLevel = std::min<std::int64_t>(4, (count(backups) - used - 1) / 2);
    if (pairsPerLevel >= 2) {
        const auto earlier = backups.first(static_cast<std::size_t>(count(backups) - used));
        std::ranges::move(
            concurrency(runner, earlier, {1, 4}, pairsPerLevel, CompareOptions::fast(depth), progress, stop),
            std::back_inserter(results));
    }
    return results;
}

BenchmarkResult CompareBenchmark::measure(const TMUtilRunner& runner, const std::string& label,
                                          const CompareOptions& options, std::span<const Pair> pairs,
                                          std::int64_t concurrency, const std::stop_token& stop) {
    const auto start = ContinuousClock::now();
    Totals totals;
    std::atomic<std::size_t> next = 0;
    const auto comparePairs = [&] {
        for (std::size_t index = next++; index < pairs.size() && !stop.stop_requested(); index = next++)
            compare(runner, pairs[index], options, totals, stop);
    };
    {
        std::vector<std::jthread> others; // beside this thread
        for (std::int64_t other = 1; other < std::min(concurrency, count(pairs)); ++other)
            others.emplace_back(comparePairs);
        comparePairs();
    }
    if (stop.stop_requested())
        throw Cancelled();
    return {.label = label,
            .arguments = options.arguments(),
            .seconds = std::chrono::duration<double>(ContinuousClock::now() - start).count(),
            .changeCount = totals.changes,
            .pairsUsed = count(pairs),
            .error = describeFailures(totals.failures, pairs.size())};
}

std::string CompareBenchmark::report(std::span<const BenchmarkResult> results) {
    std::string text = preamble;
    const double fastest = fastestTime(results);
    for (const BenchmarkResult& result : results)
        text += describe(result, fastest);
    return text;
}

const BenchmarkResult* CompareBenchmark::fastestSet(std::span<const BenchmarkResult> results) {
    const auto sets = allSets(std::nullopt);
    const auto isCandidate = [&](const BenchmarkResult& result) {
        const auto set = std::ranges::find(sets, result.label, &PropertySet::label);
        return set != sets.end() &&
               set->options.properties.contains(CompareOptions::Property::modificationTime) &&
               result.succeeded() && result.seconds > 0 && result.changeCount.value_or(0) > 0;
    };
    const BenchmarkResult* fastest = nullptr;
    std::size_t candidates = 0;
    for (const BenchmarkResult& result : results) {
        if (!isCandidate(result))
            continue;
        ++candidates;
        if (!fastest || result.secondsPerPair() < fastest->secondsPerPair())
            fastest = &result;
    }
    return candidates < 2 ? nullptr : fastest;
}

} // namespace tallyglass
