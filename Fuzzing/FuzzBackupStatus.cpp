// Status output of any bytes: a status whose fields are in their documented ranges, or none.

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
    if (*status !=
        BackupStatus(*status)) // observers of a value that isn't equal to itself would never settle
        std::abort();
    return 0;
}
