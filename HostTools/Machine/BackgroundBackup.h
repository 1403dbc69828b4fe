// Starts a backup in a process of its own, which the caller doesn't wait for.

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

    /// When this returns, the backup holds its lock and its attempt is on record. The process that runs it is
    /// a daemon: it has none of this one's descriptors, so that who reads our output sees its end. Throws
    /// Error when nothing can be started; `failed` says that a backup which was waited for failed.
    static Outcome start(const MachinePaths& machine, const Options& options, FILE* complaints);
};

} // namespace tallyglass
