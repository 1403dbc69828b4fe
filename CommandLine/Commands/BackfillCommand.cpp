#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/ComparisonOptions.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/NamedBackups.h"
#include "CommandLine/Commands/ProgressLine.h"
#include "TallyglassKit/Comparison/AdjacentPairs.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/DiffEngine.h"
#include "TallyglassKit/Platform/Error.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdint>
#include <iostream>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::int64_t concurrency = 4;
    ComparisonOptions comparison;
};

/// Prints a line for each pair as it ends. Thread-safe.
class Report {
public:
    Report(const Context& context, BackupStore& store, std::vector<AdjacentPair> pairs)
        : m_context(context), m_store(store), m_pairs(std::move(pairs)) {}

    void tell(const DiffEngine::BackfillProgress& progress) {
        const std::lock_guard lock(m_mutex);
        if (progress.completed > 0)
            printPair(progress.currentLabel);
        if (progress.completed < m_latest.completed)
            return; // overtaken by another thread's
        m_latest = progress;
        m_line.show(fmt::format("Comparing backups… {} of {}", formatGrouped(progress.completed),
                                formatGrouped(progress.total)));
    }

    /// The numbers at the end.
    [[nodiscard]] DiffEngine::BackfillProgress end() {
        m_line.clear();
        return m_latest;
    }

private:
    void printPair(const std::string& newer) {
        const auto pair = std::ranges::find_if(
            m_pairs, [&](const AdjacentPair& each) { return each.to.ends_with("/" + newer); });
        if (pair == m_pairs.end())
            return; // a backup that has just been made
        const auto operands = describeOperands(pair->from, pair->to);
        const auto row = rowOf(*pair);
        if (row && !row->isPartial) {
            if (!m_context.json) {
                m_line.clear();
                m_context.out << operands << ": " << describe(*row) << std::endl;
            }
        } else if (!m_context.stop.stop_requested()) {
            m_line.clear();
            std::cerr << "tally: " << operands << ": "
                      << (row && row->errorMessage ? *row->errorMessage : "The cache could not be used.")
                      << "\n";
        }
    }

    std::optional<Comparison> rowOf(const AdjacentPair& pair) {
        try {
            return m_store.comparison(pair.comparisonID);
        } catch (const Error&) {
            return std::nullopt;
        }
    }

    const Context& m_context;
    BackupStore& m_store;
    const std::vector<AdjacentPair> m_pairs;
    std::mutex m_mutex;
    DiffEngine::BackfillProgress m_latest;
    ProgressLine m_line;
};

void backfill(const Context& context, const Arguments& arguments) {
    const auto roots = existingBackups(context); // throws if they can't be listed; the backfill doesn't
    const auto options = arguments.comparison.chosen();
    auto store = context.openStore();
    Report report(context, store, adjacentPairs(roots, options));
    const auto comparisons = DiffEngine(context.runner(), store)
                                 .backfillAdjacentPairs(
                                     arguments.concurrency, options,
                                     [&](const auto& progress) { report.tell(progress); }, context.stop);
    const auto [completed, total, skipped, failed, label] = report.end();
    if (context.stop.stop_requested())
        throw Cancelled();
    if (context.json)
        printJSON(context.out, comparisons);
    else
        context.out << fmt::format("{} pairs of backups: {} ready before, {} compared, {} failed\n",
                                   formatGrouped(total), formatGrouped(skipped),
                                   formatGrouped(completed - skipped - failed), formatGrouped(failed));
    if (failed > 0)
        throw Error(fmt::format("{} of {} comparisons failed.", formatGrouped(failed), formatGrouped(total)));
}

} // namespace

Command backfillCommand() {
    const auto values = std::make_shared<Arguments>();
    auto arguments = values->comparison.arguments();
    arguments.push_back(
        {"--concurrency", "Run this many comparisons at a time (4)", &values->concurrency, "N"});
    return {"backfill",
            "Compare every backup with the one before it, ahead of need; ends with 1 if one fails, after the "
            "others",
            std::move(arguments), [values](const Context& context) { backfill(context, *values); }};
}

} // namespace tallyglass::commandline
