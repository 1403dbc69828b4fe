// What the programs of this folder take on their command lines, where that is more than a verb and operands.
// The parser is slow to compile, so that it is seen by one source only.

#pragma once

#include "HostTools/Machine/MachineSetup.h"
#include "HostTools/Machine/SampleMachine.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tallyglass {

/// Conditions that are rare or slow to come by.
struct Arrangement {
    std::string permission; ///< "granted", "revoked" or empty
    std::optional<std::int64_t> nextResult;
    std::optional<std::int64_t> copyLimit; ///< KiB a second; 0 for none
};

/// The arguments behind `tmutil setup` and `tmutil arrange`. Throw UsageError, with the help if that is asked
/// for.
[[nodiscard]] MachineSetup parseSetup(const std::vector<std::string>& arguments);
[[nodiscard]] Arrangement parseArrangement(const std::vector<std::string>& arguments);

struct SampleMachineCall {
    std::optional<SampleMachineOptions> options; ///< absent if the program is to end
    int exitCode = 0;                            ///< which the program then ends with, all being said
};

/// The arguments of sample-machine. Prints the help if that is asked for, and what is wrong.
[[nodiscard]] SampleMachineCall parseSampleMachine(int argc, char** argv);

} // namespace tallyglass
