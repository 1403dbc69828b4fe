// The kit from a terminal.

#include "CommandLine/Commands/Commands.h"

int main(int argc, char** argv) {
    return tallyglass::commandline::runTally(argc, argv);
}
