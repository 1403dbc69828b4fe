#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/CompareBackups.h"
#include "CommandLine/Commands/Describe.h"
#include "CommandLine/Commands/ModelJSON.h"
#include "TallyglassKit/Comparison/BackupStore.h"
#include "TallyglassKit/Comparison/ChangeRecord.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tallyglass::commandline {

namespace {

struct Arguments {
    std::string from;
    std::string to;
    std::int64_t depth = 3;
    bool noLimit = false;
    std::string properties = "fast";
    std::vector<std::string> ignored;
    bool noCache = false;
    std::vector<std::string> kinds;
    std::string search;
    std::int64_t limit = 20'000;

    [[nodiscard]] CompareOptions options() const {
        const auto bound = noLimit ? std::nullopt : std::optional(depth);
        auto options = properties == "thorough"  ? CompareOptions::thorough(bound)
                       : properties == "default" ? CompareOptions::tmutilDefault(bound)
                                                 : CompareOptions::fast(bound);
        options.ignoredComponents = ignored;
        return options;
    }

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
    const auto [comparison, cached] =
        compareBackups(context, store, arguments.from, arguments.to, arguments.options(), !arguments.noCache);
    const auto search = arguments.search.empty() ? std::nullopt : std::optional(arguments.search);
    const auto changes =
        store.changes(comparison.id, arguments.chosenKinds(), search, arguments.limit, 0, context.stop);
    if (context.json)
        return context.print(
            {{"cached", cached}, {"comparison", toJSON(comparison)}, {"changes", toJSONArray(changes)}});
    context.out << describe(comparison) << (cached ? " (from the cache)" : "") << "\n";
    printChanges(context.out, changes);
}

} // namespace

void addCompareCommand(CLI::App& app, Action& chosen) {
    const auto arguments = std::make_shared<Arguments>();
    auto* command =
        app.add_subcommand("compare", "What changed from one backup to another, kept in the cache");
    command->add_option("FROM", arguments->from, "The older backup, as `tally backups` names it")->required();
    command->add_option("TO", arguments->to, "The newer backup")->required();
    auto* depth = command->add_option("--depth", arguments->depth, "Look this many folders deep (3)")
                      ->check(CLI::NonNegativeNumber)
                      ->type_name("N");
    command->add_flag("--no-limit", arguments->noLimit, "Look at every folder, however deep")
        ->excludes(depth);
    command
        ->add_option(
            "--properties", arguments->properties,
            "What to look at: size and date (fast), tmutil's own choice (default), everything (thorough)")
        ->check(CLI::IsMember({"fast", "default", "thorough"}))
        ->type_name("fast|default|thorough");
    command->add_option("--ignore", arguments->ignored, "Skip everything of this name; may be repeated")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->type_name("NAME");
    command->add_flag("--no-cache", arguments->noCache, "Compare again even when the result is in the cache");
    command->add_option("--kinds", arguments->kinds, "Show only these: added, removed, modified")
        ->delimiter(',')
        ->check(CLI::IsMember({"added", "removed", "modified"}))
        ->type_name("KIND,KIND");
    command->add_option("--search", arguments->search, "Show only paths that contain this")
        ->type_name("TEXT");
    command->add_option("--limit", arguments->limit, "Show at most this many changes (20000)")
        ->check(CLI::NonNegativeNumber)
        ->type_name("N");
    command->callback([&chosen, arguments] {
        chosen = [arguments](const Context& context) { compare(context, *arguments); };
    });
}

} // namespace tallyglass::commandline
