// The environment of a command: the machine, the output and the stop token. Main thread only, except for the
// stop token.

#pragma once

#include "TallyglassKit/Access/TMUtilRunner.h"
#include "TallyglassKit/Platform/SystemPaths.h"

#include <ostream>
#include <stop_token>

namespace tallyglass {
class BackupStore;
}

namespace tallyglass::commandline {

struct Context {
    SystemPaths paths;
    bool json = false;
    std::ostream& out;
    std::stop_token stop;

    [[nodiscard]] TMUtilRunner runner() const;

    /// The user's diff cache.
    [[nodiscard]] BackupStore openStore() const;
};

} // namespace tallyglass::commandline
