// What the integer means that Time Machine records as the outcome of a destination's latest backup. The one
// place that knows; any integer can be wrapped. A value; any thread.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tallyglass {

struct BackupResultCode {
    std::int64_t code = 0;

    [[nodiscard]] bool isSuccess() const { return code == 0; }

    /// The backup was put off because of the state of the computer: on battery, low, hot, busy encrypting.
    [[nodiscard]] bool isDeferral() const;

    /// One sentence for the user; absent for 0 and for codes that nobody has explained.
    [[nodiscard]] std::optional<std::string_view> reason() const;

    friend bool operator==(const BackupResultCode&, const BackupResultCode&) = default;
};

} // namespace tallyglass
