#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/CommonArguments.h"
#include "CommandLine/Commands/CompareBackups.h"
#include "CommandLine/Commands/ComparisonOptions.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/JSONDocuments.h"
#include "CommandLine/Commands/NamedBackups.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string from;
    std::string to;
    ComparisonOptions comparison;
    bool noCache = false;
    std::vector<std::string> kinds;
    std::string search;
    std::string order = std::string(rawValue(ChangeOrder::path));
    std::int64_t limit = 20'000;

    [[nodiscard]] std::optional<std::set<ChangeKind>> chosenKinds() const {
        if (kinds.empty())
            return std::nullopt;
        std::set<ChangeKind> chosen;
        for (const auto& kind : kinds)
            chosen.insert(fromRawValue<ChangeKind>(kind).value());
        return chosen;
    }
};

void compare(const Context& context, const Arguments& arguments) {
    auto store = context.openStore();
    const auto [from, to] = backupPairNamed(context, arguments.from, arguments.to);
    const auto result =
        compareBackups(context, store, from, to, arguments.comparison.chosen(), !arguments.noCache);
    const auto search = arguments.search.empty() ? std::nullopt : std::optional(arguments.search);
    const auto order = fromRawValue<ChangeOrder>(arguments.order).value();
    const auto changes = store.changes(result.comparison.id, arguments.chosenKinds(), search, order,
                                       arguments.limit, 0, context.stop);
    if (context.json)
        return printJSON(context.out, result, changes);
    context.out << describeOperands(from, to) << ": " << describe(result.comparison)
                << (result.cached ? " (from the cache)" : "") << "\n";
    printChanges(context.out, changes);
}

} // namespace

Command compareCommand() {
    const auto values = std::make_shared<Arguments>();
    std::vector<Argument> arguments{
        {.name = "FROM",
         .description = "The older backup; without TO the newer one, compared with the one before it; "
                        "without both, the last two are compared",
         .value = &values->from,
         .type = "BACKUP",
         .isOptional = true},
        newerBackupArgument(values->to),
        {"--no-cache", "Compare again even when the result is in the cache", &values->noCache},
        {.name = "--kinds",
         .description = "Show only these: added, removed, modified",
         .value = &values->kinds,
         .type = "KIND,KIND",
         .choices = {"added", "removed", "modified"},
         .isCommaSeparated = true},
        {"--search", "Show only paths that contain this", &values->search, "TEXT"},
        sortArgument(values->order),
        {"--limit", "Show at most this many changes (20000)", &values->limit, "N"},
    };
    const auto options = values->comparison.arguments();
    arguments.insert(arguments.begin() + 2, options.begin(), options.end()); // after the operands
    return {"compare", "What changed from one backup to another, kept in the cache", std::move(arguments),
            [values](const Context& context) { compare(context, *values); }};
}

} // namespace tallyglass::commandline
