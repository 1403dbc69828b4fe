#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/CommonArguments.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/NamedComparison.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/Text/GroupedNumber.h"

#include <fmt/core.h>

#include <memory>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string text; ///< what to search for, or the path or comparison to look up
    std::string to;   ///< the newer backup of the comparison
    std::int64_t limit = 1000;
};

void comparisons(const Context& context) {
    const auto comparisons = context.openStore().allComparisons();
    if (context.json)
        return printJSON(context.out, comparisons);
    for (const auto& comparison : comparisons)
        context.out << Fmt::timestamp(comparison.startedAt) << "  " << stateOf(comparison) << "\n  "
                    << describeOperands(comparison.fromPath, comparison.toPath)
                    << (comparison.depth > 0 ? fmt::format(", {} folders deep", comparison.depth) : "")
                    << "\n";
}

void search(const Context& context, const Arguments& arguments) {
    const auto changes = context.openStore().searchPaths(arguments.text, arguments.limit, context.stop);
    if (context.json)
        return printJSON(context.out, changes);
    printChanges(context.out, changes);
}

void rollups(const Context& context, const Arguments& arguments) {
    auto store = context.openStore();
    const auto comparison = comparisonNamed(context, store, arguments.text, arguments.to);
    const auto rollups = store.rollups(comparison.id, arguments.limit, context.stop);
    if (context.json)
        return printJSON(context.out, rollups);
    for (const auto& rollup : rollups)
        context.out << fmt::format("{:>10} changes  {:>10}  {}\n", formatGrouped(rollup.changeCount),
                                   Fmt::size(rollup.bytesDelta), rollup.path);
}

void historyOfChanges(const Context& context, const Arguments& arguments) {
    const auto history = context.openStore().history(arguments.text, context.stop);
    if (context.json)
        return printJSON(context.out, history);
    for (const auto& [comparison, change] : history) {
        context.out << (comparison.toDate ? Fmt::timestamp(*comparison.toDate) : "—") << "  ";
        printChanges(context.out, {&change, 1});
    }
}

using ActionOnArguments = void (*)(const Context&, const Arguments&);

Command command(std::string name, std::string description, ActionOnArguments action, Argument operand,
                bool hasLimit, bool isComparison = false) {
    const auto values = std::make_shared<Arguments>();
    operand.value = &values->text;
    operand.isOptional = isComparison;
    std::vector<Argument> arguments{std::move(operand)};
    if (isComparison)
        arguments.push_back(newerBackupArgument(values->to));
    if (hasLimit)
        arguments.push_back({.name = "--limit",
                             .description = "Show at most this many (1000)",
                             .value = &values->limit,
                             .type = "N"});
    return {std::move(name), std::move(description), std::move(arguments),
            [values, action](const Context& context) { action(context, *values); }};
}

} // namespace

std::vector<Command> cacheCommands() {
    return {
        {"comparisons", "The comparisons in the cache, latest first", {}, comparisons},
        command("search", "Changed paths in the cache that hold all the words", search,
                {.name = "TEXT", .description = "The words, or their beginnings", .value = {}}, true),
        command("rollups", "The folders of one comparison that changed most", rollups,
                {.name = "COMPARISON",
                 .description = "Its ID or its older backup; without TO, or at all, as in `tally compare`",
                 .value = {}},
                true, true),
        command("history-of-changes", "How one path changed, in every comparison in the cache",
                historyOfChanges,
                {.name = "PATH",
                 .description = "The path on its volume, such as /Users/anna/notes.txt",
                 .value = {}},
                false),
    };
}

} // namespace tallyglass::commandline
