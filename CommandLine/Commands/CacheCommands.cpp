#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/ModelJSON.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"
#include "TallyglassKit/Health/Fmt.h"
#include "TallyglassKit/Platform/GroupedNumber.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <memory>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string text; ///< what to search for, or the path or identifier to look up
    std::int64_t limit = 1000;
};

std::string stateOf(const Comparison& comparison) {
    if (!comparison.isPartial)
        return describe(comparison);
    return comparison.errorMessage.value_or("Interrupted");
}

void comparisons(const Context& context, const Arguments&) {
    const auto comparisons = context.openStore().allComparisons();
    if (context.json)
        return context.print(toJSONArray(comparisons));
    for (const auto& comparison : comparisons)
        context.out << Fmt::timestamp(comparison.startedAt) << "  " << stateOf(comparison) << "\n  "
                    << comparison.id << "\n";
}

void search(const Context& context, const Arguments& arguments) {
    const auto changes = context.openStore().searchPaths(arguments.text, arguments.limit, context.stop);
    if (context.json)
        return context.print(toJSONArray(changes));
    printChanges(context.out, changes);
}

void rollups(const Context& context, const Arguments& arguments) {
    const auto rollups = context.openStore().rollups(arguments.text, arguments.limit, context.stop);
    if (context.json)
        return context.print(toJSONArray(rollups));
    for (const auto& rollup : rollups)
        context.out << fmt::format("{:>10} changes  {:>10}  {}\n", formatGrouped(rollup.changeCount),
                                   Fmt::size(rollup.bytesDelta), rollup.path);
}

void historyOfChanges(const Context& context, const Arguments& arguments) {
    const auto history = context.openStore().history(arguments.text, context.stop);
    JSON document = JSON::array();
    for (const auto& [comparison, change] : history) {
        if (context.json) {
            document.push_back({{"comparison", toJSON(comparison)}, {"change", toJSON(change)}});
            continue;
        }
        context.out << (comparison.toDate ? Fmt::timestamp(*comparison.toDate) : "—") << "  ";
        printChanges(context.out, {&change, 1});
    }
    if (context.json)
        context.print(document);
}

} // namespace

void addCacheCommands(CLI::App& app, Action& chosen) {
    using Command = void (*)(const Context&, const Arguments&);
    const auto add = [&](const char* name, const char* description, Command action, const char* operand,
                         const char* operandDescription, bool hasLimit) {
        const auto arguments = std::make_shared<Arguments>();
        auto* command = app.add_subcommand(name, description);
        if (operand)
            command->add_option(operand, arguments->text, operandDescription)->required();
        if (hasLimit)
            command->add_option("--limit", arguments->limit, "Show at most this many (1000)")
                ->check(CLI::NonNegativeNumber)
                ->type_name("N");
        command->callback([&chosen, arguments, action] {
            chosen = [arguments, action](const Context& context) { action(context, *arguments); };
        });
    };
    add("comparisons", "The comparisons in the cache, latest first", comparisons, nullptr, nullptr, false);
    add("search", "Changed paths in the cache that hold all the words", search, "TEXT",
        "The words, or their beginnings", true);
    add("rollups", "The folders of one comparison that changed most", rollups, "ID",
        "The comparison, as `tally comparisons` names it", true);
    add("history-of-changes", "How one path changed, in every comparison in the cache", historyOfChanges,
        "PATH", "The path on its volume, such as /Users/anna/notes.txt", false);
}

} // namespace tallyglass::commandline
