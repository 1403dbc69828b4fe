// What changed directly in one folder, summed up. A value.

#pragma once

#include <cstdint>
#include <string>

namespace tallyglass {

struct DirectoryRollup {
    std::string path;             ///< the parent path that the rows have in common
    std::int64_t changeCount = 0; ///< rows
    std::int64_t bytesDelta = 0;  ///< the sum of their size deltas, or else sizes

    friend bool operator==(const DirectoryRollup&, const DirectoryRollup&) = default;
};

} // namespace tallyglass
