// The meaning of the integer that Time Machine records as the result of a destination's latest backup. Any
// integer is valid. A value; any thread.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tallyglass {

struct BackupResultCode {
    std::int64_t code = 0;

    [[nodiscard]] bool isSuccess() const { return code == 0; }

    /// The backup was deferred because of the state of the computer: on battery, low, hot, busy encrypting.
    [[nodiscard]] bool isDeferral() const;

    /// One sentence for the user; absent for 0 and for unknown codes.
    [[nodiscard]] std::optional<std::string_view> reason() const;

    friend bool operator==(const BackupResultCode&, const BackupResultCode&) = default;
};

} // namespace tallyglass
