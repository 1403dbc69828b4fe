// tally: the command line of the kit.

#include "CommandLine/Commands/RunTally.h"

int main(int argc, char** argv) {
    return tallyglass::commandline::runTally(argc, argv);
}
