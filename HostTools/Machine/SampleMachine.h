// Makes a machine with weeks of history for demonstrations and tests. Its backups are made as all are, with
// a clock that is set to when they were made.

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
    /// Told before each backup how many are done, of how many.
    std::function<void(int done, int total)> progress;
};

/// The same options give the same tree, contents and stamps. Throws Error when `root` holds anything already,
/// or a sample that wasn't finished; a failure leaves one of those behind.
void makeSampleMachine(const SampleMachineOptions& options);

} // namespace tallyglass
