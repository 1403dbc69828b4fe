// The command-line options of this folder's programs. The parser is slow to compile and used in one source
// only.

#pragma once

#include "HostTools/Machine/MachineSetup.h"
#include "HostTools/Machine/SampleMachine.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// Conditions that are rare or slow to reproduce.
struct Arrangement {
    std::string permission; ///< "granted", "revoked" or empty
    std::optional<std::int64_t> nextResult;
    std::optional<std::int64_t> copyLimit; ///< KiB a second; 0 for none
};

/// The arguments after `tmutil setup` and `tmutil arrange`. Throw UsageError, with the help if that is
/// requested.
[[nodiscard]] MachineSetup parseSetup(const std::vector<std::string>& arguments);
[[nodiscard]] Arrangement parseArrangement(const std::vector<std::string>& arguments);

struct SampleMachineCall {
    std::optional<SampleMachineOptions> options; ///< absent if the program should exit
    int exitCode = 0;                            ///< for that exit
};

/// The arguments of sample-machine. Prints the help if requested, and errors.
[[nodiscard]] SampleMachineCall parseSampleMachine(int argc, char** argv);

} // namespace tallyglass
