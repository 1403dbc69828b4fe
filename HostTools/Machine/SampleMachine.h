// Creates a machine with weeks of history for demonstrations and tests, by ordinary backups with a simulated
// clock.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <cstdint>
#include <filesystem>
#include <functional>

namespace tallyglass {

struct SampleMachineOptions {
    std::filesystem::path root;
    int backups = 60;
    int files = 3000;
    std::uint64_t seed = 1;
    Date now;
    /// Called before each backup with the number of finished ones and the total.
    std::function<void(int done, int total)> progress;
};

/// The same options give the same tree, contents and stamps. Throws Error if `root` isn't empty; a failure
/// leaves an unfinished sample.
void makeSampleMachine(const SampleMachineOptions& options);

} // namespace tallyglass
