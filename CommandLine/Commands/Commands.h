// The commands of tally: what each takes, and what it does. They don't know how arguments are read, which
// takes a parser that is slow to compile and that only RunTally.cpp sees.

#pragma once

#include "CommandLine/Commands/Context.h"

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace tallyglass::commandline {

/// One argument of a command: an option if its name begins with "--", else an operand, which is required.
struct Argument {
    /// Where its value goes. A number isn't negative, a bool tells whether a flag was given, and an option
    /// that is a list may be repeated.
    using Value = std::variant<std::string*, std::int64_t*, bool*, std::vector<std::string>*>;

    std::string name;
    std::string description;
    Value value;
    std::string type = {};                 ///< what the help calls the value
    std::vector<std::string> choices = {}; ///< nothing else is taken, unless there are none
    bool isCommaSeparated = false;         ///< of a list: one value names several, and so may the next
    std::string excludes = {};             ///< the name of an earlier option that can't be given with it
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
[[nodiscard]] std::vector<Command> cacheCommands(); ///< comparisons, search, rollups, history-of-changes
[[nodiscard]] Command propertyListCommand();        ///< plist

} // namespace tallyglass::commandline
