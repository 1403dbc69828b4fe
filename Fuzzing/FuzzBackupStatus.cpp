// Whatever tmutil prints, a status comes of it that keeps the promises of its fields, or none.

#include "TallyglassKit/Access/BackupStatus.h"

#include <cstdint>
#include <cstdlib>

using tallyglass::BackupStatus;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto status = BackupStatus::parse({reinterpret_cast<const char*>(data), size});
    if (!status)
        return 0;
    if (status->percent && !(*status->percent >= 0))
        std::abort();
    if (status->timeRemaining && !(*status->timeRemaining > 0))
        std::abort();
    if (*status != BackupStatus(*status)) // what isn't equal to itself would wake observers for ever
        std::abort();
    return 0;
}
