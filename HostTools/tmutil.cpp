// tmutil for hosts that have none: keeps backups as Time Machine keeps them. See README.md in this folder.

#include "HostTools/Machine/Commands.h"

#include <cstdio>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    const auto machine = tallyglass::MachinePaths::ofInvocation(argc > 0 ? argv[0] : "");
    const std::vector<std::string> arguments(argv + (argc > 0), argv + argc);
    return tallyglass::runCommand(machine, arguments, stdout, stderr);
}
