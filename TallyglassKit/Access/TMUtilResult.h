// The result of one run of tmutil. A value; different threads may read one object at once.

#pragma once

#include "TallyglassKit/Platform/Files/ByteBuffer.h"

#include <cstdint>
#include <cstdio> // stdout and stderr are macros, which every user of the fields below must see
#include <string>

namespace tallyglass {

struct TMUtilResult {
    /// The exit status, or the number of the signal that ended the child, without a distinction.
    std::int32_t exitCode = 0;
    ByteBuffer stdout; ///< everything written to standard output, byte for byte
    ByteBuffer stderr; ///< everything written to standard error, byte for byte

    /// The bytes as UTF-8, with U+FFFD for each invalid sequence.
    [[nodiscard]] std::string stdoutText() const;
    [[nodiscard]] std::string stderrText() const;

    friend bool operator==(const TMUtilResult&, const TMUtilResult&) = default;
};

} // namespace tallyglass
