// The machine's backups by the names that a person types (see BackupName). Main thread only.

#pragma once

#include "CommandLine/Commands/Context.h"

#include <string>
#include <vector>

namespace tallyglass::commandline {

struct BackupPair {
    std::string from; ///< the roots
    std::string to;
};

/// The roots of the machine's backups, oldest first. Throws as the listing does, and Error if there are none.
[[nodiscard]] std::vector<std::string> existingBackups(const Context& context);

/// The root of the backup with that name. A path is taken as it is, without listing the backups, so that it
/// may be one that isn't in the list.
[[nodiscard]] std::string backupNamed(const Context& context, const std::string& name);

/// Two backups to compare: those named; if `to` is empty, the one named `from` and the one before it; if both
/// are, the last two.
[[nodiscard]] BackupPair backupPairNamed(const Context& context, const std::string& from,
                                         const std::string& to);

} // namespace tallyglass::commandline
