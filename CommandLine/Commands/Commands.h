// The commands of tally: what each takes, and what it does. They don't depend on the argument parser, which
// is slow to compile and used in RunTally.cpp only.

#pragma once

#include "CommandLine/Commands/Context.h"

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace tallyglass::commandline {

/// One argument of a command: an option if its name begins with "--", else an operand, which is required
/// unless it says otherwise. A list as an operand takes all that follow.
struct Argument {
    /// The destination of its value. Numbers aren't negative, a bool is a flag, and an option that is a list
    /// may be repeated.
    using Value = std::variant<std::string*, std::int64_t*, double*, bool*, std::vector<std::string>*>;

    std::string name;
    std::string description;
    Value value;
    std::string type = {};                 ///< the placeholder of the value in the help
    std::vector<std::string> choices = {}; ///< the allowed values, if not empty
    bool isCommaSeparated = false;         ///< for a list: each value may have several elements
    bool isOptional = false;               ///< for an operand
    std::string excludes = {};             ///< the name of a previous option that it can't be combined with
};

/// What a command does. It owns the values that its arguments point to.
using Action = std::function<void(const Context&)>;

struct Command {
    std::string name;
    std::string description;
    std::vector<Argument> arguments;
    Action action;
};

[[nodiscard]] Command overviewCommand();
[[nodiscard]] std::vector<Command> accessCommands(); ///< status, settings, backups, manifest
[[nodiscard]] Command healthCommand();
[[nodiscard]] Command compareCommand();
[[nodiscard]] Command backfillCommand();
[[nodiscard]] std::vector<Command> cacheCommands(); ///< comparisons, search, rollups, history-of-changes
[[nodiscard]] std::vector<Command> mapCommands();   ///< map, explain, treemap
[[nodiscard]] Command exportChangesCommand();
[[nodiscard]] std::vector<Command> historyCommands();   ///< trace, export
[[nodiscard]] std::vector<Command> exclusionCommands(); ///< exclusions, exclude, include
[[nodiscard]] std::vector<Command> insightCommands();   ///< diagnostics, benchmark
[[nodiscard]] Command propertyListCommand();            ///< plist

} // namespace tallyglass::commandline
