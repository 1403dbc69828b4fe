// The entry point of tally.

#pragma once

namespace tallyglass::commandline {

/// Reads the arguments, runs the command, and returns the exit code of the process.
int runTally(int argc, char** argv);

} // namespace tallyglass::commandline
