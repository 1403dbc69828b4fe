// Starts a backup in a background process.

#pragma once

#include "HostTools/Machine/MachinePaths.h"

#include <cstdio>
#include <string>

namespace tallyglass {

struct BackgroundBackup {
    struct Options {
        bool waits = false; ///< runs the backup in this process instead
        std::string destinationID;
    };
    enum class Outcome { started, alreadyRunning, failed };

    /// When this returns, the backup holds its lock and its attempt is recorded. It runs in a daemon without
    /// this process's descriptors, so that readers of our output see its end. Throws Error if it can't be
    /// started; `failed` means that a backup which was waited for failed.
    static Outcome start(const MachinePaths& machine, const Options& options, FILE* errors);
};

} // namespace tallyglass
