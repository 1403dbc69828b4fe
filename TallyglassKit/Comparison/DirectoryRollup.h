// The sum of the changes directly in one folder. A value.

#pragma once

#include <cstdint>
#include <string>

namespace tallyglass {

struct DirectoryRollup {
    std::string path;             ///< the parent path of the rows
    std::int64_t changeCount = 0; ///< rows
    std::int64_t bytesDelta = 0;  ///< the sum of the rows' size deltas, or else sizes

    friend bool operator==(const DirectoryRollup&, const DirectoryRollup&) = default;
};

} // namespace tallyglass
