// Dates as the database stores them: text "yyyy-MM-dd HH:mm:ss.SSS" in UTC. Pure functions; any thread.

#pragma once

#include "TallyglassKit/Platform/Date.h"

#include <array>
#include <optional>
#include <string_view>

namespace tallyglass {

class TimestampText {
public:
    /// Rounds to the millisecond, which is read back exactly. A date outside the years 0 to 9999 becomes the
    /// nearest one inside.
    explicit TimestampText(Date date);

    operator std::string_view() const { return {m_characters.data(), m_characters.size()}; }

private:
    std::array<char, 23> m_characters;
};

/// Parses what TimestampText writes, and unambiguous variants: a date alone, a time without seconds or with
/// any fraction, "T" for the space, and a time zone at the end. Absent for everything else.
[[nodiscard]] std::optional<Date> parseTimestamp(std::string_view text);

/// The date as it is read back from the database.
[[nodiscard]] Date asStored(Date date);

} // namespace tallyglass
