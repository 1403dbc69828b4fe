// The recent transfer rate of a running backup. A value.

#pragma once

namespace tallyglass {

struct BackupRate {
    double bytesPerSecond = 0; ///< never negative
    double filesPerSecond = 0; ///< never negative

    friend bool operator==(const BackupRate&, const BackupRate&) = default;
};

} // namespace tallyglass
