// The verbs of the host `tmutil`.

#pragma once

#include "HostTools/Machine/MachinePaths.h"

#include <cstdio>
#include <string>
#include <vector>

namespace tallyglass {

/// The statuses that the program exits with.
struct ExitStatus {
    static constexpr int success = 0;
    static constexpr int failure = 1;
    static constexpr int usage = 64;
    static constexpr int noPermission = 80;
};

/// Carries out one command line, without the program's name. Answers go to `output`, complaints to
/// `complaints`. Returns the exit status.
[[nodiscard]] int runCommand(const MachinePaths& machine, const std::vector<std::string>& arguments,
                             FILE* output, FILE* complaints);

} // namespace tallyglass
