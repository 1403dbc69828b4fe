// The verbs of the host `tmutil`.

#pragma once

#include "HostTools/Machine/MachinePaths.h"

#include <cstdio>
#include <string>
#include <vector>

namespace tallyglass {

/// The exit statuses of the program.
struct ExitStatus {
    static constexpr int success = 0;
    static constexpr int failure = 1;
    static constexpr int usage = 64;
    static constexpr int noPermission = 80;
};

/// Runs one command line, without the program's name. Results go to `output`, error messages to `complaints`.
/// Returns the exit status.
[[nodiscard]] int runCommand(const MachinePaths& machine, const std::vector<std::string>& arguments,
                             FILE* output, FILE* errors);

} // namespace tallyglass
