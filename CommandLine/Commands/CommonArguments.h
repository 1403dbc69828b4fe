// Arguments that several commands have in common. Main thread only.

#pragma once

#include "CommandLine/Commands/Commands.h"

#include <string>

namespace tallyglass::commandline {

/// The optional operand TO, the newer backup of a pair (see backupPairNamed).
[[nodiscard]] Argument newerBackupArgument(std::string& backup);

/// The option --sort, the raw value of a ChangeOrder.
[[nodiscard]] Argument sortArgument(std::string& order);

} // namespace tallyglass::commandline
