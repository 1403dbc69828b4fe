// The commands of tally. Each add function declares one group of commands on `app`; when the arguments name
// one of them, it leaves in `chosen` what is to be done. Nothing runs while arguments are read.

#pragma once

#include "CommandLine/Commands/Context.h"

#include <functional>

namespace CLI {
class App;
}

namespace tallyglass::commandline {

using Action = std::function<void(const Context&)>;

void addAccessCommands(CLI::App& app, Action& chosen); ///< status, settings, backups, manifest
void addHealthCommand(CLI::App& app, Action& chosen);  ///< health
void addCompareCommand(CLI::App& app, Action& chosen); ///< compare
void addCacheCommands(CLI::App& app, Action& chosen);  ///< comparisons, search, rollups, history-of-changes
void addPropertyListCommand(CLI::App& app, Action& chosen); ///< plist
void addOverviewCommand(CLI::App& app, Action& chosen);     ///< overview

/// All of it: reads the arguments, runs the command, and returns the exit code of the process.
int runTally(int argc, char** argv);

} // namespace tallyglass::commandline
