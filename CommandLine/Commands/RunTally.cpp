#include "CommandLine/Commands/RunTally.h"

#include "CommandLine/Commands/Commands.h"
#include "CommandLine/Commands/Interruption.h"
#include "CommandLine/Commands/Suggestions.h"
#include "TallyglassKit/Access/TMUtilError.h"
#include "TallyglassKit/Platform/Error.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

namespace tallyglass::commandline {

namespace {

enum ExitCode : int { success = 0, failure = 1, wrongUsage = 2, needsFullDiskAccess = 3, stopped = 130 };

constexpr auto epilogue = R"(Exit codes:
  0    done
  1    failed; standard error says why in one line
  2    wrong usage
  3    Full Disk Access is missing
  130  stopped by Ctrl-C or a request to end

With --json, standard output holds one JSON document and nothing else. Field names
are those of the data models, an absent value is null, and dates are ISO 8601 in
UTC with milliseconds.

A BACKUP is named by its path, by its stamp as `tally backups` shows it or the
beginning of that, such as 2026-11-23, by "latest", by "latest~3" for the third
before it, or by "oldest".

Without --root the machine is the one in the environment variable TALLYGLASS_ROOT,
or else in "Tallyglass/root" in your data folder. Comparisons are kept in
"Tallyglass/cache.sqlite" there; the file can be deleted at any time.)";

int fail(ExitCode code, const std::string& description) {
    auto line = description.empty() ? std::string("It failed without saying why.") : description;
    while (!line.empty() && line.back() == '\n')
        line.pop_back();
    for (char& character : line)
        if (character == '\n')
            character = ' '; // always one line
    std::cerr << "tally: " << line << "\n";
    return code;
}

/// Declares an argument on the command line of its command.
struct Declaration {
    CLI::App& command;
    const Argument& argument;

    CLI::Option* operator()(bool* flag) const {
        return command.add_flag(argument.name, *flag, argument.description);
    }
    CLI::Option* operator()(std::int64_t* number) const {
        return command.add_option(argument.name, *number, argument.description)
            ->check(CLI::NonNegativeNumber);
    }
    CLI::Option* operator()(double* number) const {
        return command.add_option(argument.name, *number, argument.description)
            ->check(CLI::NonNegativeNumber);
    }
    CLI::Option* operator()(std::string* text) const {
        return command.add_option(argument.name, *text, argument.description);
    }
    CLI::Option* operator()(std::vector<std::string>* list) const {
        auto* option = command.add_option(argument.name, *list, argument.description);
        if (argument.isCommaSeparated)
            return option->delimiter(',');
        if (!argument.name.starts_with("--"))
            return option;
        return option->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    }
};

void declare(CLI::App& app, const Command& command, const Action*& chosen) {
    auto* declared = app.add_subcommand(command.name, command.description);
    for (const auto& argument : command.arguments) {
        auto* option = std::visit(Declaration{*declared, argument}, argument.value);
        option->required(!argument.name.starts_with("--") && !argument.isOptional);
        if (!argument.type.empty())
            option->type_name(argument.type);
        if (!argument.choices.empty())
            option->check(CLI::IsMember(argument.choices));
        if (!argument.excludes.empty())
            option->excludes(declared->get_option(argument.excludes));
    }
    declared->callback([&chosen, &command] { chosen = &command.action; });
}

std::vector<Command> allCommands() {
    std::vector<Command> commands{overviewCommand()};
    std::ranges::move(accessCommands(), std::back_inserter(commands));
    commands.push_back(healthCommand());
    commands.push_back(compareCommand());
    commands.push_back(backfillCommand());
    std::ranges::move(cacheCommands(), std::back_inserter(commands));
    std::ranges::move(mapCommands(), std::back_inserter(commands));
    commands.push_back(exportChangesCommand());
    std::ranges::move(historyCommands(), std::back_inserter(commands));
    std::ranges::move(exclusionCommands(), std::back_inserter(commands));
    std::ranges::move(insightCommands(), std::back_inserter(commands));
    commands.push_back(propertyListCommand());
    return commands;
}

/// What is wrong with the arguments, for which the parser threw `error`.
std::string describeUsageError(const CLI::ParseError& error, const CLI::App& app,
                               std::span<const Command> commands) {
    if (!app.get_subcommands().empty())
        return std::string(error.what()) + " See tally --help.";
    const auto rest = app.remaining();
    const auto word =
        std::ranges::find_if(rest, [](const auto& argument) { return !argument.starts_with('-'); });
    if (word == rest.end())
        return rest.empty() && dynamic_cast<const CLI::RequiredError*>(&error)
                   ? "A command is missing. See tally --help."
                   : std::string(error.what()) + " See tally --help.";
    std::vector<std::string> names;
    for (const auto& command : commands)
        names.push_back(command.name);
    const auto near = nearestWords(*word, names);
    return fmt::format("There is no command {}{} See tally --help.", *word,
                       near.empty() ? "." : fmt::format("; did you mean {}?", fmt::join(near, " or ")));
}

int perform(const Action& action, const std::string& root, bool json) {
    try {
        const Interruption interruption;
        action({.paths = root.empty() ? SystemPaths::standard() : SystemPaths(root),
                .json = json,
                .out = std::cout,
                .stop = interruption.stopToken()});
        if (!std::cout.flush())
            throw Error("The output couldn't be written.");
    } catch (const Cancelled&) {
        return fail(stopped, "Cancelled.");
    } catch (const TMUtilError& error) {
        const bool needsAccess = error.get<TMUtilError::RequiresFullDiskAccess>() != nullptr;
        return fail(needsAccess ? needsFullDiskAccess : failure, error.errorDescription());
    } catch (const std::exception& error) {
        return fail(failure, error.what());
    }
    return success;
}

} // namespace

int runTally(int argc, char** argv) {
    CLI::App app("Shows what a computer's Time Machine backups hold and what changed between them.", "tally");
    app.footer(epilogue);
    app.require_subcommand(1);
    app.fallthrough(); // --root and --json are allowed after the command, too
    std::string root;
    bool json = false;
    app.add_option("--root", root, "The folder that stands for \"/\" of the machine to look at")
        ->type_name("DIR");
    app.add_flag("--json", json, "Print one JSON document instead of text");

    const auto commands = allCommands();
    const Action* chosen = nullptr;
    for (const auto& command : commands)
        declare(app, command, chosen);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) // --help
            return app.exit(error);
        return fail(wrongUsage, describeUsageError(error, app, commands));
    }

    return perform(*chosen, root, json);
}

} // namespace tallyglass::commandline
